// A photo that a killed program left half-written, as the verbs that read photos find it.
#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "media/png_builder.h"
#include "program_fixture.h"
#include "rewrite/rewrite_journal.h"

namespace kalmora {
namespace {

using test::Outcome;
using testing::HasSubstr;

class CutOffVerbTest : public test::CommandLineTest {
protected:
    CutOffVerbTest() {
        std::filesystem::create_directories(Path("data/2008/200811/2008_1113"));
        std::filesystem::create_directories(Path("home/Temp"));
        Write("data/2008/200811/2008_1113/a.png", kWhole);
    }

    // As a kill in the middle of writing leaves it: record and copy are there, the file ends too early.
    void Tear() const {
        const auto status = files::GetStatus(Photo());
        RewriteRecord record;
        record.strategy = RewriteRecord::Strategy::Copied;
        record.path = Photo();
        record.oldSize = kWhole.size();
        record.newSize = kWhole.size() + 1;
        record.newBytes = "x";
        record.offset = kWhole.size();
        record.copyName = "$a.png";
        record.written = status->written;
        record.accessed = status->accessed;
        Write("home/Temp/$a.png", kWhole);
        RewriteJournal journal;
        ASSERT_EQ(journal.Open(Path("home/Temp")), files::FileResult::Done);
        ASSERT_EQ(journal.Write({&record, 1}), files::FileResult::Done);
        Write("data/2008/200811/2008_1113/a.png", kWhole.substr(0, 20));
    }
    std::string Photo() const { return Path("data/2008/200811/2008_1113/a.png"); }
    std::string Index() const {
        return files::ReadWholeFile(Path("data/2008/200811/2008_1113/$calendar.cidx")).value_or("(none)");
    }
    bool IsWhole() const { return files::ReadWholeFile(Photo()) == kWhole; }
    Outcome RunOnData(const std::string& verb) const { return Run("--data '" + Path("data") + "' " + verb); }

    const std::string kWhole =
        std::string(test::kPngSignature) + test::PngHeader(60, 40) + test::PngChunk("IEND", "");
};

TEST_F(CutOffVerbTest, ShowTellsOfTheWholePhoto) {
    Tear();
    const Outcome run = RunOnData("show --json '" + Photo() + "'");
    EXPECT_EQ(run.status, 0) << Errors();
    EXPECT_EQ(nlohmann::json::parse(run.out)[0]["width"], 60);
    EXPECT_TRUE(IsWhole());
}

TEST_F(CutOffVerbTest, IndexAndSearchReadTheWholePhoto) {
    for (const char* verb : {"index", "search --json png"}) {
        files::RemoveFile(Path("data/2008/200811/2008_1113/$calendar.cidx"));
        Tear();
        EXPECT_EQ(RunOnData(verb).status, 0) << Errors();
        EXPECT_TRUE(IsWhole()) << verb;
        EXPECT_THAT(Index(), HasSubstr("SIZE=240,160\n")) << verb;
    }
}

TEST_F(CutOffVerbTest, UpdateTakesTheLieOutOfTheIndex) {
    Tear();
    // With another home it is not known that the photo is torn.
    std::filesystem::rename(Path("home"), Path("kept"));
    ASSERT_EQ(RunOnData("index").status, 0) << Errors();
    ASSERT_THAT(Index(), testing::Not(HasSubstr("SIZE=240,160\n")));
    std::filesystem::remove_all(Path("home"));
    std::filesystem::rename(Path("kept"), Path("home"));
    EXPECT_EQ(RunOnData("update").status, 0) << Errors();
    EXPECT_THAT(Index(), HasSubstr("SIZE=240,160\n"));
}

TEST_F(CutOffVerbTest, ShotDrawsTheWholePhoto) {
    Tear();
    RunOnData("shot --view day --date 2008-11-13 --size 100x100 --out x.png");
    EXPECT_TRUE(IsWhole());
}

}  // namespace
}  // namespace kalmora
