#include "views/paint/paint_cell.h"

#include <algorithm>
#include <cstdio>

#include "media/my_object.h"
#include "pictures/res_pictures.h"
#include "pictures/text_card.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"
#include "views/model/cell_content.h"
#include "views/paint/cell_picture.h"

namespace kalmora {

namespace {

constexpr int kMovieMarkMargin = 5;
constexpr char kMovieMark[] = "Res/movie.png";
constexpr Color kBlack{0, 0, 0};
constexpr Color kWhite{255, 255, 255};
constexpr Color kShadow = ColorFromBgr(0xC8C8C8);
constexpr Color kSunday = ColorFromBgr(0x0000FF);
constexpr Color kSaturday = ColorFromBgr(0xFF0000);
constexpr Color kFrame{43, 53, 73, 150};
constexpr Color kNumberPlate{255, 255, 255, 205};  // keeps the number legible on dark photos and over texts

Color ColorOfColumn(int column) { return column == 6 ? kSunday : column == 5 ? kSaturday : kBlack; }

Image PictureFor(const std::string& path, Size cell, double scale, Decode decode, bool* complete) {
    const Size pixels = CellPicturePixels(cell, scale);
    if (decode == Decode::Now) return images::Load(path, pixels);
    Image picture = images::LoadCached(path, pixels, false);
    if (!picture.IsEmpty()) return picture;
    *complete = false;
    return images::LoadCached(path, pixels, true);
}

void DrawMovieMark(Canvas& canvas, const Rect& picture) {
    const Size natural = MeasureResPicture(kMovieMark);
    if (natural.IsEmpty()) return;
    // At its own size where the picture has room for it; the small cells of a year get it smaller.
    const double fit =
        std::min({1.0, picture.width * 0.5 / natural.width, picture.height * 0.5 / natural.height});
    const Size size{static_cast<int>(natural.width * fit), static_cast<int>(natural.height * fit)};
    const int margin = fit < 1.0 ? 1 : kMovieMarkMargin;
    const Rect area{picture.Right() - margin - size.width, picture.Bottom() - margin - size.height,
                    size.width, size.height};
    canvas.DrawImage(area, LoadResPicture(kMovieMark, size, canvas.Scale()));
}

PreparedObject Prepare(const CellContent& content, Size cell, double scale, Decode decode) {
    PreparedObject object;
    const DayEntry& entry = content.entry;
    switch (entry.kind) {
        case ObjectKind::Image:
        case ObjectKind::Movie: {
            const std::string picture = CellPicturePath(entry);
            if (picture.empty()) return object;
            object.picture = PictureFor(picture, cell, scale, decode, &object.complete);
            if (object.picture.IsEmpty()) return object;
            object.look =
                entry.kind == ObjectKind::Movie ? PreparedObject::Look::Movie : PreparedObject::Look::Picture;
            return object;
        }
        case ObjectKind::Text:
            if (auto head = ReadTextHead(entry.path, kCellTextBytes)) {
                object.text = std::move(*head);
                object.look = PreparedObject::Look::Text;
            }
            return object;
        default:
            object.text = entry.path;
            object.look = PreparedObject::Look::Path;
            return object;
    }
}

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

// Frames in cells want the head exactly as it is written, unlike the cards of objects.
void DrawTextFrame(Canvas& canvas, const Rect& area, const std::string& text) {
    DrawTextCard(canvas, area, text, TextKindOf(text, HeadMatch::Exact));
}

}  // namespace

bool IsCellPictureCached(int year, int month, int day) {
    const Window* window = MainWindow();
    const CellContent content = ContentOfCell(year, month, day);
    if (!window || content.count == 0) return true;
    const std::string picture = CellPicturePath(content.entry);
    if (picture.empty()) return true;
    const MonthGrid grid = MakeMonthGrid(year, month, {0, 0, window->ClientSize().width, 0}, false);
    const Size pixels = CellPicturePixels({grid.cellWidth, grid.cellHeight}, window->Scale());
    return !images::LoadCached(picture, pixels, false).IsEmpty();
}

PreparedObject PrepareCellObject(int year, int month, int day, Size cell, double scale, Decode decode) {
    CellContent content = ContentOfCell(year, month, day);
    if (!content.active || content.count == 0) return {};
    if (!DropVanishedEntries(year, month, day, &content)) return {};
    if ((State().settings.GoodMode || State().settings.PublicMode) && !IsEntryShown(content.entry)) return {};
    return Prepare(content, cell, scale, decode);
}

int DrawCellObject(Canvas& canvas, const Rect& cell, const PreparedObject& object) {
    switch (object.look) {
        case PreparedObject::Look::Nothing:
            return -1;
        case PreparedObject::Look::Picture:
        case PreparedObject::Look::Movie: {
            const Rect area = FitInCell(object.picture.GetSize(), cell);
            if (area.IsEmpty()) return -1;
            canvas.DrawImage(area, object.picture);
            if (object.look == PreparedObject::Look::Movie) DrawMovieMark(canvas, area);
            return 0;
        }
        case PreparedObject::Look::Text:
            DrawTextFrame(canvas, cell, object.text);
            return 0;
        case PreparedObject::Look::Path: {
            const AppState& state = State();
            canvas.Rectangle(cell, kWhite, kBlack);
            canvas.TextBlock({cell.x + 2, cell.y + 2, cell.width - 4, cell.height - 4}, object.text,
                             {state.settings.MiniFontFace, state.settings.MiniFontHeight}, kBlack);
            return 0;
        }
    }
    return -1;
}

void DrawDayCell(Canvas& canvas, const Rect& cell, int day, int column, bool yearly,
                 const PreparedObject* object) {
    const AppState& state = State();
    if (object) DrawCellObject(canvas, {cell.x + 1, cell.y + 1, cell.width, cell.height}, *object);
    char number[8];
    std::snprintf(number, sizeof number, "%02d", day);
    const bool covered = object && object->look != PreparedObject::Look::Nothing;
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
    const Point topLeft{cell.x, cell.y}, topRight{cell.Right(), cell.y},
        bottomRight{cell.Right(), cell.Bottom()}, bottomLeft{cell.x, cell.Bottom()};
    canvas.Line(topLeft, topRight, kFrame);
    canvas.Line(topRight, bottomRight, kFrame);
    canvas.Line(bottomRight, bottomLeft, kFrame);
    canvas.Line(bottomLeft, topLeft, kFrame);
}

}  // namespace kalmora
