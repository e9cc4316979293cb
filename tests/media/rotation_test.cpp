#include "media/rotation.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <vector>

#include "exif_builder.h"
#include "media/jpeg_segments.h"
#include "media/preview_reader.h"
#include "multi_picture_builder.h"
#include "picture_files.h"
#include "platform/files.h"
#include "support/permissions.h"
#include "write_fixture.h"

namespace kalmora {
namespace {

using test::ContentOf;
using test::DecodableJpeg;
using test::ExifBuilder;
using testing::ElementsAre;

class RotationTest : public test::WriteTest {
protected:
    RotationTest() {
        UseTool("cat \"$source\" >/dev/null; cp '" + folder.Add("turned", DecodableJpeg(48, 64)) +
                "' \"$target\"");
    }
    ~RotationTest() override { State().settings.PathOfJpegTran.clear(); }
    // A shell script that notes the words of its command line and does this.
    void UseTool(const std::string& script) {
        const std::string path =
            folder.Add("tool", "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + folder / "said" +
                                   "'\nfor word; do source=$target; target=$word; done\n" + script + "\n");
        test::MakeExecutable(path);
        State().settings.PathOfJpegTran = path;
    }
    bool WasCalled() const { return files::Exists(folder / "said"); }

    std::string PutPhoto(const std::string& name = "a.jpg") {
        return folder.Add(name, DecodableJpeg(64, 48));
    }
};

TEST_F(RotationTest, CallsTheToolWithThePhotoAndAScratchFile) {
    const std::string path = PutPhoto("a b \"c\".jpg");
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_EQ(ContentOf(folder / "said"),
              "-copy\nall\n-rotate\n90\n" + path + "\n" + folder / "Temp/$turned.jpg" + "\n");
    EXPECT_EQ(ContentOf(path), DecodableJpeg(48, 64));
    EXPECT_EQ(FilesInTemp(), 0u);
}

TEST_F(RotationTest, TakesTheExtensionInAnyCase) {
    for (const char* name : {"a.JPG", "a.jpeg", "a.JpEg"})
        EXPECT_EQ(RotateJpeg(PutPhoto(name), 270), RotateResult::Turned) << name;
}

TEST_F(RotationTest, OfAnythingElseCallsNoTool) {
    for (const char* name : {"a.png", "a.jpe", "a.tif", "jpg"})
        EXPECT_EQ(RotateJpeg(PutPhoto(name), 90), RotateResult::NotJpeg) << name;
    EXPECT_EQ(RotateJpeg(folder.Add("b.jpg", "no picture"), 90), RotateResult::NotJpeg);
    EXPECT_EQ(RotateJpeg(folder / "absent.jpg", 90), RotateResult::Failed);
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotationTest, WithoutTheToolLeavesThePicture) {
    State().settings.PathOfJpegTran = folder / "no/such tool";
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::NoTool);
    EXPECT_EQ(RotateJpeg(PutPhoto("a.png"), 90), RotateResult::NoTool) << "asked before the extension";
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48));
}

TEST_F(RotationTest, ToolThatCannotBeStartedLeavesThePicture) {
    State().settings.PathOfJpegTran = folder.Add("not executable", "x");
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Failed);
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48));
    State().settings.PathOfJpegTran = folder.Path();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Failed);
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48));
    EXPECT_EQ(FilesInTemp(), 0u);
}

TEST_F(RotationTest, GivesTheFileItsTimes) {
    const std::string path = PutPhoto();
    files::SetTimes(path, FileTime{123'456'789'000'000'000}, FileTime{123'456'000'000'000'000});
    const FileTime created = files::GetStatus(path)->created;
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    const auto status = files::GetStatus(path);
    EXPECT_EQ(status->created, created);
    EXPECT_EQ(status->written.ticks, kClockTicks);
}

TEST_F(RotationTest, OfAMirroredPictureTurnsTheOtherWay) {
    for (const auto& [orientation, word] : {std::pair{1, "90"},
                                            {3, "90"},
                                            {6, "90"},
                                            {8, "90"},
                                            {2, "270"},
                                            {4, "270"},
                                            {5, "270"},
                                            {7, "270"},
                                            {9, "90"}}) {
        std::filesystem::remove(folder / "said");
        const std::string block =
            test::ExifBuilder()
                .Short(test::ExifBuilder::Main, 0x0112, static_cast<unsigned>(orientation))
                .Build();
        ASSERT_EQ(RotateJpeg(folder.Add("a.jpg", DecodableJpeg(64, 48, block)), 90), RotateResult::Turned);
        EXPECT_THAT(ContentOf(folder / "said"), testing::HasSubstr("-rotate\n" + std::string(word) + "\n"))
            << orientation;
    }
}

TEST_F(RotationTest, ReadOnlyPictureIsLeft) {
    const std::string path = PutPhoto();
    test::MakeReadOnly(path);
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Denied);
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotationTest, PictureThatSomebodyPutThereMeanwhileStays) {
    const std::string edited = folder.Add("edited", DecodableJpeg(64, 48) + "edited");
    const std::string turned = folder.Add("turned", DecodableJpeg(48, 64));
    UseTool("mv '" + edited + "' \"$source\"; cp '" + turned + "' \"$target\"");
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Changed);
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48) + "edited");
    EXPECT_EQ(FilesInTemp(), 0u);
}

// ---- what lies behind the picture
class RotationOfSeveralTest : public RotationTest {
protected:
    // The tool gives this for the photo, and this for its thumbnail.
    void UseResults(const std::string& photo, const std::string& thumbnail = "no picture") {
        UseTool("case $source in *small*) cp '" + folder.Add("turned thumbnail", thumbnail) +
                "' \"$target\";; *) cp '" + folder.Add("turned", photo) + "' \"$target\";; esac");
    }
    // A picture of that size that is longer by so many bytes, all of them in its scan.
    static std::string Longer(const std::string& jpeg, std::size_t by) {
        return std::string(jpeg).insert(jpeg.size() - 2, by, 'x');
    }
    static ExifBuilder WithNote(std::uint32_t number) {
        return ExifBuilder().Undefined(ExifBuilder::Exif, 0x927C,
                                       "unknown maker" + test::Word32(ByteOrder::Little, number) + "end");
    }
};

TEST_F(RotationOfSeveralTest, WhatFollowsThePictureWasDropped) {
    const std::string picture = DecodableJpeg(64, 48), movie = std::string(3000, '\0') + picture + "ftypmp42";
    for (const std::size_t spare : {std::size_t{0}, std::size_t{1}, std::size_t{500}}) {
        UseResults(DecodableJpeg(48, 64));
        const std::string path = folder.Add("a.jpg", Longer(picture, spare) + movie);
        ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
        std::string turned = DecodableJpeg(48, 64);
        turned.insert(turned.size() - 2, spare, '\xFF');
        EXPECT_EQ(ContentOf(path), turned + movie) << "at the same place";
        EXPECT_THAT(ContentOf(folder / "said"), testing::HasSubstr("all\n-optimize\n-rotate\n"));
    }
}

TEST_F(RotationOfSeveralTest, LongerPictureMovesWhatFollowsWhenNothingTellsOfIt) {
    UseResults(Longer(DecodableJpeg(48, 64), 70));
    const std::string path = folder.Add("a.jpg", DecodableJpeg(64, 48) + "a movie");
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_EQ(ContentOf(path), Longer(DecodableJpeg(48, 64), 70) + "a movie");
}

TEST_F(RotationOfSeveralTest, IndexOfFurtherPicturesPointedAtNothing) {
    const std::string second = DecodableJpeg(16, 16);
    for (const std::size_t longer : {0, 700}) {
        UseResults(Longer(DecodableJpeg(48, 64), longer));
        const std::string path =
            folder.Add("a.jpg", test::TwoPictures(DecodableJpeg(64, 48), second, "gap") + "trailer");
        ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
        const std::string after = ContentOf(path);
        constexpr std::size_t kPayload = 2 + 4;
        const auto pictures = ReadMultiPictureIndex(after.substr(kPayload));
        ASSERT_TRUE(pictures);
        EXPECT_EQ(after.substr(kPayload + kMultiPictureHead + (*pictures)[1].offset, (*pictures)[1].length),
                  second);
        EXPECT_EQ(after.substr((*pictures)[0].length, 3), "gap");
        EXPECT_EQ(after.substr(after.size() - second.size() - 7), second + "trailer");
    }
}

TEST_F(RotationOfSeveralTest, NoteThatMayTellOfAPlaceBehindLeavesThePhotoAlone) {
    const std::string preview = "\xFF\xD8\xFF preview";
    const auto put = [&](std::uint32_t number) {
        return folder.Add("a.jpg", DecodableJpeg(64, 48, WithNote(number).Build()) + preview);
    };
    const auto end = static_cast<std::uint32_t>(DecodableJpeg(64, 48, WithNote(0).Build()).size());
    constexpr std::uint32_t kBlockAt = 2 + 4 + 6;
    for (const auto& [number, result] : {std::pair{end, RotateResult::WouldMove},
                                         {end - kBlockAt, RotateResult::WouldMove},
                                         {0x20202020u, RotateResult::Turned}}) {
        UseResults(Longer(DecodableJpeg(48, 64), 1));
        const std::string path = put(number), before = ContentOf(path);
        EXPECT_EQ(RotateJpeg(path, 90), result) << number;
        EXPECT_EQ(ContentOf(path) == before, result == RotateResult::WouldMove);
        UseResults(DecodableJpeg(48, 64));
        EXPECT_EQ(RotateJpeg(put(number), 90), RotateResult::Turned) << "nothing moves";
    }
}

TEST_F(RotationOfSeveralTest, SegmentOrTrailerThatMayTellOfAPlaceLeavesThePhotoAlone) {
    UseResults(Longer(DecodableJpeg(48, 64), 1));
    const std::string picture = DecodableJpeg(64, 48);
    const std::string unknown = std::string(picture).insert(2, test::JpegSegmentBytes(0xE7, "maker"));
    for (const std::string& content : {unknown + "behind", picture + std::string("AXS!\0\0\0\0\0\0\0\0", 12)})
        EXPECT_EQ(RotateJpeg(folder.Add("a.jpg", content), 90), RotateResult::WouldMove);
    EXPECT_EQ(RotateJpeg(folder.Add("a.jpg", unknown), 90), RotateResult::Turned) << "nothing behind";
}

TEST_F(RotationOfSeveralTest, SegmentsOfTheOriginalStayWhereTheyWere) {
    UseResults(DecodableJpeg(48, 64));
    const std::string picture = DecodableJpeg(64, 48);
    const std::string before = test::JpegSegmentBytes(0xE5, "one") + "stray",
                      between = test::JpegSegmentBytes(0xDB, "table"),
                      behind = test::JpegSegmentBytes(0xFE, "two");
    const std::string path = folder.Add("a.jpg", std::string(picture).insert(2, before + between + behind));
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_THAT(ContentOf(path),
                testing::StartsWith("\xFF\xD8" + before + std::string(between.size(), '\xFF') + behind));
}

// ---- the thumbnail
TEST_F(RotationOfSeveralTest, StaleThumbnailOfASquarePictureWasPainted) {
    const std::string thumbnail = Longer(DecodableJpeg(16, 8), 40), turned = DecodableJpeg(8, 16);
    for (const auto order : {ByteOrder::Little, ByteOrder::Big}) {
        ExifBuilder exif(order);
        exif.Short(ExifBuilder::Exif, 0xA002, 64).Long(ExifBuilder::Exif, 0xA003, 48);
        exif.Short(ExifBuilder::Thumbnail, 0x0100, 16).Short(ExifBuilder::Thumbnail, 0x0101, 8);
        exif.EmbeddedJpeg(thumbnail);
        ExifBuilder swapped(order);
        std::string filled = turned;
        filled.insert(filled.size() - 2, 40, '\xFF');
        swapped.Short(ExifBuilder::Exif, 0xA002, 48).Long(ExifBuilder::Exif, 0xA003, 64);
        swapped.Short(ExifBuilder::Thumbnail, 0x0100, 8).Short(ExifBuilder::Thumbnail, 0x0101, 16);
        swapped.EmbeddedJpeg(filled);
        UseResults(DecodableJpeg(48, 64), turned);
        const std::string path = folder.Add("a.jpg", DecodableJpeg(64, 48, exif.Build()));
        ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
        EXPECT_EQ(ContentOf(path), DecodableJpeg(48, 64, swapped.Build()));
    }
}

TEST_F(RotationOfSeveralTest, ThumbnailThatTheToolCannotTurnIsTurnedByItsPixels) {
    const std::string path = folder.Add(
        "a.jpg",
        DecodableJpeg(64, 64, ExifBuilder().EmbeddedJpeg(Longer(DecodableJpeg(20, 12), 500)).Build()));
    UseResults(DecodableJpeg(64, 64), "no picture");
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    const auto preview = ExifPreviews().Read(path, images::WithThumbnail::Yes);
    ByteWindow window(preview.thumbnail);
    EXPECT_EQ(ReadJpegFrameSize(window), (Size{12, 20}));
    EXPECT_EQ(preview.thumbnail.size(), DecodableJpeg(20, 12).size() + 500);
}

TEST_F(RotationOfSeveralTest, ThumbnailThatCannotBeTurnedIsNotUsedAnyMore) {
    const std::string path = folder.Add(
        "a.jpg",
        DecodableJpeg(
            64, 64,
            ExifBuilder().Short(ExifBuilder::Main, 0x0112, 1).EmbeddedJpeg("\xFF\xD8 no picture").Build()));
    ASSERT_FALSE(ExifPreviews().Read(path, images::WithThumbnail::Yes).thumbnail.empty());
    UseResults(DecodableJpeg(64, 64));
    ASSERT_EQ(RotateJpeg(path, 180), RotateResult::Turned);
    EXPECT_TRUE(ExifPreviews().Read(path, images::WithThumbnail::Yes).thumbnail.empty());
    EXPECT_EQ(ExifPreviews().Read(path, images::WithThumbnail::Yes).orientation, 1);
}

// ---- the tool's warnings, and times
TEST_F(RotationOfSeveralTest, ToolThatWarnsOfStrayBytesCountedAsFailed) {
    const std::string made = folder.Add("turned", DecodableJpeg(48, 64));
    UseTool("cp '" + made + "' \"$target\"; exit 2");
    const std::string path = folder.Add("a.jpg", Longer(DecodableJpeg(64, 48), 9));
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_EQ(ContentOf(path), Longer(DecodableJpeg(48, 64), 9)) << "they stay in front of the end marker";
    const std::string stray = folder.Add("b.jpg", DecodableJpeg(64, 48).insert(2, "stray"));
    EXPECT_EQ(RotateJpeg(stray, 90), RotateResult::Turned);
}

TEST_F(RotationOfSeveralTest, PictureWhoseDataAreDamagedIsLeftAlone) {
    const std::string made = folder.Add("turned", DecodableJpeg(48, 64));
    UseTool("cp '" + made + "' \"$target\"; exit 2");
    const std::string whole = DecodableJpeg(64, 48);
    const std::string lacking = std::string(whole).erase(whole.size() - 20, 18),
                      cut = whole.substr(0, whole.size() - 2);
    for (const std::string& damaged : {lacking, cut}) {
        const std::string path = folder.Add("a.jpg", damaged);
        EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Damaged);
        EXPECT_EQ(ContentOf(path), damaged);
    }
}

TEST_F(RotationOfSeveralTest, AccessTimeMovedByATurn) {
    const std::string path = PutPhoto();
    // Older than its last write, so that every file system would move it.
    const FileTime accessed{123'456'000'000'000'000};
    files::SetTimes(path, accessed, FileTime{123'456'789'000'000'000});
    ASSERT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_EQ(files::GetStatus(path)->accessed, accessed);
}

// ---- the command
class RecordingWindow : public PictureWindow {
public:
    RecordingWindow(std::vector<std::string>& said, std::string name) : said_(said), name_(std::move(name)) {}
    bool IsShown() const override { return shown; }
    void Show(const std::string&) override {}
    void Hide() override {}
    std::string Path() const override { return path; }
    void Next() override {}
    void Previous() override {}
    void Rate(EstimateType) override {}
    void Say(const std::string& words, int ticks) override {
        said_.push_back(name_ + ": " + words + std::to_string(ticks));
    }
    void Reload() override { said_.push_back(name_ + " reloads"); }

    bool shown = false;
    std::string path;

private:
    std::vector<std::string>& said_;
    const std::string name_;
};

class RotateShownTest : public RotationTest, public TurnListener {
protected:
    void OnTurned(const std::string& path) override { said.push_back("turned " + path); }
    void OnToolMissing(const std::string& toolPath) override { said.push_back("no " + toolPath); }
    void Rotate(int degrees) { RotateShown(degrees, slideShow, neighbor, *this); }

    std::vector<std::string> said;
    RecordingWindow slideShow{said, "slide"}, neighbor{said, "neighbor"};
};

// A slide takes two seconds by default.
TEST_F(RotateShownTest, SlideShowComesFirst) {
    slideShow.shown = neighbor.shown = true;
    slideShow.path = PutPhoto();
    Rotate(90);
    EXPECT_THAT(said, ElementsAre("slide: Rotating100", "slide: Ok.    20", "turned " + slideShow.path,
                                  "slide reloads"));
}

TEST_F(RotateShownTest, NeighborWindowIsNext) {
    KeepLog();
    neighbor.shown = true;
    neighbor.path = PutPhoto();
    Rotate(270);
    EXPECT_THAT(said, ElementsAre("neighbor: Rotating100", "neighbor: Ok.    20", "turned " + neighbor.path,
                                  "neighbor reloads"));
    EXPECT_THAT(LogText(), testing::HasSubstr("Rotate: " + neighbor.path));
}

TEST_F(RotateShownTest, NothingHappensWhereNothingIsShown) {
    slideShow.path = neighbor.path = PutPhoto();
    Rotate(90);
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotateShownTest, PictureThatHasGoneIsReportedInTheLogAlone) {
    KeepLog();
    slideShow.shown = true;
    slideShow.path = folder / "absent.jpg";
    Rotate(90);
    EXPECT_THAT(said, ElementsAre("slide: Rotating100"));
    EXPECT_THAT(LogText(), testing::HasSubstr("Not found: Rotation target file"));
}

TEST_F(RotateShownTest, PngIsAnErrorWithoutAProcess) {
    slideShow.shown = true;
    slideShow.path = PutPhoto("a.png");
    Rotate(90);
    EXPECT_THAT(said, ElementsAre("slide: Rotating100", "slide: Error. 20"));
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotateShownTest, MissingToolIsReportedWithThePlaceWhereItWasLookedFor) {
    State().settings.PathOfJpegTran = folder / "no/such tool";
    slideShow.shown = true;
    slideShow.path = PutPhoto();
    Rotate(90);
    EXPECT_THAT(said, ElementsAre("slide: Rotating100", "no " + folder / "no/such tool", "slide: Error. 20"));
}

}  // namespace
}  // namespace kalmora
