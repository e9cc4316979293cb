#include "views/load/view_photos.h"

#include <sys/stat.h>

#include "app/app_hooks.h"
#include "app/connect_photos.h"
#include "app/dispatch.h"
#include "media/rotation.h"
#include "platform/files.h"
#include "rewrite/safe_rewrite.h"
#include "views/hooks.h"
#include "views/load/object_loader.h"
#include "views/model/calendar_store.h"
#include "views/paint/draw_objects.h"
#include "views/paint/paint_view.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;

constexpr Color kRed{220, 0, 0}, kBlue{0, 0, 220};

class ViewPhotosTest : public ViewTest {
protected:
    ViewPhotosTest() {
        State().settings.TempFolder = files::Join(root_, "Temp");
        State().settings.GoodMode = 0;
        Shell() = AppHooks{};
        ConnectPhotos();
    }
    ~ViewPhotosTest() override {
        Shell() = AppHooks{};
        OnRotationToolMissing = nullptr;
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
                canvas->FillRect({0, 0, size.width / 2, size.height}, kRed);
            else
                canvas->FillRect({0, 0, size.width, size.height / 2}, kRed);
        }
        EXPECT_TRUE(surface->SavePng(png));
        EXPECT_TRUE(MakeFolders(folder));
        EXPECT_TRUE(images::SaveJpeg(images::Load(png, {}, images::Preview::Never), path, 95));
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
        chmod(tool.c_str(), 0755);
        State().settings.PathOfJpegTran = tool;
    }
    void OpenDay() {
        OpenWindow({900, 600});
        ShowDay(2008, 11, 13);
        UpdateObjects();
        ASSERT_TRUE(Settle());
    }
    static PlacedObjectPtr ObjectInDay() { return Calendar().CurrentDayViewer().objects.Front(); }
    static int LikeOf(const std::string& path) { return CPhoto(path).GetEstimate(1); }
};

TEST_F(ViewPhotosTest, RatingGoesThroughTheObjectInTheDay) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kRed);
    OpenDay();
    ASSERT_NE(ObjectInDay(), nullptr);
    EXPECT_EQ(ObjectInDay()->photo->GetEstimate(1), 0);
    EXPECT_TRUE(Shell().RateFile(path, 1));
    EXPECT_TRUE(Shell().RateFile(path, 1));
    EXPECT_EQ(LikeOf(path), 192);
    EXPECT_EQ(ObjectInDay()->photo->estimations.like, 192) << "the view knows without a second read";
}

TEST_F(ViewPhotosTest, RatingGoesThroughTheObjectInTheScatter) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kRed);
    State().view.AllViewMode = 1;
    OpenDay();
    const PlacedObjectPtr object = Calendar().CurrentAllViewer().objects.Front();
    ASSERT_NE(object, nullptr);
    EXPECT_TRUE(Shell().RateFile(path, 4));
    EXPECT_EQ(object->photo->estimations.like, -128);
    EXPECT_EQ(LikeOf(path), -128);
}

TEST_F(ViewPhotosTest, FileThatNoViewHoldsIsRatedByItself) {
    const std::string path = AddPicture(2008, 11, 14, "other.png", kRed);
    OpenDay();
    EXPECT_TRUE(Shell().RateFile(path, 1));
    ShowMonth(2008, 11);
    EXPECT_TRUE(Shell().RateFile(path, 7));
    EXPECT_EQ(LikeOf(path), 0);
    EXPECT_FALSE(Shell().RateFile(files::Join(root_, "absent.png"), 1));
    EXPECT_FALSE(Shell().RateFile(AddText(2008, 11, 14, "a.txt", "a note"), 1));
}

TEST_F(ViewPhotosTest, PictureThatBecomesBadGoesWithTheNextPaintInGoodMode) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kRed);
    OpenDay();
    EXPECT_TRUE(Calendar().CurrentDayViewer().objects.HitTest(
        {ObjectInDay()->drawn.x + 5, ObjectInDay()->drawn.y + 5}, nullptr));
    const Point inside{ObjectInDay()->drawn.x + 5, ObjectInDay()->drawn.y + 5};
    State().settings.GoodMode = 1;
    EXPECT_TRUE(Shell().RateFile(path, 6));
    PaintView();
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(Calendar().CurrentDayViewer().objects.HitTest(inside, nullptr));
    EXPECT_TRUE(Shell().RateFile(path, 7));
    PaintView();
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Calendar().CurrentDayViewer().objects.HitTest(inside, nullptr));
}

TEST_F(ViewPhotosTest, ViewThatIsAtWorkForLongIsNotWaitedFor) {
    const std::string path = AddPicture(2008, 11, 13, "a.png", kRed);
    OpenDay();
    {
        const TicketGuard busy(Calendar().CurrentDayViewer().queue, 1, 1);
        EXPECT_FALSE(Shell().RateFile(path, 1));
    }
    EXPECT_EQ(LikeOf(path), 0);
    EXPECT_TRUE(Shell().RateFile(path, 1));
}

// The neighbor window shows the picture; the day behind it shows it too.
TEST_F(ViewPhotosTest, TurnedPictureIsDrawnAsItIsNow) {
    const std::string path = AddJpeg(DayFolder(2008, 11, 13), "a.jpg", {120, 80});
    UseToolThatMakes(AddJpeg(root_, "turned.jpg", {80, 120}));
    std::vector<std::string> said;
    Shell().IsNeighborShown = [] { return true; };
    Shell().NeighborPath = [path] { return path; };
    Shell().SayInNeighbor = [&](const std::string& words) { said.push_back(words); };
    Shell().ReloadNeighbor = [&] { said.emplace_back("reload"); };
    OpenDay();
    const Rect before = ObjectInDay()->drawn;
    ASSERT_GT(before.width, before.height);
    EXPECT_GT(PixelAt(before.x + 4, before.y + before.height - 5).red, 150) << "red at the left";
    DispatchCommand(*window_, 1060);
    EXPECT_THAT(said, ElementsAre("Rotating", "Ok.    ", "reload"));
    PaintView();
    ASSERT_TRUE(Settle());
    const Rect after = ObjectInDay()->drawn;
    EXPECT_GT(after.height, after.width);
    EXPECT_EQ(after.height, before.height) << "the lines of a day are as high as ever";
    EXPECT_GT(PixelAt(after.x + after.width / 2, after.y + 4).red, 150) << "red at the top";
    EXPECT_GT(PixelAt(after.x + after.width / 2, after.y + after.height - 5).blue, 150) << "blue below";
}

TEST_F(ViewPhotosTest, SlideShowIsTurnedBeforeTheNeighborWindow) {
    const std::string path = AddJpeg(root_, "a.jpg", {120, 80});
    UseToolThatMakes(AddJpeg(root_, "turned.jpg", {120, 80}));
    std::vector<std::string> said;
    State().settings.TimingOfChangeSlide = 3;
    Hooks().IsSlideShowOpen = [] { return true; };
    Shell().IsNeighborShown = [] { return true; };
    Shell().SlidePath = [path] { return path; };
    Shell().SayInSlideShow = [&](const std::string& words, int ticks) {
        said.push_back(words + std::to_string(ticks));
    };
    Shell().ReloadSlide = [&] { said.emplace_back("reload"); };
    OpenWindow({100, 100});
    DispatchCommand(*window_, 1061);
    EXPECT_THAT(said, ElementsAre("Rotating150", "Ok.    30", "reload"));
    said.clear();
    DispatchCommand(*window_, 1062);
    EXPECT_THAT(said, ElementsAre("Rotating150", "Error. 30"))
        << "the tool's picture does not lie on its side";
}

TEST_F(ViewPhotosTest, RatingCommandsReachTheSlideShowOrElseTheNeighborWindow) {
    std::vector<std::string> said;
    bool slideShow = true, neighbor = true;
    Hooks().IsSlideShowOpen = [&] { return slideShow; };
    Shell().IsNeighborShown = [&] { return neighbor; };
    Shell().RateSlide = [&](int type) { said.push_back("slide " + std::to_string(type)); };
    Shell().RateNeighbor = [&](int type) { said.push_back("neighbor " + std::to_string(type)); };
    OpenWindow({100, 100});
    DispatchCommand(*window_, 1100);
    slideShow = false;
    for (int id = 1100; id <= 1106; ++id) DispatchCommand(*window_, id);
    neighbor = false;
    DispatchCommand(*window_, 1103);
    DispatchCommand(*window_, 1107);
    EXPECT_THAT(said, ElementsAre("slide 1", "neighbor 1", "neighbor 2", "neighbor 3", "neighbor 4",
                                  "neighbor 5", "neighbor 6", "neighbor 7"));
    Hooks() = ViewHooks{};
}

}  // namespace
}  // namespace kalmora
