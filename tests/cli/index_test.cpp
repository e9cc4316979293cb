// kalmora index and kalmora update, as a script uses them: alone, two at once, and interrupted.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "media/png_builder.h"
#include "program_fixture.h"
#include "support/machine.h"

namespace kalmora {
namespace {

using test::Outcome;
using testing::HasSubstr;

class IndexVerbTest : public test::CommandLineTest {
protected:
    std::string DayPath(int month, int day, int year = 2008) const {
        char text[64];
        std::snprintf(text, sizeof text, "data/%d/%d%02d/%d_%02d%02d", year, year, month, year, month, day);
        return Path(text);
    }
    void Note(int month, int day, const std::string& name, const std::string& content) const {
        std::filesystem::create_directories(DayPath(month, day));
        ASSERT_EQ(files::WriteWholeFile(DayPath(month, day) + "/" + name, content), files::FileResult::Done);
    }
    std::string IndexPath(int month, int day) const { return DayPath(month, day) + "/$calendar.cidx"; }
    std::string IndexOf(int month, int day) const {
        return files::ReadWholeFile(IndexPath(month, day)).value_or("(none)");
    }
    Outcome RunOnData(const std::string& arguments) const {
        return Run("--data '" + Path("data") + "' " + arguments);
    }
    // A year of notes, and its indexes as one undisturbed run makes them.
    void MakeYear() const {
        for (int month = 1; month <= 12; ++month)
            for (int day = 1; day <= 28; ++day)
                for (const char* name : {"a.txt", "b.txt", "c.txt", "d.txt"}) {
                    std::filesystem::create_directories(DayPath(month, day));
                    Put(DayPath(month, day) + "/" + name, name);
                }
    }
    // Not flushed to the disk, as there are many.
    static void Put(const std::string& path, const char* content) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        ASSERT_TRUE(file) << path;
        std::fputs(content, file);
        std::fclose(file);
    }
    using Texts = std::map<std::string, std::string>;
    Texts Indexes() const {
        Texts texts;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Path("data"))) {
            if (entry.path().filename() == "$calendar.cidx")
                texts[entry.path()] = files::ReadWholeFile(entry.path()).value_or("(unreadable)");
            else if (entry.path().filename().string().starts_with("."))
                ADD_FAILURE() << "left behind: " << entry.path();
        }
        return texts;
    }
    void RemoveIndexes() const {
        for (const auto& [path, text] : Indexes()) files::RemoveFile(path);
    }
    // The command line that works on the data.
    std::vector<std::string> Words(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(),
                         {KALMORA_PROGRAM, "--home", Path("home"), "--data", Path("data")});
        return arguments;
    }
};

TEST_F(IndexVerbTest, MakesWhatIsMissingAndTellsHowMuchItWentThrough) {
    Note(11, 13, "a.txt", "cat");
    Note(11, 14, "b.txt", "dog");
    Note(12, 24, "c.txt", "tree");
    const Outcome run = RunOnData("index");
    EXPECT_EQ(run.status, 0) << Errors();
    EXPECT_EQ(run.out, "2 months, 3 days, 3 files\n");
    EXPECT_THAT(IndexOf(11, 13), HasSubstr("COMM=cat\n"));
    const auto counts = nlohmann::json::parse(RunOnData("index --json").out);
    EXPECT_EQ(counts, (nlohmann::json{{"months", 2}, {"days", 3}, {"files", 3}}));
}

TEST_F(IndexVerbTest, LeavesGoodIndexesAloneAndUpdateComparesThem) {
    Note(11, 13, "a.txt", "cat");
    Note(11, 13, "$calendar.cidx", "# Calendar Index [0.99]\nFILE=gone.txt\nCOMM=ghost\n-\n");
    EXPECT_EQ(RunOnData("index").status, 0);
    EXPECT_THAT(IndexOf(11, 13), HasSubstr("ghost"));
    EXPECT_EQ(RunOnData("update").status, 0);
    EXPECT_THAT(IndexOf(11, 13), testing::Not(HasSubstr("ghost")));
    EXPECT_THAT(IndexOf(11, 13), HasSubstr("COMM=cat\n"));
}

TEST_F(IndexVerbTest, KeepsToThePeriod) {
    for (const int day : {13, 14}) Note(11, day, "a.txt", "cat");
    Note(12, 24, "c.txt", "tree");
    EXPECT_EQ(RunOnData("index --day 2008-11-13").status, 0);
    EXPECT_EQ(Indexes().size(), 1u);
    EXPECT_EQ(RunOnData("index --month 2008-11").status, 0);
    EXPECT_EQ(Indexes().size(), 2u);
    EXPECT_EQ(RunOnData("index --year 2007").out, "0 months, 0 days, 0 files\n");
    EXPECT_EQ(RunOnData("update --year 2008").status, 0);
    EXPECT_EQ(Indexes().size(), 3u);
}

// The head of a PNG and no pixels.
std::string PngHead(std::uint32_t width, std::uint32_t height) {
    return std::string(test::kPngSignature) + test::PngHeader(width, height) + test::PngChunk("IEND", "");
}

TEST_F(IndexVerbTest, PicturesAreMeasuredByTheirHeads) {
    Note(11, 13, "a.png", PngHead(60, 40));
    Note(12, 24, "b.jpg", PngHead(40, 60));
    for (const char* verb : {"index", "update"}) EXPECT_EQ(RunOnData(verb).status, 0) << verb;
    EXPECT_THAT(RunOnData("show --json '" + DayPath(12, 24) + "/b.jpg'").out, HasSubstr("\"width\":40"));
    EXPECT_THAT(IndexOf(11, 13), HasSubstr("SIZE=240,160\n"));
    EXPECT_THAT(IndexOf(12, 24), HasSubstr("SIZE=160,240\n"));
}

TEST_F(IndexVerbTest, WrongUseAndMissingFoldersAreTold) {
    for (const char* wrong : {"index --month 2008-13", "index --day 2008-02-30", "update --year x",
                              "update --year 2008 --month 2008-11", "index extra"})
        EXPECT_EQ(RunOnData(wrong).status, 2) << wrong;
    const Outcome missing = Run("--data '" + Path("nowhere") + "' index");
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(Errors(), HasSubstr("no such folder"));
}

TEST_F(IndexVerbTest, IndexThatCannotBeWrittenIsToldAndTheOthersAreWritten) {
    Note(11, 13, "a.txt", "cat");
    Note(11, 14, "a.txt", "cat");
    std::filesystem::create_directories(IndexPath(11, 13));
    const Outcome run = RunOnData("index");
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(Errors(), HasSubstr("could not be written"));
    EXPECT_THAT(IndexOf(11, 14), HasSubstr("FILE=a.txt\n"));
}

TEST_F(IndexVerbTest, TwoProcessesOnOneTreeLeaveWholeIndexes) {
    MakeYear();
    ASSERT_EQ(RunOnData("index").status, 0);
    const Texts whole = Indexes();
    ASSERT_EQ(whole.size(), 336u);
    for (int round = 0; round < 2; ++round) {
        // Some have gone, some are old, some are none.
        int number = 0;
        for (const auto& [path, text] : whole) {
            ++number;
            if (number % 3 == 0) files::RemoveFile(path);
            if (number % 7 == 0) files::WriteWholeFile(path, "# Calendar Index [0.99]\nFILE=gone.txt\n-\n");
            if (number % 11 == 0) files::WriteWholeFile(path, "no index");
        }
        test::ChildProcess one(Words({"update"})), other(Words({"update"})), third(Words({"index"}));
        EXPECT_EQ(one.WaitForEnd(), 0);
        EXPECT_EQ(other.WaitForEnd(), 0);
        EXPECT_EQ(third.WaitForEnd(), 0);
        // Each of them wrote what it found true; the one that only makes may have kept what was old.
        EXPECT_EQ(RunOnData("update").status, 0);
        EXPECT_EQ(Indexes(), whole);
    }
}

TEST_F(IndexVerbTest, InterruptedRunLeavesWholeIndexesAndTheNextOneMakesTheRest) {
    MakeYear();
    ASSERT_EQ(RunOnData("index").status, 0);
    const Texts whole = Indexes();
    bool wasInterrupted = false;
    // As often as it takes: a run may be through before the signal arrives.
    for (int attempt = 0; attempt < 20 && !wasInterrupted; ++attempt) {
        RemoveIndexes();
        const std::string log = Path("log" + std::to_string(attempt));
        test::ChildProcess process(Words({"--log", log, "update"}));
        for (int i = 0; i < 10000; ++i) {
            if (files::ReadWholeFile(log).value_or("").find("UpdateIndex: ") != std::string::npos) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        process.Interrupt();
        const int status = process.WaitForEnd();
        const Texts made = Indexes();
        wasInterrupted = status == 1;
        if (!wasInterrupted) {
            EXPECT_EQ(status, 0);
            EXPECT_EQ(made, whole);
        }
        for (const auto& [path, text] : made) EXPECT_EQ(text, whole.at(path)) << path;
    }
    EXPECT_TRUE(wasInterrupted);
    EXPECT_EQ(RunOnData("update").status, 0);
    EXPECT_EQ(Indexes(), whole);
}

}  // namespace
}  // namespace kalmora
