// How the number of a day and what it is drawn on go together, and how pictures lie on one another.
#include <cstdlib>

#include "pictures/picture_painter.h"
#include "pictures/res_pictures.h"
#include "views/model/calendar_geometry.h"
#include "views/paint/background.h"
#include "views/paint/paint_cell.h"
#include "views/paint/paint_month.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

constexpr Color kRedPlate{200, 30, 30}, kNight{10, 20, 60};
constexpr Rect kMonthCell{10, 10, 180, 135}, kYearCell{10, 10, 34, 25};
constexpr char kLongNote[] =
    "[Memo]\nWide words WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW WWWWW";

class CellLookTest : public ViewTest {
protected:
    enum class Grid { Month, Year };

    static PreparedPicture Card(const std::string& text) {
        PreparedPicture card;
        card.look = PreparedPicture::Look::TextCard;
        card.text = text;
        card.textKind = TextKind::Memo;
        return card;
    }
    PreparedPicture Photo(Color color, Size size) {
        const std::string path = AddPicture(2008, 11, 3, "a.png", color, size);
        return PreparePicture({path, ObjectKind::Image, path, {}}, {180, 135}, 1, kCellStyle);
    }
    static std::unique_ptr<Surface> Drawn(const PreparedPicture* object, Grid grid) {
        std::unique_ptr<Surface> surface = Surface::Create({200, 160}, 1);
        const auto canvas = surface->Draw();
        RestoreBackground(*canvas, {}, {0, 0, 200, 160});
        const bool yearly = grid == Grid::Year;
        DrawDayCell(*canvas, {}, yearly ? kYearCell : kMonthCell, 13, 0, yearly, object);
        return surface;
    }
    template <typename IsRight>
    static int Count(const Surface& surface, const Rect& area, IsRight isRight) {
        int count = 0;
        for (int y = area.y; y < area.Bottom(); ++y)
            for (int x = area.x; x < area.Right(); ++x) count += isRight(surface.PixelAt(x, y));
        return count;
    }
    static int Differences(const Surface& one, const Surface& other, const Rect& area) {
        int count = 0;
        for (int y = area.y; y < area.Bottom(); ++y)
            for (int x = area.x; x < area.Right(); ++x) count += one.PixelAt(x, y) != other.PixelAt(x, y);
        return count;
    }
};

// ---- on a card

TEST_F(CellLookTest, NoLetterOfANoteIsUnderItsNumber) {
    const PreparedPicture note = Card(kLongNote), empty = Card("");
    const auto written = Drawn(&note, Grid::Month), blank = Drawn(&empty, Grid::Month);
    const Rect digits{kMonthCell.x + 8, kMonthCell.y + 8, 22, 20};
    EXPECT_EQ(Differences(*written, *blank, {11, 11, digits.Right() - 11, digits.Bottom() - 13}), 0);
    EXPECT_GT(Differences(*written, *blank, {digits.Right() + 4, 11, 140, 14}), 50) << "it begins beside it";
    EXPECT_GT(Differences(*written, *blank, {11, digits.Bottom() + 2, 100, 60}), 50) << "and goes on below";
}

TEST_F(CellLookTest, NumberOfANoteIsOnTheCardsColour) {
    const PreparedPicture note = Card(kLongNote);
    const auto surface = Drawn(&note, Grid::Month);
    const Color back = State().settings.TextStyles[static_cast<std::size_t>(TextKind::Memo)].back;
    for (int x = 13; x < 18; ++x) EXPECT_EQ(surface->PixelAt(x, 28), back);
    EXPECT_EQ(Count(*surface, {13, 13, 30, 20}, [](Color c) { return c == Color{255, 255, 255}; }), 0);
}

TEST_F(CellLookTest, NoteInASmallCellIsNeverAMereEllipsis) {
    const PreparedPicture note = Card(kLongNote), empty = Card("");
    EXPECT_EQ(Differences(*Drawn(&note, Grid::Year), *Drawn(&empty, Grid::Year), {0, 0, 200, 160}), 0);
}

// ---- on a photo

TEST_F(CellLookTest, NumberOnAPhotoHasAPlateAndNoGreyShadow) {
    const PreparedPicture photo = Photo(kRedPlate, {180, 135});
    const auto surface = Drawn(&photo, Grid::Month);
    const auto isGrey = [](Color c) {
        return std::abs(c.red - c.green) < 8 && std::abs(c.green - c.blue) < 8 && c.red > 150 && c.red < 215;
    };
    EXPECT_EQ(Count(*surface, {12, 14, 40, 30}, isGrey), 0);
    EXPECT_EQ(surface->PixelAt(15, 28), (Color{244, 211, 211})) << "the plate is there";
    EXPECT_EQ(surface->PixelAt(15, 60), kRedPlate);
}

TEST_F(CellLookTest, NumberBesideAPhotoLooksAsOnAnEmptyDay) {
    const PreparedPicture portrait = Photo(kRedPlate, {40, 135});
    const auto surface = Drawn(&portrait, Grid::Month), empty = Drawn(nullptr, Grid::Month);
    EXPECT_EQ(Differences(*surface, *empty, {10, 10, 50, 40}), 0);
    EXPECT_EQ(surface->PixelAt(100, 80), kRedPlate);
}

TEST_F(CellLookTest, NumberInTheYearIsOutlinedAndLetsThePictureBeSeen) {
    const PreparedPicture photo = Photo(kNight, {34, 25});
    const auto surface = Drawn(&photo, Grid::Year);
    const Rect number{kYearCell.x + 3, kYearCell.y + 3, 15, 12};
    const int white = Count(*surface, number, [](Color c) { return c.red > 200; });
    const int picture = Count(*surface, number, [](Color c) { return c == kNight; });
    EXPECT_GT(white, 20) << "the outline";
    EXPECT_GT(picture, 40) << "no plate";
}

// ---- the weekdays

TEST_F(CellLookTest, WeekdaysOfASmallMonthArePlain) {
    const auto strip = [this](int width, const std::string& name) {
        const MonthGrid grid = MakeMonthGrid(2008, 11, {0, 0, width, width}, true);
        const auto drawn = Surface::Create({width, width}, 1), wanted = Surface::Create({width, width}, 1);
        for (const auto& surface : {drawn.get(), wanted.get()})
            surface->Draw()->FillRect({0, 0, width, width}, {251, 247, 239});
        DrawMonth(*calendar_, *drawn->Draw(), grid, 1, Decode::Now);
        const Rect area = WeekdayRect(grid, 5);
        wanted->Draw()->DrawImage(area, LoadResPicture(name, {area.width, area.height}, 1));
        // Without the border that a neighbour and the first row may touch.
        return Differences(*drawn, *wanted, {area.x + 1, area.y, area.width - 2, area.height - 1}) == 0;
    };
    EXPECT_TRUE(strip(960 / 4, WeekdayPictureName(5, WeekdayDrawing::Plain)));
    EXPECT_TRUE(strip(1920 / 4, WeekdayPictureName(5, WeekdayDrawing::Whole)));
    EXPECT_FALSE(strip(1920 / 4, WeekdayPictureName(5, WeekdayDrawing::Plain)));
}

// ---- pictures of a day and of the scatter

TEST_F(CellLookTest, StrewnPictureHasAThinLightEdge) {
    const std::string path = AddPicture(2008, 11, 3, "a.png", kNight, {60, 40});
    const Rect box{20, 20, 60, 40};
    const auto surface = Surface::Create({100, 80}, 1);
    const auto draw = [&](const PaintStyle& style) {
        const PreparedPicture photo =
            PreparePicture({path, ObjectKind::Image, path, {60, 40}}, {60, 40}, 1, style);
        DrawPicture(*surface->Draw(), box, photo, style);
    };
    draw(kPhotoStyle);
    EXPECT_EQ(surface->PixelAt(20, 40), kNight);
    draw(kStrewnStyle);
    const Color edge = surface->PixelAt(20, 40);
    EXPECT_GT(edge.red, 100);
    for (const auto& [x, y] : {std::pair{20, 20}, {79, 20}, {20, 59}, {79, 59}, {50, 20}, {79, 40}, {50, 59}})
        EXPECT_EQ(surface->PixelAt(x, y), edge) << x << "," << y;
    EXPECT_EQ(surface->PixelAt(21, 21), kNight) << "one pixel wide";
    EXPECT_NE(surface->PixelAt(19, 40), edge) << "inside the picture";
    draw(kStrewnStyle);
    EXPECT_EQ(surface->PixelAt(20, 40), edge) << "drawn again it is the same";
}

}  // namespace
}  // namespace kalmora
