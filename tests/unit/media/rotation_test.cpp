#include "media/rotation.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <vector>

#include "exif_builder.h"
#include "picture_files.h"
#include "platform/files.h"
#include "write_fixture.h"

namespace kalmora {
namespace {

using test::ContentOf;
using test::DecodableJpeg;
using testing::ElementsAre;

class RotationTest : public test::WriteTest {
protected:
    RotationTest() {
        UseTool("cat \"$5\" >/dev/null; cp '" + folder.Put("turned", DecodableJpeg(48, 64)) +
                "' \"$target\"");
    }
    ~RotationTest() override {
        State().PathOfJpegTran.clear();
        OnRotationToolMissing = nullptr;
    }
    // A shell script that notes the words of its command line and does this.
    void UseTool(const std::string& script) {
        const std::string path =
            folder.Put("tool", "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + folder.PathOf("said") +
                                   "'\nfor target; do :; done\n" + script + "\n");
        chmod(path.c_str(), 0755);
        State().PathOfJpegTran = path;
    }
    bool WasCalled() const { return files::Exists(folder.PathOf("said")); }

    std::string PutPhoto(const std::string& name = "a.jpg") {
        return folder.Put(name, DecodableJpeg(64, 48));
    }
};

TEST_F(RotationTest, CallsTheToolWithTheCopyAndThePhoto) {
    const std::string path = PutPhoto("a b \"c\".jpg");
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Turned);
    EXPECT_EQ(ContentOf(folder.PathOf("said")),
              "-copy\nall\n-rotate\n90\n" + folder.PathOf("Temp/$a b \"c\".jpg") + "\n" + path + "\n");
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
    EXPECT_EQ(RotateJpeg(folder.Put("b.jpg", "no picture"), 90), RotateResult::NotJpeg);
    EXPECT_EQ(RotateJpeg(folder.PathOf("absent.jpg"), 90), RotateResult::Failed);
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotationTest, WithoutTheToolTellsWhereItWasLookedFor) {
    std::vector<std::string> told;
    OnRotationToolMissing = [&](const std::string& path) { told.push_back(path); };
    State().PathOfJpegTran = folder.PathOf("no/such tool");
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::NoTool);
    EXPECT_EQ(RotateJpeg(PutPhoto("a.png"), 90), RotateResult::NoTool) << "asked before the extension";
    EXPECT_THAT(told, ElementsAre(folder.PathOf("no/such tool"), folder.PathOf("no/such tool")));
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48));
    OnRotationToolMissing = nullptr;
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::NoTool);
}

TEST_F(RotationTest, ToolThatCannotBeStartedLeavesThePicture) {
    State().PathOfJpegTran = folder.Put("not executable", "x");
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Failed);
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48));
    State().PathOfJpegTran = folder.Path();
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
        std::filesystem::remove(folder.PathOf("said"));
        const std::string block =
            test::ExifBuilder()
                .Short(test::ExifBuilder::Main, 0x0112, static_cast<unsigned>(orientation))
                .Build();
        ASSERT_EQ(RotateJpeg(folder.Put("a.jpg", DecodableJpeg(64, 48, block)), 90), RotateResult::Turned);
        EXPECT_THAT(ContentOf(folder.PathOf("said")),
                    testing::HasSubstr("-rotate\n" + std::string(word) + "\n"))
            << orientation;
    }
}

TEST_F(RotationTest, ReadOnlyPictureIsLeft) {
    const std::string path = PutPhoto();
    chmod(path.c_str(), 0444);
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Denied);
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotationTest, PictureThatSomebodyPutThereMeanwhileStays) {
    const std::string edited = folder.Put("edited", DecodableJpeg(64, 48) + "edited");
    UseTool("mv '" + edited + "' \"$target\"; exit 1");
    const std::string path = PutPhoto();
    EXPECT_EQ(RotateJpeg(path, 90), RotateResult::Changed);
    EXPECT_EQ(ContentOf(path), DecodableJpeg(64, 48) + "edited");
    EXPECT_EQ(FilesInTemp("kept-a.jpg"), 1u);
}

// ---- the command
class RotationStageTest : public RotationTest {
protected:
    RotationStage Stage(const std::string& name, bool shown, const std::string& path) {
        RotationStage stage;
        stage.isShown = [shown] { return shown; };
        stage.path = [path] { return path; };
        stage.say = [this, name](const std::string& words, bool isLast) {
            said.push_back(name + ": " + words + (isLast ? "." : ""));
        };
        stage.reload = [this, name] { said.push_back(name + " reloads"); };
        stage.logsPath = name == "hover";
        return stage;
    }
    std::vector<std::string> said;
};

TEST_F(RotationStageTest, SlideShowComesFirst) {
    const std::string path = PutPhoto();
    RotateOnStage(90, Stage("slide", true, path), Stage("hover", true, "x"));
    EXPECT_THAT(said, ElementsAre("slide: Rotating", "slide: Ok.    .", "slide reloads"));
}

TEST_F(RotationStageTest, HoverWindowIsNext) {
    KeepLog();
    const std::string path = PutPhoto();
    RotateOnStage(270, Stage("slide", false, "x"), Stage("hover", true, path));
    EXPECT_THAT(said, ElementsAre("hover: Rotating", "hover: Ok.    .", "hover reloads"));
    EXPECT_THAT(LogText(), testing::HasSubstr("Rotate: " + path));
}

TEST_F(RotationStageTest, NothingHappensWhereNothingIsShown) {
    RotateOnStage(90, Stage("slide", false, PutPhoto()), Stage("hover", false, PutPhoto()));
    EXPECT_TRUE(said.empty());
    EXPECT_FALSE(WasCalled());
}

TEST_F(RotationStageTest, PictureThatHasGoneIsToldToTheLogAlone) {
    KeepLog();
    RotateOnStage(90, Stage("slide", true, folder.PathOf("absent.jpg")), Stage("hover", false, ""));
    EXPECT_THAT(said, ElementsAre("slide: Rotating"));
    EXPECT_THAT(LogText(), testing::HasSubstr("Not found: Rotation target file"));
}

TEST_F(RotationStageTest, PngIsAnErrorWithoutAProcess) {
    RotateOnStage(90, Stage("slide", true, PutPhoto("a.png")), Stage("hover", false, ""));
    EXPECT_THAT(said, ElementsAre("slide: Rotating", "slide: Error. ."));
    EXPECT_FALSE(WasCalled());
}

}  // namespace
}  // namespace kalmora
