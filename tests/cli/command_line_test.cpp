// The program itself, run as a script would run it.
#include <gmock/gmock.h>

#include <filesystem>
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
    std::filesystem::create_directory(Path("empty"));
    for (const char* view : {"year", "month", "day", "year --all", "month --all", "day --all"}) {
        const std::string png = Path("view.png");
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
    std::filesystem::create_directory(Path("empty"));
    const std::string png = Path("view.png");
    ASSERT_EQ(
        Run("--data '" + folder_ + "/empty' shot --view month --size 640x480 --scale 2 --out '" + png + "'")
            .status,
        0);
    EXPECT_EQ(files::ReadWholeFile(png).value_or("").substr(16, 8), std::string("\0\0\x05\0\0\0\x03\xC0", 8));
}

TEST_F(CommandLineTest, ShotThatCannotBeWrittenFails) {
    std::filesystem::create_directory(Path("empty"));
    const Outcome shot =
        Run("--data '" + folder_ + "/empty' shot --view month --out '" + folder_ + "/no/such/x.png'");
    EXPECT_EQ(shot.status, 1);
    EXPECT_THAT(Errors(), HasSubstr("cannot be written"));
}

TEST_F(CommandLineTest, DataFolderOfTheCommandLineIsNotSaved) {
    std::filesystem::create_directory(Path("once"));
    ASSERT_EQ(Run("--data once shot --view month --out '" + Path("x.png") + "'").status, 0) << Errors();
    const std::string settings = files::ReadWholeFile(Path("home/kalmora.ini")).value_or("");
    EXPECT_EQ(settings.find("once"), std::string::npos);
    EXPECT_FALSE(files::Exists(Path("home/files"))) << "the default folder is not needed";
}

TEST_F(CommandLineTest, DataFolderThatIsNotThereIsAnErrorAndIsNotMade) {
    Write("note.txt", "x");
    for (const char* const verb :
         {"show note.txt", "index", "update", "rate note.txt like", "comment note.txt x", "import .", ""}) {
        EXPECT_EQ(Run(std::string("--data nowhere ") + verb).status, 1) << verb;
        EXPECT_THAT(Errors(), HasSubstr("no such folder")) << verb;
    }
    EXPECT_EQ(Run("search cat --data nowhere").status, 2) << "1 says that nothing was found";
    EXPECT_EQ(Run("show note.txt --data note.txt").status, 1) << "a file is no folder";
    EXPECT_FALSE(files::Exists(Path("nowhere")));
    EXPECT_FALSE(files::Exists(Path("home")));
}

TEST_F(CommandLineTest, EmptyNameIsWrongUseAndNotTheCurrentFolder) {
    for (const char* const wrong : {"index --data ''", "--data '' index", "--data ''"})
        EXPECT_EQ(Run(wrong).status, 2) << wrong;
    EXPECT_TRUE(files::ListFolder(folder_).size() <= 1) << "nothing but what was said";
}

TEST_F(CommandLineTest, FirstStartSaysWhereTheDataFolderIs) {
    Write("note.txt", "x");
    EXPECT_EQ(Run("show note.txt").status, 0);
    EXPECT_THAT(Errors(), HasSubstr("data folder is " + Path("home/files")));
    EXPECT_TRUE(files::IsFolder(Path("home/files")));
    EXPECT_EQ(Run("show note.txt").status, 0);
    EXPECT_EQ(Errors(), "");
}

TEST_F(CommandLineTest, SettingsThatCannotBeReadEndEachVerbAndAreLeftAlone) {
    for (const char* const name : {"kalmora.ini", "extension.dat"}) {
        Write("note.txt", "x");
        std::filesystem::create_directories(Path("home/") + name);
        EXPECT_EQ(Run("show note.txt").status, 1) << name;
        EXPECT_THAT(Errors(), HasSubstr(std::string(name) + ": cannot be read"));
        EXPECT_TRUE(files::IsFolder(Path("home/") + name));
        EXPECT_FALSE(files::Exists(Path("home/files"))) << name;
        std::filesystem::remove(Path("home/") + name);
    }
}

// ---- the home without --home and $KALMORA_HOME

class HomeTest : public CommandLineTest {
protected:
    HomeTest() {
        std::filesystem::create_directory(Path("bin"));
        std::error_code otherDisk;
        std::filesystem::create_hard_link(KALMORA_PROGRAM, Path("bin/kalmora"), otherDisk);
        if (otherDisk) std::filesystem::copy_file(KALMORA_PROGRAM, Path("bin/kalmora"));
    }
    // The exit status of the program in bin, with its user's data in the folder "share".
    int RunInBin(const std::string& arguments) const {
        const std::string command = "cd '" + folder_ + "' && unset KALMORA_HOME && XDG_DATA_HOME='" +
                                    Path("share") + "' bin/kalmora " + arguments + " >out 2>errors";
        return std::system(command.c_str()) >> 8;  // NOLINT(bugprone-command-processor): a user does this
    }
};

TEST_F(HomeTest, LiesInTheUsersDataFolderAlsoWhereTheProgramsFolderCanBeWritten) {
    Write("note.txt", "x");
    EXPECT_EQ(RunInBin("show note.txt"), 0) << Errors();
    EXPECT_TRUE(files::Exists(Path("share/kalmora/extension.dat")));
    EXPECT_TRUE(files::IsFolder(Path("share/kalmora/files")));
    EXPECT_EQ(files::ListFolder(Path("bin")).size(), 1u) << "the program alone";
}

TEST_F(HomeTest, NewOneIsMadeOnlyWhereThereIsAPlaceForIt) {
    Write("note.txt", "x");
    EXPECT_EQ(RunInBin("show note.txt --home away/stick/home"), 1);
    EXPECT_THAT(Errors(), HasSubstr("no such folder"));
    EXPECT_FALSE(files::Exists(Path("away")));
    EXPECT_EQ(RunInBin("show note.txt --home note.txt"), 1) << "a file is no folder";
    EXPECT_EQ(RunInBin("show note.txt --home ''"), 2);
    EXPECT_FALSE(files::Exists(Path("share")));
    EXPECT_EQ(RunInBin("show note.txt --home new"), 0) << Errors();
    EXPECT_TRUE(files::Exists(Path("new/extension.dat")));
}

TEST_F(HomeTest, LiesBesideTheProgramWhereSettingsStandThere) {
    Write("note.txt", "x");
    Write("bin/kalmora.ini", "");
    EXPECT_EQ(RunInBin("show note.txt"), 0) << Errors();
    EXPECT_TRUE(files::Exists(Path("bin/extension.dat")));
    EXPECT_FALSE(files::Exists(Path("share")));
}

}  // namespace
}  // namespace kalmora
