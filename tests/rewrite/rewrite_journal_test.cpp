#include "rewrite/rewrite_journal.h"

#include <gtest/gtest.h>

#include "store/store_fixture.h"

namespace kalmora {
namespace {

using files::FileResult;

class RewriteJournalTest : public StoreTest {
protected:
    RewriteJournalTest() { EXPECT_EQ(journal.Open(home), FileResult::Done); }

    static RewriteRecord Record(const std::string& path) {
        RewriteRecord record;
        record.strategy = RewriteRecord::Strategy::Inserted;
        record.path = path;
        record.oldSize = 10;
        record.newSize = 4106;
        record.offset = 2;
        record.oldLength = 3;
        record.oldBytes = std::string("o\0d", 3);
        record.newBytes = std::string(4099, 'n');
        record.copyName = "$copy";
        record.accessed = {1};
        record.written = {UINT64_MAX};
        record.volume = 7;
        record.identity = 1ull << 63;
        return record;
    }
    static void ExpectSame(const RewriteRecord& a, const RewriteRecord& b) {
        EXPECT_EQ(a.strategy, b.strategy);
        EXPECT_EQ(a.path, b.path);
        EXPECT_EQ(std::tie(a.oldSize, a.newSize, a.offset, a.oldLength),
                  std::tie(b.oldSize, b.newSize, b.offset, b.oldLength));
        EXPECT_EQ(std::tie(a.oldBytes, a.newBytes, a.copyName), std::tie(b.oldBytes, b.newBytes, b.copyName));
        EXPECT_EQ(std::tie(a.accessed, a.written, a.volume, a.identity),
                  std::tie(b.accessed, b.written, b.volume, b.identity));
    }
    std::string Bytes() const { return ContentOf(At("rewrite.journal")); }

    RewriteJournal journal;
};

TEST_F(RewriteJournalTest, GivesBackItsNotes) {
    EXPECT_TRUE(journal.Read().empty());
    const std::vector<RewriteRecord> records{Record("/a/\u3042.jpg"), Record("/raw\xFF"), Record("/c")};
    ASSERT_EQ(journal.Write(records), FileResult::Done);
    RewriteJournal other;
    ASSERT_EQ(other.Open(home), FileResult::Done);
    const std::vector<RewriteRecord> read = other.Read();
    ASSERT_EQ(read.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) ExpectSame(read[i], records[i]);
}

TEST_F(RewriteJournalTest, IsEmptyOnceCleared) {
    for (const auto clearing : {RewriteJournal::Clearing::Soon, RewriteJournal::Clearing::Flushed}) {
        ASSERT_EQ(journal.Write(std::vector{Record("/a")}), FileResult::Done);
        ASSERT_EQ(journal.Clear(clearing), FileResult::Done);
        EXPECT_TRUE(journal.Read().empty());
    }
    ASSERT_EQ(journal.Write({}), FileResult::Done);
    EXPECT_TRUE(journal.Read().empty());
}

TEST_F(RewriteJournalTest, OfAShorterGroupHoldsNothingOfTheLongerOneBefore) {
    ASSERT_EQ(journal.Write(std::vector{Record("/a"), Record("/b")}), FileResult::Done);
    ASSERT_EQ(journal.Write(std::vector{Record("/c")}), FileResult::Done);
    ASSERT_EQ(journal.Read().size(), 1u);
    EXPECT_EQ(journal.Read()[0].path, "/c");
}

TEST_F(RewriteJournalTest, WhoseWritingWasCutOffHasNoNotes) {
    ASSERT_EQ(journal.Write(std::vector{Record("/a"), Record("/b")}), FileResult::Done);
    const std::string whole = Bytes();
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        Put("rewrite.journal", whole.substr(0, length));
        EXPECT_TRUE(journal.Read().empty() || length == whole.size()) << length;
    }
}

TEST_F(RewriteJournalTest, WithAnyByteChangedHasNoNotes) {
    ASSERT_EQ(journal.Write(std::vector{Record("/a")}), FileResult::Done);
    const std::string whole = Bytes();
    for (std::size_t at = 0; at < whole.size(); at += at < 200 ? 1 : 53) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x80);
        Put("rewrite.journal", bytes);
        const std::vector<RewriteRecord> read = journal.Read();
        const bool isCount = at >= 20 && at < 24;  // the records themselves show how many they are
        if (!isCount) {
            EXPECT_TRUE(read.empty()) << at;
        } else if (!read.empty()) {
            ExpectSame(read[0], Record("/a"));
        }
    }
}

TEST_F(RewriteJournalTest, BytesAreThoseOfItsFormat) {
    RewriteRecord record;
    record.strategy = RewriteRecord::Strategy::InPlace;
    record.path = "/p";
    record.oldBytes = "o";
    ASSERT_EQ(journal.Write(std::vector{record}), FileResult::Done);
    const std::string bytes = Bytes();
    EXPECT_EQ(bytes.substr(0, 8), "KMRWJRN1");
    EXPECT_EQ(bytes.substr(8, 8), std::string("\x6B\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(bytes.substr(20, 4), std::string("\1\0\0\0", 4));
    EXPECT_EQ(bytes.substr(24, 18), std::string("\1\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0/p", 18));
    EXPECT_EQ(bytes.size(), 24u + 0x6Bu);
}

TEST_F(RewriteJournalTest, ThatHasGrownLargeIsCutWhenItIsCleared) {
    RewriteRecord record = Record("/a");
    record.newBytes = std::string(9u << 20, 'n');
    ASSERT_EQ(journal.Write(std::vector{record}), FileResult::Done);
    ASSERT_EQ(journal.Clear(RewriteJournal::Clearing::Soon), FileResult::Done);
    EXPECT_EQ(files::GetStatus(At("rewrite.journal"))->size, 24u);
    record.newBytes = std::string(65u << 20, 'n');
    EXPECT_EQ(journal.Write(std::vector{record}), FileResult::Failed);
}

TEST_F(RewriteJournalTest, NamesTheCopiesThatAreNeeded) {
    ASSERT_EQ(journal.Write(std::vector{Record("/a")}), FileResult::Done);
    EXPECT_EQ(CopiesInJournal(home), std::vector<std::string>{"$copy"});
    EXPECT_TRUE(CopiesInJournal(At("absent")).empty());
    EXPECT_FALSE(files::Exists(At("absent/rewrite.journal")));
}

}  // namespace
}  // namespace kalmora
