// An import that is cut off at any system call has lost no file, and started again it ends with every file
// once.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "import/import.h"
#include "index/day_index.h"
#include "index/index_manager.h"
#include "media/exif_builder.h"
#include "media/photo_file.h"
#include "platform/abandoned_files.h"
#include "platform/clock.h"
#include "rewrite/safe_rewrite.h"
#include "rewrite_syscalls.h"
#include "state/app_state.h"
#include "store/extension_table.h"

namespace kalmora {
namespace {

namespace fs = std::filesystem;
using test::ChildEnd;
using test::Fault;
using test::FaultPlan;

std::string Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

std::string MakeFolderIn(const std::string& parent) {
    std::string path = parent + "/kalmora-import-XXXXXX";
    return mkdtemp(path.data()) ? path : std::string();
}

enum class Volumes { One, Two };

// Files that differ in their last bytes, whatever is written into their heads.
std::map<std::string, std::string> CardFiles() {
    std::map<std::string, std::string> card;
    const auto photo = [](const char* taken, std::size_t size) {
        test::ExifBuilder exif;
        exif.Ascii(test::ExifBuilder::Main, 0x0132, taken);
        return test::JpegWith(exif) + std::string(size, 's');
    };
    card["DCIM/100/A.JPG"] = photo("2008:11:13 10:15:30", 20'000);
    card["DCIM/100/B.JPG"] = photo("2008:11:13 10:15:31", 10);
    card["DCIM/101/A.JPG"] = photo("2008:11:13 10:15:32", 9'000);
    card["DCIM/101/deep/A.JPG"] = photo("2009:01:01 01:30:00", 5'000);
    card["DCIM/102/film.mov"] = std::string(30'000, 'f');
    card["DCIM/102/no extension"] = "n";
    card["top.txt"] = "[2008/11/14 09:00] a note";
    int number = 0;
    for (auto& [name, content] : card) content += "<" + std::to_string(++number) + ">";
    card["DCIM/102/empty.mov"] = "";
    return card;
}

std::string TailOf(const std::string& content) {
    return content.empty() ? "" : content.substr(content.rfind('<'));
}

class ImportFaultTest : public testing::Test {
protected:
    ImportFaultTest() : here_(MakeFolderIn("/dev/shm")), there_(MakeFolderIn("/tmp")) {
        LoadExtensionTable(here_ + "/extension.dat");
        State().settings.TempFolder = here_ + "/Temp";
        setenv("XDG_DATA_HOME", here_.c_str(), 1);
    }
    ~ImportFaultTest() override {
        test::SetFaultPlan({});
        ClearExtensionTable();
        State().settings.TempFolder.clear();
        unsetenv("XDG_DATA_HOME");
        ResetIndexes();
        fs::remove_all(here_);
        fs::remove_all(there_);
    }

    std::string Card(Volumes volumes) const { return (volumes == Volumes::One ? here_ : there_) + "/card"; }
    std::string Root() const { return here_ + "/files"; }

    void Begin(Volumes volumes) const {
        for (const char* name : {"/files", "/card", "/Temp"}) {
            fs::remove_all(here_ + name);
            fs::remove_all(there_ + name);
        }
        fs::create_directories(here_ + "/Temp");
        for (const auto& [name, content] : files_) {
            const fs::path path = Card(volumes) + "/" + name;
            fs::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << content;
            const FileTime time{128'710'000'000'000'000u};
            ASSERT_TRUE(files::SetTimes(path, time, time));
        }
    }
    ImportOptions Options(Volumes volumes, ImportOptions::Source source, bool withNotes) const {
        ImportOptions options;
        options.sources = {Card(volumes)};
        options.root = Root();
        options.source = source;
        options.dayEnd = 26;
        options.addFolderName = withNotes;
        return options;
    }
    static void Run(const ImportOptions& options) {
        State().settings.DataDirectory = options.root;
        ResetIndexes();
        RunImport(options);
    }

    // Below a folder, by the tail in which the files differ; scratch files and indexes do not count.
    std::multimap<std::string, std::string> Found(const std::string& folder) const {
        std::multimap<std::string, std::string> found;
        std::error_code error;
        for (const auto& entry : fs::recursive_directory_iterator(folder, error)) {
            const std::string name = entry.path().filename().string();
            if (entry.is_directory() || files::HasScratchName(name) || name == kIndexFileName) continue;
            const std::string content = Read(entry.path());
            found.emplace(TailOf(content), content);
        }
        return found;
    }

    // Nothing is lost, and nothing in the calendar is half a file.
    void ExpectNothingIsLost(Volumes volumes, bool withNotes) const {
        const auto calendar = Found(Root()), card = Found(Card(volumes));
        for (const auto& [name, content] : files_) {
            const std::string tail = TailOf(content);
            ASSERT_GE(calendar.count(tail) + card.count(tail), 1u) << name << " is lost";
            ASSERT_LE(calendar.count(tail), 1u) << name << " is there twice";
            const auto whole = calendar.find(tail);
            if (whole == calendar.end() || withNotes) continue;
            ASSERT_EQ(whole->second, content) << name << " is torn";
        }
        for (const auto& [tail, content] : calendar)
            ASSERT_TRUE(!tail.empty() || content.empty()) << "half a file of " << content.size() << " bytes";
    }
    void ExpectEveryFileOnce(Volumes volumes, ImportOptions::Source source) const {
        const auto calendar = Found(Root()), card = Found(Card(volumes));
        ASSERT_EQ(calendar.size(), files_.size());
        ASSERT_EQ(card.size(), source == ImportOptions::Source::Goes ? 0 : files_.size());
        for (const auto& [name, content] : files_) ASSERT_EQ(calendar.count(TailOf(content)), 1u) << name;
    }

    void ExpectEveryPhotoHasItsWordsOnce() const {
        int photos = 0;
        for (const auto& entry : fs::recursive_directory_iterator(Root())) {
            if (entry.path().extension() != ".JPG" && entry.path().extension() != ".jpg") continue;
            PhotoFile photo(entry.path());
            const std::string* const comment = photo.GetComment();
            ASSERT_THAT(comment ? *comment : "", testing::AnyOf("100", "101", "deep")) << entry.path();
            ++photos;
        }
        ASSERT_EQ(photos, 4);
    }

    // How many calls a whole import makes.
    int CallsOf(Volumes volumes, const ImportOptions& options) const {
        Begin(volumes);
        test::SetFaultPlan({});
        Run(options);
        return test::CountedCalls();
    }

    int KillEverywhere(Volumes volumes, ImportOptions::Source source, bool withNotes,
                       bool withoutNoReplace = false) const {
        const ImportOptions options = Options(volumes, source, withNotes);
        const int calls = CallsOf(volumes, options);
        int kills = 0;
        for (const Fault fault : {Fault::KillBefore, Fault::KillHalf, Fault::KillAfter})
            for (int call = 1; call <= calls; ++call) {
                SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(calls) + ", kill " +
                             std::to_string(static_cast<int>(fault)));
                Begin(volumes);
                const FaultPlan plan{.fault = fault, .atCall = call, .withoutNoReplace = withoutNoReplace};
                const ChildEnd end = test::RunInChild(plan, [&] { Run(options); });
                EXPECT_NE(end, ChildEnd::Broken);
                kills += end == ChildEnd::Killed;
                test::SetFaultPlan({.withoutNoReplace = withoutNoReplace});
                RecoverRewrites(State().settings.TempFolder);
                ExpectNothingIsLost(volumes, withNotes);
                Run(options);
                ExpectEveryFileOnce(volumes, source);
                if (withNotes) ExpectEveryPhotoHasItsWordsOnce();
                if (HasFatalFailure()) return kills;
            }
        return kills;
    }

    const std::map<std::string, std::string> files_ = CardFiles();
    const std::string here_, there_;
};

TEST_F(ImportFaultTest, KilledMoveBetweenVolumesLosesNothingAndIsFinishedByTheNext) {
    const int kills = KillEverywhere(Volumes::Two, ImportOptions::Source::Goes, false);
    std::cout << kills << " kills\n";
    EXPECT_GT(kills, 150);
}

TEST_F(ImportFaultTest, KilledMoveInsideAVolumeLosesNothing) {
    const int kills = KillEverywhere(Volumes::One, ImportOptions::Source::Goes, false);
    std::cout << kills << " kills\n";
    EXPECT_GT(kills, 50);
}

TEST_F(ImportFaultTest, KilledMoveWhereNamesCanBeReplacedLosesNothing) {
    EXPECT_GT(KillEverywhere(Volumes::One, ImportOptions::Source::Goes, false, true), 50);
}

TEST_F(ImportFaultTest, KilledCopyEndsWithEveryFileOnce) {
    const int kills = KillEverywhere(Volumes::Two, ImportOptions::Source::Stays, false) +
                      KillEverywhere(Volumes::One, ImportOptions::Source::Stays, false);
    std::cout << kills << " kills\n";
    EXPECT_GT(kills, 250);
}

TEST_F(ImportFaultTest, KilledMoveWithNotesLosesNothingAndTheNextImportWritesTheWords) {
    const int kills = KillEverywhere(Volumes::Two, ImportOptions::Source::Goes, true) +
                      KillEverywhere(Volumes::One, ImportOptions::Source::Goes, true);
    std::cout << kills << " kills\n";
    EXPECT_GT(kills, 400);
}

TEST_F(ImportFaultTest, ErrorAtAnyCallIsToldAndLosesNothing) {
    for (const Volumes volumes : {Volumes::One, Volumes::Two})
        for (const ImportOptions::Source source :
             {ImportOptions::Source::Goes, ImportOptions::Source::Stays}) {
            ImportOptions options = Options(volumes, source, false);
            const int calls = CallsOf(volumes, options);
            for (const int error : {ENOSPC, EACCES})
                for (int call = 1; call <= calls; ++call) {
                    SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(calls) +
                                 ", error " + std::to_string(error));
                    Begin(volumes);
                    State().settings.DataDirectory = options.root;
                    test::SetFaultPlan(
                        {.fault = Fault::Fail, .atCall = call, .error = error, .lasting = true});
                    const ImportSummary summary = RunImport(options);
                    test::SetFaultPlan({});
                    ASSERT_NO_FATAL_FAILURE(ExpectNothingIsLost(volumes, false));
                    ASSERT_EQ(summary.done, static_cast<int>(files_.size()));
                    // What is reported as arrived has arrived.
                    const auto count = [&](ImportResult result) {
                        const auto found = summary.counts.find(result);
                        return found == summary.counts.end() ? 0 : found->second;
                    };
                    ASSERT_EQ(Found(Root()).size(), static_cast<std::size_t>(count(ImportResult::Copied) +
                                                                             count(ImportResult::Moved)));
                    ASSERT_EQ(count(ImportResult::Copied) + count(ImportResult::Moved) + summary.failures,
                              static_cast<int>(files_.size()));
                    Run(options);
                    ASSERT_NO_FATAL_FAILURE(ExpectNothingIsLost(volumes, false));
                    if (source == ImportOptions::Source::Stays) ExpectEveryFileOnce(volumes, source);
                    if (HasFatalFailure()) return;
                }
        }
}

TEST_F(ImportFaultTest, PassingErrorAtAnyCallLosesNothing) {
    const ImportOptions options = Options(Volumes::Two, ImportOptions::Source::Goes, false);
    const int calls = CallsOf(Volumes::Two, options);
    for (const int error : {EIO})
        for (int call = 1; call <= calls; ++call) {
            SCOPED_TRACE("call " + std::to_string(call) + ", error " + std::to_string(error));
            Begin(Volumes::Two);
            test::SetFaultPlan({.fault = Fault::Fail, .atCall = call, .error = error});
            Run(options);
            test::SetFaultPlan({});
            ASSERT_NO_FATAL_FAILURE(ExpectNothingIsLost(Volumes::Two, false));
        }
}

TEST_F(ImportFaultTest, RenamingWithoutReplacingIsDoneWhereTheSystemHasNoCallForIt) {
    Begin(Volumes::One);
    test::SetFaultPlan({.withoutNoReplace = true});
    fs::create_directories(Root() + "/2008/200811/2008_1113");
    std::ofstream(Root() + "/2008/200811/2008_1113/B.JPG") << "another<100>";
    Run(Options(Volumes::One, ImportOptions::Source::Goes, false));
    const auto calendar = Found(Root());
    EXPECT_EQ(calendar.size(), files_.size() + 1);
    EXPECT_EQ(Read(Root() + "/2008/200811/2008_1113/B.JPG"), "another<100>");
    EXPECT_TRUE(Found(Card(Volumes::One)).empty());
}

// A disk that is really full, where the machine lets one be made.
TEST_F(ImportFaultTest, ImportThatDoesNotFitIsNotBegun) {
    Begin(Volumes::Two);
    ImportOptions options = Options(Volumes::Two, ImportOptions::Source::Stays, false);
    options.root = "/proc/self/files";
    const ImportSummary summary = RunImport(options);
    EXPECT_EQ(summary.end, ImportEnd::NoSpace);
    EXPECT_EQ(summary.done, 0);
    EXPECT_GT(summary.neededBytes, 60'000u);
    EXPECT_EQ(summary.freeBytes, 0u);
    EXPECT_EQ(Found(Card(Volumes::Two)).size(), files_.size());
}

}  // namespace
}  // namespace kalmora
