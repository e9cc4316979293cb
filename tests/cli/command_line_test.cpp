// The program itself, run as a script would run it.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/files.h"
#include "program_fixture.h"

namespace kalmora {
namespace {

using testing::HasSubstr;

using test::CommandLineTest;
using test::Outcome;

TEST_F(CommandLineTest, HelpAndVersionSucceed) {
    const Outcome help = Run("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("shot"));
    EXPECT_THAT(help.out, HasSubstr("--data"));
    for (const char* verb : {"shot", "show"}) EXPECT_EQ(Run(std::string(verb) + " --help").status, 0) << verb;
    const Outcome version = Run("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, testing::StartsWith("kalmora "));
}

TEST_F(CommandLineTest, WrongUseEndsWithTwo) {
    EXPECT_EQ(Run("nonsense").status, 2);
    EXPECT_EQ(Run("shot").status, 2) << "without --out";
    EXPECT_EQ(Run("show").status, 2) << "without a file";
    const std::string out = " --out '" + Path("x.png") + "'";
    EXPECT_EQ(Run("shot --view decade" + out).status, 2);
    EXPECT_EQ(Run("shot --size 960" + out).status, 2);
    EXPECT_EQ(Run("shot --size 0x700" + out).status, 2);
    EXPECT_EQ(Run("shot --size 99999x9" + out).status, 2);
    EXPECT_EQ(Run("shot --date 2008-02-30" + out).status, 2);
    EXPECT_EQ(Run("shot --date 13.11.2008" + out).status, 2);
    EXPECT_FALSE(files::Exists(Path("x.png")));
}

TEST_F(CommandLineTest, ShowTellsEveryKeyOfAText) {
    Write("note.txt", "[2008/11/13 10:15]\nhello");
    const Outcome shown = Run("show --json '" + Path("note.txt") + "'");
    ASSERT_EQ(shown.status, 0) << Errors();
    const auto records = nlohmann::ordered_json::parse(shown.out);
    ASSERT_EQ(records.size(), 1u);
    std::vector<std::string> keys;
    for (const auto& [key, value] : records[0].items()) keys.push_back(key);
    EXPECT_THAT(keys, testing::ElementsAre("path", "kind", "extension", "date", "dateFrom", "width", "height",
                                           "iso", "shutter", "brightness", "flash", "exposureBias",
                                           "exposureTime", "exposureProgram", "aperture", "mode", "face",
                                           "make", "comment", "like", "good", "privacy"));
    EXPECT_EQ(records[0]["path"], Path("note.txt"));
    EXPECT_EQ(records[0]["kind"], 1);
    EXPECT_EQ(records[0]["date"], "2008-11-13T10:15:00");
    EXPECT_EQ(records[0]["dateFrom"], "text");
    EXPECT_TRUE(records[0]["make"].is_null());
    EXPECT_TRUE(records[0]["comment"].is_null());
}

TEST_F(CommandLineTest, ShowGivesOneRecordAFile) {
    for (const char* name : {"a.txt", "b.txt", "c.doc"}) Write(name, "x");
    const Outcome shown =
        Run("show --json '" + Path("a.txt") + "' '" + Path("b.txt") + "' '" + Path("c.doc") + "'");
    const auto records = nlohmann::json::parse(shown.out);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[2]["kind"], -1);
    EXPECT_EQ(records[2]["dateFrom"], "file");
}

TEST_F(CommandLineTest, ShowTakesAListOfFiles) {
    for (const char* name : {"a.txt", "b.txt"}) Write(name, "x");
    Write("list", Path("a.txt") + "\n\nb.txt\n");
    EXPECT_EQ(nlohmann::json::parse(Run("show --json --files-from list").out).size(), 2u);
    EXPECT_EQ(nlohmann::json::parse(Run("show --json --files-from - a.txt <list").out).size(), 3u);
    EXPECT_EQ(Run("show --json --files-from gone").status, 1);
}

TEST_F(CommandLineTest, MissingFileIsToldAndTheOthersAreShown) {
    Write("a.txt", "x");
    const Outcome shown = Run("show --json '" + Path("gone.jpg") + "' '" + Path("a.txt") + "'");
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(nlohmann::json::parse(shown.out).size(), 1u);
    EXPECT_THAT(Errors(), HasSubstr("gone.jpg"));
}

TEST_F(CommandLineTest, NameThatIsNoUtf8StillGivesValidJson) {
    const std::string name = "raw\xE9\xFF.txt";
    Write(name, "x");
    const Outcome shown = Run("show --json '" + Path(name) + "'");
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(nlohmann::json::parse(shown.out).size(), 1u);
}

TEST_F(CommandLineTest, RelativePathIsTakenFromTheCurrentFolder) {
    Write("a.txt", "x");
    const Outcome shown = Run("show --json a.txt");
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(nlohmann::json::parse(shown.out)[0]["path"], Path("a.txt"));
}

TEST_F(CommandLineTest, BrokenFilesOfEachKindAreShown) {
    std::string names;
    for (const char* extension : {"jpg", "png", "gif", "bmp", "tif", "avi", "wav", "m3u", "txt", "lnk"}) {
        const std::string name = std::string("zero.") + extension;
        Write(name, "");
        names += " '" + Path(name) + "'";
    }
    Write("garbage.jpg",
          "\xFF\xD8\xFF\xE1\xFF\xFF"
          "Exif");
    const Outcome shown = Run("show --json" + names + " '" + Path("garbage.jpg") + "'");
    EXPECT_EQ(shown.status, 0) << Errors();
    EXPECT_EQ(nlohmann::json::parse(shown.out).size(), 11u);
}

TEST_F(CommandLineTest, ShotDrawsEachView) {
    for (const char* view : {"year", "month", "day", "year --all", "month --all", "day --all"}) {
        const std::string png = Path("view.png");
        files::MakeFolder(Path("empty"));
        const Outcome shot = Run("--data '" + folder_ + "/empty' shot --view " + view +
                                 " --date 2008-11-13 --size 640x480 --json --out '" + png + "'");
        ASSERT_EQ(shot.status, 0) << view << ": " << Errors();
        const auto result = nlohmann::json::parse(shot.out);
        EXPECT_EQ(result["objects"], 0);
        EXPECT_GT(result["firstPaintMs"], 0.0);
        EXPECT_GE(result["wholeViewMs"], result["firstPaintMs"]);
        const std::string bytes = files::ReadWholeFile(png).value_or("");
        ASSERT_GT(bytes.size(), 24u);
        EXPECT_EQ(bytes.substr(0, 4), "\x89PNG");
        EXPECT_EQ(bytes.substr(16, 8), std::string("\0\0\x02\x80\0\0\x01\xE0", 8)) << "640 by 480";
        files::RemoveFile(png);
    }
}

TEST_F(CommandLineTest, ShotOnADenseScreenHasFourTimesThePixels) {
    const std::string png = Path("view.png");
    files::MakeFolder(Path("empty"));
    ASSERT_EQ(
        Run("--data '" + folder_ + "/empty' shot --view month --size 640x480 --scale 2 --out '" + png + "'")
            .status,
        0);
    EXPECT_EQ(files::ReadWholeFile(png).value_or("").substr(16, 8), std::string("\0\0\x05\0\0\0\x03\xC0", 8));
}

TEST_F(CommandLineTest, ShotThatCannotBeWrittenFails) {
    files::MakeFolder(Path("empty"));
    const Outcome shot =
        Run("--data '" + folder_ + "/empty' shot --view month --out '" + folder_ + "/no/such/x.png'");
    EXPECT_EQ(shot.status, 1);
    EXPECT_THAT(Errors(), HasSubstr("cannot be written"));
}

TEST_F(CommandLineTest, DataFolderOfTheCommandLineIsNotSaved) {
    ASSERT_EQ(files::MakeFolder(Path("else")), files::FileResult::Done);
    ASSERT_EQ(Run("--data else shot --view month --out '" + Path("x.png") + "'").status, 0) << Errors();
    const std::string settings = files::ReadWholeFile(Path("home/kalmora.ini")).value_or("");
    EXPECT_EQ(settings.find("else"), std::string::npos);
}

TEST_F(CommandLineTest, DataFolderThatIsNotThereIsAMistakeAndNoNewFolder) {
    const std::string shot = " shot --view month --out '" + Path("x.png") + "'";
    EXPECT_EQ(Run("--data nowhere" + shot).status, 1);
    EXPECT_THAT(Errors(), HasSubstr("nowhere: no such folder"));
    EXPECT_EQ(Run("--data nowhere").status, 1) << "the window does not come up";
    EXPECT_FALSE(files::Exists(Path("nowhere")));
    EXPECT_EQ(Run("--data ''" + shot).status, 2);
    EXPECT_THAT(Errors(), HasSubstr("--data: an empty name"));
    EXPECT_EQ(Run("--home ''" + shot).status, 2);
    EXPECT_FALSE(files::Exists(Path("x.png")));
}

}  // namespace
}  // namespace kalmora
