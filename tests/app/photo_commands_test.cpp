// What is done to the photos in the view: ratings and turns.

#include "app/app_fixture.h"
#include "app/desktop_services.h"
#include "app/dispatch.h"
#include "media/rotation.h"
#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "support/permissions.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/draw_objects.h"
#include "views/paint/paint_view.h"

namespace kalmora {
namespace {

using testing::ElementsAre;

constexpr Color kPictureRed{220, 0, 0}, kBlue{0, 0, 220};

class ViewPhotosTest : public AppTest {
protected:
    ViewPhotosTest() {
        State().settings.TempFolder = files::Join(root_, "Temp");
        State().settings.GoodMode = 0;
    }
    ~ViewPhotosTest() override {
        State().settings.TempFolder.clear();
        State().settings.PathOfJpegTran.clear();
        State().settings.GoodMode = 0;
    }

    // A JPEG of that size whose upper left is red and whose lower right is blue.
    std::string AddJpeg(const std::string& folder, const std::string& name, Size size) {
        const std::string png = files::Join(root_, "picture.png"), path = files::Join(folder, name);
        const auto surface = Surface::Create(size, 1.0);
        {
            const auto canvas = surface->Draw();
            canvas->FillRect({0, 0, size.width, size.height}, kBlue);
            if (size.width > size.height)
                canvas->FillRect({0, 0, size.width / 2, size.height}, kPictureRed);
            else
                canvas->FillRect({0, 0, size.width, size.height / 2}, kPictureRed);
        }
        EXPECT_TRUE(surface->SavePng(png));
        EXPECT_TRUE(MakeFolders(folder));
        EXPECT_TRUE(images::SaveJpeg(Pictures().Load(png, {}, images::Preview::Never), path, 95));
        return path;
    }
    static bool MakeFolders(const std::string& folder) {
        for (std::size_t at = 1; at != std::string::npos; at = folder.find('/', at + 1))
            files::MakeFolder(folder.substr(0, at));
        return files::MakeFolder(folder) != files::FileResult::Failed;
    }
    // A tool that puts this picture in the place of any.
    void UseToolThatMakes(const std::string& turned) {
        const std::string tool = files::Join(root_, "tool");
        ASSERT_EQ(files::WriteWholeFile(tool, "#!/bin/sh\ncat '" + turned + "' > \"$6\"\n"),
                  files::FileResult::Done);
        test::MakeExecutable(tool);
        State().settings.PathOfJpegTran = tool;
    }
    void OpenDay() {
        OpenWindow({900, 600});
        ShowDay(2008, 11, 13);
        UpdateObjects(*calendar_);
        ASSERT_TRUE(WaitUntilIdle());
    }
    PlacedObjectPtr ObjectInDay() { return calendar_->CurrentDayViewer().objects.Front(); }
    DesktopPhotoRater rater_{*calendar_};
    static int LikeOf(const std::string& path) { return CPhoto(path).GetEstimate(1); }
};

TEST_F(ViewPhotosTest, RatingGoesThroughTheObjectInTheDay) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kPictureRed);
    OpenDay();
    ASSERT_NE(ObjectInDay(), nullptr);
    EXPECT_EQ(ObjectInDay()->photo->GetEstimate(1), 0);
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Like));
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Like));
    EXPECT_EQ(LikeOf(path), 192);
    EXPECT_EQ(ObjectInDay()->photo->estimations.like, 192) << "the view knows without a second read";
}

TEST_F(ViewPhotosTest, RatingGoesThroughTheObjectInTheScatter) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kPictureRed);
    ChangeView([&](ViewState& view) { view.scatter = true; });
    OpenDay();
    const PlacedObjectPtr object = calendar_->CurrentAllViewer().objects.Front();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Dislike));
    EXPECT_EQ(object->photo->estimations.like, -128);
    EXPECT_EQ(LikeOf(path), -128);
}

TEST_F(ViewPhotosTest, FileThatNoViewHoldsIsRatedByItself) {
    const std::string path = AddPicture(2008, 11, 14, "other.png", kPictureRed);
    OpenDay();
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Like));
    ShowMonth(2008, 11);
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Clear));
    EXPECT_EQ(LikeOf(path), 0);
    EXPECT_FALSE(rater_.Rate(files::Join(root_, "absent.png"), EstimateType::Like));
    EXPECT_FALSE(rater_.Rate(AddText(2008, 11, 14, "a.txt", "a note"), EstimateType::Like));
}

TEST_F(ViewPhotosTest, PictureThatBecomesBadGoesWithTheNextPaintInGoodMode) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kPictureRed);
    OpenDay();
    EXPECT_TRUE(calendar_->CurrentDayViewer().objects.HitTest(
        {ObjectInDay()->drawn.x + 5, ObjectInDay()->drawn.y + 5}, nullptr));
    const Point inside{ObjectInDay()->drawn.x + 5, ObjectInDay()->drawn.y + 5};
    State().settings.GoodMode = 1;
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Bad));
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_FALSE(calendar_->CurrentDayViewer().objects.HitTest(inside, nullptr));
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Clear));
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_TRUE(calendar_->CurrentDayViewer().objects.HitTest(inside, nullptr));
}

TEST_F(ViewPhotosTest, ViewThatIsAtWorkForLongIsNotWaitedFor) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kPictureRed);
    OpenDay();
    {
        const TicketGuard busy(calendar_->CurrentDayViewer().queue, 1, 1);
        EXPECT_FALSE(rater_.Rate(path, EstimateType::Like));
    }
    EXPECT_EQ(LikeOf(path), 0);
    EXPECT_TRUE(rater_.Rate(path, EstimateType::Like));
}

// The neighbor window shows the picture; the day behind it shows it too.
TEST_F(ViewPhotosTest, TurnedPictureIsDrawnAsItIsNow) {
    const std::string path = AddJpeg(DayFolder(2008, 11, 13), "a.jpg", {120, 80});
    UseToolThatMakes(AddJpeg(root_, "turned.jpg", {80, 120}));
    neighbor_.shown = true;
    neighbor_.path = path;
    OpenDay();
    const Rect before = ObjectInDay()->drawn;
    ASSERT_GT(before.width, before.height);
    EXPECT_GT(PixelAt(before.x + 4, before.y + before.height - 5).red, 150) << "red at the left";
    calls_.Clear();
    DispatchCommand(parts_, *window_, 1060);
    EXPECT_THAT(Calls(),
                ElementsAre("SayNeighbor \"Rotating\" 100", "SayNeighbor \"Ok.    \" 20", "ReloadNeighbor"));
    PaintView(*calendar_);
    ASSERT_TRUE(WaitUntilIdle());
    const Rect after = ObjectInDay()->drawn;
    EXPECT_GT(after.height, after.width);
    EXPECT_EQ(after.height, before.height) << "the lines of a day are as high as ever";
    EXPECT_GT(PixelAt(after.x + after.width / 2, after.y + 4).red, 150) << "red at the top";
    EXPECT_GT(PixelAt(after.x + after.width / 2, after.y + after.height - 5).blue, 150) << "blue below";
}

TEST_F(ViewPhotosTest, SlideShowIsTurnedBeforeTheNeighborWindow) {
    const std::string path = AddJpeg(root_, "a.jpg", {120, 80});
    UseToolThatMakes(AddJpeg(root_, "turned.jpg", {120, 80}));
    State().settings.TimingOfChangeSlide = 3;
    slideShow_.shown = neighbor_.shown = true;
    slideShow_.path = path;
    OpenWindow({100, 100});
    DispatchCommand(parts_, *window_, 1061);
    EXPECT_THAT(Calls(), ElementsAre("SaySlide \"Rotating\" 150", "SaySlide \"Ok.    \" 30", "ReloadSlide"));
    DispatchCommand(parts_, *window_, 1062);
    EXPECT_THAT(Calls(), ElementsAre("SaySlide \"Rotating\" 150", "SaySlide \"Error. \" 30"))
        << "the tool's picture does not lie on its side";
}

TEST_F(ViewPhotosTest, RatingCommandsReachTheSlideShowOrElseTheNeighborWindow) {
    slideShow_.shown = neighbor_.shown = true;
    OpenWindow({100, 100});
    DispatchCommand(parts_, *window_, 1100);
    slideShow_.shown = false;
    for (int id = 1100; id <= 1106; ++id) DispatchCommand(parts_, *window_, id);
    neighbor_.shown = false;
    DispatchCommand(parts_, *window_, 1103);
    DispatchCommand(parts_, *window_, 1107);
    EXPECT_THAT(Calls(), ElementsAre("RateSlide 1", "RateNeighbor 1", "RateNeighbor 2", "RateNeighbor 3",
                                     "RateNeighbor 4", "RateNeighbor 5", "RateNeighbor 6", "RateNeighbor 7"));
}

}  // namespace
}  // namespace kalmora
