// Index building that is cut off at any call leaves each index file the old or the new one, whole; the next
// run brings all of them up to date.
#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>

#include "index/day_index.h"
#include "index/index_batch.h"
#include "index/month_index.h"
#include "media/exif_builder.h"
#include "rewrite_syscalls.h"
#include "store/extension_table.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using test::ChildEnd;
using test::Fault;

std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

// Five days of three photos; the first two have an index that is no longer true.
class IndexFaultTest : public testing::Test {
protected:
    IndexFaultTest() { LoadExtensionTable(folder_ / "extension.dat"); }
    ~IndexFaultTest() override {
        test::SetFaultPlan({});
        ClearExtensionTable();
    }

    static constexpr int kDays = 5;
    std::filesystem::path FolderOf(int day) const {
        return folder_ / "2008/200811/2008_110" + std::to_string(day);
    }
    std::filesystem::path IndexOf(int day) const { return FolderOf(day) / kIndexFileName; }

    void MakeTree() const {
        std::filesystem::remove_all(folder_ / "2008");
        for (int day = 1; day <= kDays; ++day) {
            std::filesystem::create_directories(FolderOf(day));
            for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) {
                test::ExifBuilder exif;
                exif.Ascii(test::ExifBuilder::Main, 0x0132, "2008:11:01 10:00:00");
                const auto path = FolderOf(day) / name;
                std::ofstream(path, std::ios::binary) << test::JpegWith(exif);
                const FileTime time{128'710'000'000'000'000u};
                files::SetTimes(path, time, time);
            }
        }
        for (int day = 1; day <= 2; ++day)
            std::ofstream(IndexOf(day)) << "# Calendar Index [0.99]\nFILE=gone.jpg\n-\n";
    }
    void Update() const {
        MonthIndex month(2008, 11, folder_ / "");
        month.Load(0);
        month.Update(0);
    }
    // By day; a day without an index has none.
    std::map<int, std::string> Indexes() const {
        std::map<int, std::string> indexes;
        for (int day = 1; day <= kDays; ++day)
            if (std::filesystem::exists(IndexOf(day))) indexes[day] = Content(IndexOf(day));
        return indexes;
    }

    test::TemporaryFolder folder_;
};

TEST_F(IndexFaultTest, KilledAtAnyCallEachIndexIsTheOldOrTheNewOne) {
    MakeTree();
    const auto before = Indexes();
    test::SetFaultPlan({});
    Update();
    const int calls = test::CountedCalls();
    const auto after = Indexes();
    ASSERT_EQ(after.size(), 5u);
    ASSERT_GT(calls, 2 * kDays);
    int old = 0, fresh = 0;
    for (const Fault fault : {Fault::KillBefore, Fault::KillHalf, Fault::KillAfter}) {
        for (int call = 1; call <= calls; ++call) {
            MakeTree();
            ASSERT_EQ(test::RunInChild({.fault = fault, .atCall = call}, [&] { Update(); }), ChildEnd::Killed)
                << "call " << call << " of " << calls;
            for (const auto& [day, text] : Indexes()) {
                const bool isNew = text == after.at(day);
                ++(isNew ? fresh : old);
                ASSERT_TRUE(isNew || (before.contains(day) && text == before.at(day)))
                    << "day " << day << ", call " << call << " of " << calls << ":\n"
                    << text;
            }
            Update();
            ASSERT_EQ(Indexes(), after) << "call " << call;
        }
    }
    std::cout << 3 * calls << " kills: " << old << " times an old index, " << fresh << " times a new one\n";
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
}

TEST_F(IndexFaultTest, AnErrorAtAnyCallLeavesEachIndexWhole) {
    MakeTree();
    const auto before = Indexes();
    test::SetFaultPlan({});
    Update();
    const int calls = test::CountedCalls();
    const auto after = Indexes();
    for (const int error : {ENOSPC, EIO, EACCES}) {
        for (int call = 1; call <= calls; ++call) {
            MakeTree();
            test::SetFaultPlan({.fault = Fault::Fail, .atCall = call, .error = error, .lasting = true});
            Update();
            test::SetFaultPlan({});
            for (const auto& [day, text] : Indexes())
                ASSERT_TRUE(text == after.at(day) || (before.contains(day) && text == before.at(day)))
                    << "day " << day << ", call " << call << " of " << calls << ":\n"
                    << text;
            Update();
            ASSERT_EQ(Indexes(), after) << "call " << call;
        }
    }
}

TEST_F(IndexFaultTest, FullDiskKeepsTheOldIndexAndTheRecordsInMemory) {
    MakeTree();
    MonthIndex month(2008, 11, folder_ / "");
    test::SetFaultPlan({.fault = Fault::Fail, .atCall = 1, .error = ENOSPC, .lasting = true});
    EXPECT_TRUE(month.Load(0));
    EXPECT_TRUE(month.Update(0));
    test::SetFaultPlan({});
    EXPECT_EQ(Indexes().size(), 2u);
    for (int day = 1; day <= kDays; ++day) {
        EXPECT_EQ(month.Day(day)->entries.size(), 3u);
        EXPECT_TRUE(month.Day(day)->dirty);
    }
    month.WriteLoadedDays();
    EXPECT_EQ(Indexes().size(), 5u);
}

}  // namespace
}  // namespace kalmora
