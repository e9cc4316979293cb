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
constexpr Color kNumberPlate{255, 255, 255, 205};  // keeps the number legible on dark photos and over texts

Color ColorOfColumn(int column) { return column == 6 ? kSunday : column == 5 ? kSaturday : kBlack; }

void DrawNumberPlate(Canvas& canvas, const Rect& cell, const char* number, bool yearly) {
    const AppState& state = State();
    const Font font = yearly
                          ? Font{state.settings.DayFontFaceForYearly, state.settings.DayFontHeightForYearly}
                          : Font{state.settings.DayFontFace, state.settings.DayFontHeight};
    const int inset = yearly ? 4 : 8, border = yearly ? 1 : 4;
    const Size size = MeasureText(number, font);
    canvas.FillRect(
        {cell.x + inset - border, cell.y + inset - border / 2, size.width + 2 * border, size.height + border},
        kNumberPlate);
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

bool IsCellPictureCached(int year, int month, int day) {
    const Window* window = MainWindow();
    const CellContent content = ContentOfCell(year, month, day);
    if (!window || content.count == 0) return true;
    const std::string picture = PictureFileOf(content.entry.path, content.entry.kind);
    if (picture.empty()) return true;
    const MonthGrid grid = MakeMonthGrid(year, month, {0, 0, window->ClientSize().width, 0}, false);
    const Size pixels = BoxPixels({grid.cellWidth, grid.cellHeight}, window->Scale());
    return !Pictures().LoadCached(picture, pixels, PictureCache::Exactness::Exact).IsEmpty();
}

PreparedPicture PrepareCellObject(int year, int month, int day, Size cell, double scale, Decode decode) {
    CellContent content = ContentOfCell(year, month, day);
    if (!content.active || content.count == 0) return {};
    if (!DropVanishedEntries(year, month, day, &content)) return {};
    for (int attempt = 1;; ++attempt) {
        PreparedPicture prepared = PrepareEntry(content.entry, cell, scale, decode);
        if (prepared.look != PreparedPicture::Look::Nothing) return prepared;
        // A search for another one reads files: the worker that draws the cell again does it.
        if (decode == Decode::Later) prepared.complete = false;
        if (!prepared.complete || attempt == kMostAttempts) return prepared;
        if (!AdvanceCellPhoto(year, month, day)) return {};
        const std::string tried = std::move(content.entry.path);
        content = ContentOfCell(year, month, day);
        if (content.entry.path == tried) return {};
    }
}

void DrawDayCell(Canvas& canvas, const Ground& ground, const Rect& cell, int day, int column, bool yearly,
                 const PreparedPicture* object) {
    const AppState& state = State();
    if (object) DrawPicture(canvas, {cell.x + 1, cell.y + 1, cell.width, cell.height}, *object, kCellStyle);
    char number[8];
    std::snprintf(number, sizeof number, "%02d", day);
    const bool covered = object && object->look != PreparedPicture::Look::Nothing;
    if (covered) DrawNumberPlate(canvas, cell, number, yearly);
    if (yearly) {
        canvas.Text({cell.x + 4, cell.y + 4}, number,
                    {state.settings.DayFontFaceForYearly, state.settings.DayFontHeightForYearly},
                    ColorOfColumn(column));
    } else {
        const Font font{state.settings.DayFontFace, state.settings.DayFontHeight};
        canvas.Text({cell.x + 10, cell.y + 10}, number, font, kShadow);
        canvas.Text({cell.x + 8, cell.y + 8}, number, font, ColorOfColumn(column));
    }
    DrawFrame(canvas, ground, cell);
}

}  // namespace kalmora
