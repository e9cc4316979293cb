#include "rewrite/rewrite_journal.h"

#include <gtest/gtest.h>

#include "store/store_fixture.h"

namespace kalmora {
namespace {

using files::FileResult;

class RewriteJournalTest : public StoreTest {
protected:
    RewriteJournalTest() { EXPECT_EQ(journal.Open(home), FileResult::Done); }

    static RewriteNote Note(const std::string& path) {
        RewriteNote note;
        note.road = RewriteNote::Road::Inserted;
        note.path = path;
        note.oldSize = 10;
        note.newSize = 4106;
        note.offset = 2;
        note.oldLength = 3;
        note.oldBytes = std::string("o\0d", 3);
        note.newBytes = std::string(4099, 'n');
        note.copyName = "$copy";
        note.accessed = {1};
        note.written = {UINT64_MAX};
        note.volume = 7;
        note.identity = 1ull << 63;
        return note;
    }
    static void ExpectSame(const RewriteNote& a, const RewriteNote& b) {
        EXPECT_EQ(a.road, b.road);
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
    const std::vector<RewriteNote> notes{Note("/a/\u3042.jpg"), Note("/raw\xFF"), Note("/c")};
    ASSERT_EQ(journal.Write(notes), FileResult::Done);
    RewriteJournal other;
    ASSERT_EQ(other.Open(home), FileResult::Done);
    const std::vector<RewriteNote> read = other.Read();
    ASSERT_EQ(read.size(), notes.size());
    for (std::size_t i = 0; i < notes.size(); ++i) ExpectSame(read[i], notes[i]);
}

TEST_F(RewriteJournalTest, IsEmptyOnceCleared) {
    for (const auto clearing : {RewriteJournal::Clearing::Soon, RewriteJournal::Clearing::Flushed}) {
        ASSERT_EQ(journal.Write(std::vector{Note("/a")}), FileResult::Done);
        ASSERT_EQ(journal.Clear(clearing), FileResult::Done);
        EXPECT_TRUE(journal.Read().empty());
    }
    ASSERT_EQ(journal.Write({}), FileResult::Done);
    EXPECT_TRUE(journal.Read().empty());
}

TEST_F(RewriteJournalTest, OfAShorterGroupHoldsNothingOfTheLongerOneBefore) {
    ASSERT_EQ(journal.Write(std::vector{Note("/a"), Note("/b")}), FileResult::Done);
    ASSERT_EQ(journal.Write(std::vector{Note("/c")}), FileResult::Done);
    ASSERT_EQ(journal.Read().size(), 1u);
    EXPECT_EQ(journal.Read()[0].path, "/c");
}

TEST_F(RewriteJournalTest, WhoseWritingWasCutOffHasNoNotes) {
    ASSERT_EQ(journal.Write(std::vector{Note("/a"), Note("/b")}), FileResult::Done);
    const std::string whole = Bytes();
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        Put("rewrite.journal", whole.substr(0, length));
        EXPECT_TRUE(journal.Read().empty() || length == whole.size()) << length;
    }
}

TEST_F(RewriteJournalTest, WithAnyByteChangedHasNoNotes) {
    ASSERT_EQ(journal.Write(std::vector{Note("/a")}), FileResult::Done);
    const std::string whole = Bytes();
    for (std::size_t at = 0; at < whole.size(); at += at < 200 ? 1 : 53) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x80);
        Put("rewrite.journal", bytes);
        const std::vector<RewriteNote> read = journal.Read();
        const bool isCount = at >= 20 && at < 24;  // the notes themselves tell how many they are
        if (!isCount) {
            EXPECT_TRUE(read.empty()) << at;
        } else if (!read.empty()) {
            ExpectSame(read[0], Note("/a"));
        }
    }
}

TEST_F(RewriteJournalTest, BytesAreThoseOfItsFormat) {
    RewriteNote note;
    note.road = RewriteNote::Road::InPlace;
    note.path = "/p";
    note.oldBytes = "o";
    ASSERT_EQ(journal.Write(std::vector{note}), FileResult::Done);
    const std::string bytes = Bytes();
    EXPECT_EQ(bytes.substr(0, 8), "KMRWJRN1");
    EXPECT_EQ(bytes.substr(8, 8), std::string("\x6B\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(bytes.substr(20, 4), std::string("\1\0\0\0", 4));
    EXPECT_EQ(bytes.substr(24, 18), std::string("\1\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0/p", 18));
    EXPECT_EQ(bytes.size(), 24u + 0x6Bu);
}

TEST_F(RewriteJournalTest, ThatHasGrownLargeIsCutWhenItIsCleared) {
    RewriteNote note = Note("/a");
    note.newBytes = std::string(9u << 20, 'n');
    ASSERT_EQ(journal.Write(std::vector{note}), FileResult::Done);
    ASSERT_EQ(journal.Clear(RewriteJournal::Clearing::Soon), FileResult::Done);
    EXPECT_EQ(files::GetStatus(At("rewrite.journal"))->size, 24u);
    note.newBytes = std::string(65u << 20, 'n');
    EXPECT_EQ(journal.Write(std::vector{note}), FileResult::Failed);
}

TEST_F(RewriteJournalTest, NamesTheCopiesThatAreNeeded) {
    ASSERT_EQ(journal.Write(std::vector{Note("/a")}), FileResult::Done);
    EXPECT_EQ(NotedCopies(home), std::vector<std::string>{"$copy"});
    EXPECT_TRUE(NotedCopies(At("absent")).empty());
    EXPECT_FALSE(files::Exists(At("absent/rewrite.journal")));
}

}  // namespace
}  // namespace kalmora
