// kalmora import, run as a script would run it.
#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "media/exif_builder.h"
#include "platform/files.h"

namespace kalmora {
namespace {

using testing::HasSubstr;

class ImportVerbTest : public testing::Test {
protected:
    ImportVerbTest() : folder_(files::MakeTemporaryFolder()) {
        std::filesystem::create_directories(folder_ + "/files");
        Write("card/DCIM/100/A.JPG", Photo("2008:11:13 10:15:30"));
        Write("card/DCIM/101/A.JPG", Photo("2008:12:31 01:30:00"));
        Write("card/DCIM/note.txt", "[2008/11/14 09:00] a note");
        std::filesystem::create_directory(folder_ + "/files");
    }
    ~ImportVerbTest() override { files::RemoveFolderTree(folder_); }

    static std::string Photo(const char* taken) {
        test::ExifBuilder exif;
        exif.Ascii(test::ExifBuilder::Main, 0x0132, taken);
        return test::JpegWith(exif);
    }
    void Write(const std::string& name, const std::string& content) const {
        const std::filesystem::path path = folder_ + "/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
    }
    int Run(const std::string& arguments) { return RunShell(Program() + arguments + " 2>errors"); }
    static std::string Program() { return "'" KALMORA_PROGRAM "' --home home --data files "; }
    int RunShell(const std::string& line) {
        const std::string command = "cd '" + folder_ + "' || exit 9; " + line;
        out_.clear();
        std::FILE* pipe =
            popen(command.c_str(), "r");  // NOLINT(bugprone-command-processor): as a script does
        if (!pipe) return -1;
        std::array<char, 4096> block;
        while (const std::size_t length = std::fread(block.data(), 1, block.size(), pipe))
            out_.append(block.data(), length);
        const int ended = pclose(pipe);
        return ended >= 0 && (ended & 0x7F) == 0 ? (ended >> 8) & 0xFF : 128;
    }
    std::string Errors() const { return files::ReadWholeFile(folder_ + "/errors").value_or(""); }
    bool Has(const std::string& name) const { return files::Exists(folder_ + "/" + name); }
    std::string Content(const std::string& name) const {
        return files::ReadWholeFile(folder_ + "/" + name).value_or("");
    }

    const std::string folder_;
    std::string out_;
};

TEST_F(ImportVerbTest, CopiesIntoDaysAndFillsTheIndex) {
    ASSERT_EQ(Run("import card/DCIM"), 0) << Errors();
    EXPECT_EQ(Content("files/2008/200811/2008_1113/A.JPG"), Photo("2008:11:13 10:15:30"));
    EXPECT_TRUE(Has("files/2008/200812/2008_1231/A.JPG"));
    EXPECT_TRUE(Has("files/2008/200811/2008_1114/note.txt"));
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
    EXPECT_THAT(out_, HasSubstr("A.JPG: copied to " + folder_ + "/files/2008/200811/2008_1113/A.JPG\n"));
    EXPECT_THAT(Content("files/2008/200811/2008_1113/$calendar.cidx"), HasSubstr("FILE=A.JPG"));
    ASSERT_EQ(Run("import card/DCIM"), 0);
    EXPECT_THAT(out_, HasSubstr("A.JPG: same file\n"));
}

TEST_F(ImportVerbTest, JsonHasAnObjectForEachFile) {
    ASSERT_EQ(Run("import --json --day-end 26 card/DCIM"), 0) << Errors();
    const auto records = nlohmann::json::parse(out_);
    ASSERT_EQ(records.size(), 4u) << "and the sum";
    EXPECT_EQ(records[3]["result"], "summary");
    EXPECT_EQ(records[3]["taken"], 3);
    EXPECT_EQ(records[3]["bytes"], 2 * Photo("2008:11:13 10:15:30").size() + 25);
    EXPECT_EQ(records[3]["failed"], 0);
    EXPECT_EQ(records[1]["file"], folder_ + "/card/DCIM/101/A.JPG");
    EXPECT_EQ(records[1]["result"], "copied");
    EXPECT_EQ(records[1]["target"], folder_ + "/files/2008/200812/2008_1230/A.JPG");
    EXPECT_EQ(records[1]["day"], "2008-12-30");
    EXPECT_EQ(records[1]["date"], "2008-12-31T01:30:00");
    std::filesystem::create_directories(folder_ + "/empty/folder");
    Write("raw/\xE9\xFF.txt", "x");
    ASSERT_EQ(Run("import --json raw"), 0) << Errors();
    EXPECT_EQ(nlohmann::json::parse(out_).size(), 2u) << "a name that is no UTF-8 still gives valid JSON";
    ASSERT_EQ(Run("import --json empty"), 0) << Errors();
    EXPECT_EQ(nlohmann::json::parse(out_).size(), 1u) << "the sum alone";
}

TEST_F(ImportVerbTest, MovesWithNotes) {
    ASSERT_EQ(Run("import --move --json --note summer --folder-name card/DCIM"), 0) << Errors();
    EXPECT_FALSE(Has("card/DCIM"));
    EXPECT_TRUE(Has("card"));
    const auto records = nlohmann::json::parse(out_);
    EXPECT_EQ(records[0]["result"], "moved");
    EXPECT_EQ(records[0]["note"], "written");
    ASSERT_EQ(Run("show --json files/2008/200811/2008_1113/A.JPG"), 0);
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["comment"], "summer\r\n100");
    EXPECT_THAT(Content("files/2008/200811/2008_1113/$calendar.cidx"), HasSubstr("summer"));
}

TEST_F(ImportVerbTest, ShortcutsAndNumbers) {
    ASSERT_EQ(Run("import --shortcut card/DCIM"), 0) << Errors();
    EXPECT_TRUE(Has("files/2008/200811/2008_1113/A.JPG.lnk"));
    EXPECT_FALSE(Has("files/2008/200811/2008_1113/A.JPG"));
    ASSERT_EQ(Run("import --number card/DCIM"), 0) << Errors();
    EXPECT_TRUE(Has("files/2008/200811/2008_1113/0001.jpg"));
}

TEST_F(ImportVerbTest, SettingsFlagsDoNotMoveBehindAScriptsBack) {
    Write("home/kalmora.ini", "RemoveImportFiles=1\nImportAsShortcutFile=1\nDayEndTimeForScrap=26\n");
    ASSERT_EQ(Run("import card/DCIM"), 0) << Errors();
    EXPECT_TRUE(Has("card/DCIM/101/A.JPG"));
    EXPECT_TRUE(Has("files/2008/200812/2008_1230/A.JPG")) << "the end of the day is the settings'";
}

TEST_F(ImportVerbTest, WrongUseEndsWithTwo) {
    EXPECT_EQ(Run("import"), 2);
    EXPECT_EQ(Run("import --move --shortcut card/DCIM"), 2);
    EXPECT_EQ(Run("import --day-end 48 card/DCIM"), 2);
    EXPECT_EQ(Run("import --day-end x card/DCIM"), 2);
    EXPECT_TRUE(std::filesystem::is_empty(folder_ + "/files"));
}

TEST_F(ImportVerbTest, EmptyNameIsNotTheCurrentFolder) {
    EXPECT_EQ(Run("import --move ''"), 2);
    EXPECT_THAT(Errors(), HasSubstr("empty name"));
    EXPECT_EQ(Run("import --move \"$NO_SUCH_VARIABLE\" card/DCIM"), 2);
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
    EXPECT_TRUE(std::filesystem::is_empty(folder_ + "/files"));
}

TEST_F(ImportVerbTest, SeveralSourcesAndSingleFilesComeIn) {
    ASSERT_EQ(Run("import card/DCIM/100 card/DCIM/note.txt"), 0) << Errors();
    EXPECT_TRUE(Has("files/2008/200811/2008_1113/A.JPG"));
    EXPECT_TRUE(Has("files/2008/200811/2008_1114/note.txt"));
    EXPECT_FALSE(Has("files/2008/200812/2008_1231/A.JPG"));
    EXPECT_EQ(Run("import card/DCIM gone.jpg"), 1) << "nothing is begun when one is missing";
    EXPECT_THAT(Errors(), HasSubstr("gone.jpg: no such file or folder"));
    EXPECT_FALSE(Has("files/2008/200812/2008_1231/A.JPG"));
}

TEST_F(ImportVerbTest, DataFolderAndSourceInEachOtherAreRefused) {
    std::filesystem::create_directory_symlink("files", folder_ + "/alias");
    Write("files/2008/200811/2008_1114/A.JPG", Photo("2008:11:13 10:15:30"));
    for (const char* source : {"files", ".", "files/2008", "alias", "files/../files/", "alias/2008/.."}) {
        EXPECT_EQ(Run(std::string("import --move ") + source), 1) << source;
        EXPECT_THAT(Errors(), HasSubstr("data folder")) << source;
    }
    EXPECT_TRUE(Has("files/2008/200811/2008_1114/A.JPG"));
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
    std::filesystem::create_directory_symlink("../../files", folder_ + "/card/DCIM/way in");
    EXPECT_EQ(Run("import card"), 1) << "a link in the source leads there";
    EXPECT_FALSE(Has("files/2008/200811/2008_1113"));
}

TEST_F(ImportVerbTest, ShortcutsThatCannotTakeWordsSaySo) {
    for (const char* words : {"--note summer", "--folder-name"}) {
        EXPECT_EQ(Run(std::string("import --shortcut ") + words + " card/DCIM"), 2);
        EXPECT_THAT(Errors(), HasSubstr("excludes"));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_ + "/files"));
}

TEST_F(ImportVerbTest, FileThatOnlySeemsTheSameIsTold) {
    Write("files/2008/200811/2008_1113/A.JPG", Photo("2008:11:13 10:15:30") + "another");
    ASSERT_EQ(Run("import --move card/DCIM/100"), 0) << Errors();
    const std::string existing = folder_ + "/files/2008/200811/2008_1113/A.JPG";
    EXPECT_THAT(out_, HasSubstr("100/A.JPG: differs from " + existing + ", left where it is\n"));
    EXPECT_THAT(out_, HasSubstr("0 taken (0 bytes), 0 passed over, 1 differing, 0 failed\n"));
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
    ASSERT_EQ(Run("import --move --json card/DCIM/100"), 0);
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["result"], "differs");
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["standing"], existing);
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["message"], "differs from " + existing + ", left where it is");
    ASSERT_EQ(Run("import --move --compare content card/DCIM/100"), 0) << Errors();
    EXPECT_TRUE(Has("files/2008/200811/2008_1113/A[1].jpg"));
    EXPECT_EQ(Run("import --compare looks card"), 2);
}

TEST_F(ImportVerbTest, DryRunSaysWhatWouldHappenAndTouchesNothing) {
    ASSERT_EQ(Run("import --move --dry-run card/DCIM"), 0) << Errors();
    EXPECT_THAT(
        out_, HasSubstr("100/A.JPG: would be moved to " + folder_ + "/files/2008/200811/2008_1113/A.JPG\n"));
    EXPECT_THAT(out_, HasSubstr("3 to be taken ("));
    EXPECT_TRUE(std::filesystem::is_empty(folder_ + "/files"));
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
    ASSERT_EQ(Run("import --dry-run --json card/DCIM"), 0);
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["dryRun"], true);
}

TEST_F(ImportVerbTest, FolderThatCannotBeReadIsAFailure) {
    // Closed to everyone: permissions would not hold root back.
    const std::string closed = folder_ + "/card/DCIM/101";
    EXPECT_EQ(RunShell("CLOSED_DISK=\"" + closed + "\" LD_PRELOAD=\"" KALMORA_BAD_DISK "\" " + Program() +
                       "import card/DCIM 2>errors"),
              1);
    EXPECT_THAT(Errors(), HasSubstr("101: cannot be listed"));
}

TEST_F(ImportVerbTest, NamesAreEscapedOnATerminalAlone) {
    Write("card/new\nline \x1B[31m\xC2\x9B.txt", "[2008/11/14 09:00] a note");
    ASSERT_EQ(Run("import card"), 0) << Errors();
    EXPECT_THAT(out_, HasSubstr("new\nline \x1B[31m\xC2\x9B.txt: copied"));
    ASSERT_EQ(RunShell("script -qec \"" + Program() + "import card\" /dev/null"), 0);
    EXPECT_THAT(out_, HasSubstr("new\\nline \\x1b[31m\\xc2\\x9b.txt: same file"));
}

TEST_F(ImportVerbTest, FoundNamesAreEscapedOnATerminalAlone) {
    Write("card/red \x1B[31m.txt", "[2008/11/14 09:00] a note");
    ASSERT_EQ(Run("import card"), 0) << Errors();
    ASSERT_EQ(Run("search red"), 0) << Errors();
    EXPECT_THAT(out_, HasSubstr("red \x1B[31m.txt\n"));
    ASSERT_EQ(RunShell("script -qec \"" + Program() + "search red\" /dev/null"), 0);
    EXPECT_THAT(out_, HasSubstr("red \\x1b[31m.txt"));
}

TEST_F(ImportVerbTest, KilledImportIsFinishedByTheNextWithItsWordsAndItsIndex) {
    constexpr int kFiles = 200;
    const std::string photo = Photo("2008:11:13 10:15:30");
    for (int i = 0; i < kFiles; ++i)
        Write("many/f" + std::to_string(1000 + i) + ".jpg", photo + std::string(1u + i, 'x'));
    RunShell(Program() +
             "import --move --folder-name many >lines 2>errors & P=$!; "
             "until test -s lines || test -f files/2008/200811/2008_1113/f1100.jpg; do :; done; kill -9 $P; "
             "wait $P");
    ASSERT_EQ(Run("import --move --folder-name many"), 0) << Errors();
    ASSERT_EQ(Run("show --json files/2008/200811/2008_1113/*.jpg"), 0);
    const auto shown = nlohmann::json::parse(out_);
    EXPECT_EQ(shown.size(), static_cast<std::size_t>(kFiles));
    for (const auto& one : shown) EXPECT_EQ(one["comment"], "many") << one["path"];
    ASSERT_EQ(Run("search --json many"), 0);
    EXPECT_EQ(nlohmann::json::parse(out_).size(), static_cast<std::size_t>(kFiles));
}

TEST_F(ImportVerbTest, FailuresEndWithOne) {
    EXPECT_EQ(Run("import card/gone"), 1);
    EXPECT_THAT(Errors(), HasSubstr("no such file or folder"));
    Write("files/2008", "a file where the year's folder has to be");
    EXPECT_EQ(Run("import --json card/DCIM"), 1);
    EXPECT_EQ(nlohmann::json::parse(out_)[0]["result"], "denied");
    EXPECT_TRUE(Has("card/DCIM/100/A.JPG"));
}

TEST_F(ImportVerbTest, LinkToNothingIsAFailureAndTheRestComesIn) {
    std::filesystem::create_symlink("nowhere", folder_ + "/card/DCIM/gone.jpg");
    EXPECT_EQ(Run("import card/DCIM"), 1);
    EXPECT_THAT(Errors(), HasSubstr("gone.jpg: gone"));
    EXPECT_TRUE(Has("files/2008/200811/2008_1113/A.JPG"));
}

TEST_F(ImportVerbTest, InterruptedImportGoesOnWhenItIsRunAgain) {
    constexpr int kFiles = 400;
    for (int i = 0; i < kFiles; ++i)
        Write("many/f" + std::to_string(1000 + i) + ".txt",
              "[2008/11/14 09:00] note " + std::string(1u + i, 'x'));
    const int status = RunShell(Program() +
                                "import --move many 2>errors & P=$!; "
                                "until test -d files/2008; do :; done; kill -INT $P; wait $P");
    EXPECT_TRUE(status == 0 || status == 1) << status;
    if (status == 1) {
        EXPECT_THAT(Errors(), HasSubstr("interrupted"));
        ASSERT_EQ(Run("import --move --json many"), 0) << Errors();
    }
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ + "/files/2008/200811/2008_1114"))
        found += entry.path().extension() == ".txt";
    EXPECT_EQ(found, kFiles);
    EXPECT_FALSE(Has("many"));
}

}  // namespace
}  // namespace kalmora
