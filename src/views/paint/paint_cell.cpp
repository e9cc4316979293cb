#include "views/paint/paint_cell.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"

namespace kalmora {

namespace {

constexpr int kMostAttempts = 64;  // to find an entry that can be drawn, at one paint; the next one goes on
constexpr Color kBlack{0, 0, 0};
constexpr Color kShadow = ColorFromBgr(0xC8C8C8);
constexpr Color kSunday = ColorFromBgr(0x0000FF);
constexpr Color kSaturday = ColorFromBgr(0xFF0000);
constexpr Color kFrame{43, 53, 73, 150};
constexpr Color kNumberPlate{255, 255, 255, 205};
constexpr Color kOutline{255, 255, 255};
constexpr int kNumberInset = 8, kNumberInsetOfYear = 4;  // of the number in its cell
constexpr int kShadowOffset = 2;
constexpr int kPlateBorder = 4;   // pixels left and right of the digits
constexpr int kBesideNumber = 3;  // pixels between the number and a card's text

Color ColorOfColumn(int column) { return column == 6 ? kSunday : column == 5 ? kSaturday : kBlack; }

// A day's number: where it is in its cell, and how it looks.
struct DayNumber {
    char text[8];
    Font font;
    Color color;
    Point at;

    DayNumber(const Rect& cell, int day, int column, bool yearly) : color(ColorOfColumn(column)) {
        const Settings& settings = State().settings;
        std::snprintf(text, sizeof text, "%02d", day);
        font = yearly ? Font{settings.DayFontFaceForYearly, settings.DayFontHeightForYearly}
                      : Font{settings.DayFontFace, settings.DayFontHeight};
        const int inset = yearly ? kNumberInsetOfYear : kNumberInset;
        at = {cell.x + inset, cell.y + inset};
    }
    // As high as a line of the font.
    Rect Digits() const {
        const Size size = MeasureText(text, font);
        return {at.x, at.y, size.width, size.height};
    }
};

// What a card's text leaves to the number. Digits have no descenders: the last fifth of their line is free.
Size CornerFor(const Rect& digits, const Rect& card) {
    return {digits.Right() + kShadowOffset + kBesideNumber - card.x,
            digits.Bottom() - digits.height / 5 - card.y};
}

// Dark photos and bright ones: the plate keeps the number legible on both.
void DrawOnPlate(Canvas& canvas, const DayNumber& number, const Rect& digits) {
    canvas.FillRect({digits.x - kPlateBorder, digits.y - kPlateBorder / 2, digits.width + 2 * kPlateBorder,
                     digits.height + kPlateBorder},
                    kNumberPlate);
    canvas.Text(number.at, number.text, number.font, number.color);
}

// In the small cells of a year, where a plate would hide much of the picture.
void DrawOutlined(Canvas& canvas, const DayNumber& number) {
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if (dx != 0 || dy != 0)
                canvas.Text({number.at.x + dx, number.at.y + dy}, number.text, number.font, kOutline);
    canvas.Text(number.at, number.text, number.font, number.color);
}

void DrawShadowed(Canvas& canvas, const DayNumber& number) {
    canvas.Text({number.at.x + kShadowOffset, number.at.y + kShadowOffset}, number.text, number.font,
                kShadow);
    canvas.Text(number.at, number.text, number.font, number.color);
}

bool Overlap(const Rect& a, const Rect& b) {
    return a.x < b.Right() && b.x < a.Right() && a.y < b.Bottom() && b.y < a.Bottom();
}

// Half-transparent lines, which must not add up with what a neighbour or an earlier paint has left there.
void DrawFrame(Canvas& canvas, const Ground& ground, const Rect& cell) {
    const Point topLeft{cell.x, cell.y}, topRight{cell.Right(), cell.y}, bottomLeft{cell.x, cell.Bottom()},
        bottomRight{cell.Right(), cell.Bottom()};
    const auto line = [&](Point from, Point to) {
        RestoreBackground(canvas, ground, {from.x, from.y, to.x - from.x + 1, to.y - from.y + 1});
        canvas.Line(from, to, kFrame);
    };
    line(topLeft, topRight);
    line(topRight, bottomRight);
    line(bottomLeft, bottomRight);
    line(topLeft, bottomLeft);
}

// Nothing when the filters hide it.
PreparedPicture PrepareEntry(const DayEntry& entry, Size cell, double scale, Decode decode) {
    if ((State().settings.GoodMode || State().settings.PublicMode) && !IsEntryShown(entry)) return {};
    return PreparePicture({entry.path, entry.kind, PictureFileOf(entry.path, entry.kind), {}}, cell, scale,
                          kCellStyle, decode);
}

}  // namespace

bool IsCellPictureCached(CalendarStore& calendar, int year, int month, int day) {
    const Window* window = MainWindow();
    const CellContent content = ContentOfCell(calendar, year, month, day);
    if (!window || content.count == 0) return true;
    const std::string picture = PictureFileOf(content.entry.path, content.entry.kind);
    if (picture.empty()) return true;
    const MonthGrid grid = MakeMonthGrid(year, month, {0, 0, window->ClientSize().width, 0}, false);
    const Size pixels = BoxPixels({grid.cellWidth, grid.cellHeight}, window->Scale());
    return !Pictures().LoadCached(picture, pixels, PictureCache::Exactness::Exact).IsEmpty();
}

PreparedPicture PrepareCellObject(CalendarStore& calendar, int year, int month, int day, Size cell,
                                  double scale, Decode decode) {
    CellContent content = ContentOfCell(calendar, year, month, day);
    if (!content.active || content.count == 0) return {};
    if (!DropVanishedEntries(calendar, year, month, day, &content)) return {};
    for (int attempt = 1;; ++attempt) {
        PreparedPicture prepared = PrepareEntry(content.entry, cell, scale, decode);
        if (prepared.look != PreparedPicture::Look::Nothing) return prepared;
        // A search for another one reads files: the worker that draws the cell again does it.
        if (decode == Decode::Later) prepared.complete = false;
        if (!prepared.complete || attempt == kMostAttempts) return prepared;
        if (!AdvanceCellPhoto(calendar, year, month, day)) return {};
        const std::string tried = std::move(content.entry.path);
        content = ContentOfCell(calendar, year, month, day);
        if (content.entry.path == tried) return {};
    }
}

void DrawDayCell(Canvas& canvas, const Ground& ground, const Rect& cell, int day, int column, bool yearly,
                 const PreparedPicture* object) {
    const DayNumber number(cell, day, column, yearly);
    const Rect box{cell.x + 1, cell.y + 1, cell.width, cell.height};
    Rect digits;
    bool isOnPicture = false;
    if (object && object->look != PreparedPicture::Look::Nothing) {
        digits = number.Digits();
        PaintStyle style = kCellStyle;
        style.corner = CornerFor(digits, box);
        DrawPicture(canvas, box, *object, style);
        isOnPicture = Overlap(PictureArea(box, *object, style), digits);
    }
    if (yearly) {
        if (isOnPicture)
            DrawOutlined(canvas, number);
        else
            canvas.Text(number.at, number.text, number.font, number.color);
    } else if (isOnPicture) {
        DrawOnPlate(canvas, number, digits);
    } else {
        DrawShadowed(canvas, number);
    }
    DrawFrame(canvas, ground, cell);
}

}  // namespace kalmora
