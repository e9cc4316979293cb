#include "import/import_journal.h"

#include <gmock/gmock.h>

#include "import/import_fixture.h"

namespace kalmora {
namespace {

using testing::IsEmpty;

class ImportJournalTest : public ImportTest {
protected:
    std::string JournalPath() const { return At("Temp/import.journal"); }
    // A pair of files as a kill between the two leaves them.
    MoveRecord Pair(std::string_view name, std::string_view content, std::string_view copied) const {
        MoveRecord record;
        record.source = Add(name, content);
        record.target = PutInDay(name, copied);
        const auto status = files::GetStatus(record.source);
        record.size = status->size;
        record.written = status->written;
        return record;
    }
    int RecoverWith(const std::vector<MoveRecord>& records) const {
        ImportJournal journal;
        EXPECT_TRUE(journal.Open(At("Temp")));
        EXPECT_EQ(journal.Write(records), files::FileResult::Done);
        return journal.Recover();
    }
};

TEST(ImportJournalFormat, IsTheseBytes) {
    using std::string_literals::operator""s;
    const std::vector<MoveRecord> records{{"/card/a.jpg", "/d/a.jpg", 7, {34}}};
    EXPECT_EQ(MakeImportJournal(records),
              "KMIMPORT1 b9d495ce 00000000000000000026\n7 34\0/card/a.jpg\0/d/a.jpg\0"s);
}

TEST_F(ImportJournalTest, NotesComeBack) {
    const std::vector<MoveRecord> records{{"/card/a b\n.jpg", "/files/raw\xFF.jpg", 12, {345}},
                                          {"/x", "/y", 0, {}}};
    const auto back = ParseImportJournal(MakeImportJournal(records));
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(back[0].source, records[0].source);
    EXPECT_EQ(back[0].target, records[0].target);
    EXPECT_EQ(back[0].size, 12u);
    EXPECT_EQ(back[0].written, FileTime{345});
    EXPECT_EQ(back[1].source, "/x");
    EXPECT_THAT(ParseImportJournal(MakeImportJournal({})), IsEmpty());
}

TEST_F(ImportJournalTest, HalfAJournalIsNone) {
    const std::string whole = MakeImportJournal(std::vector<MoveRecord>{{"/a", "/b", 1, {2}}});
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(ParseImportJournal(whole.substr(0, length)), IsEmpty()) << length;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string other = whole;
        other[at] = static_cast<char>(other[at] ^ 1);
        if (at == 18) continue;  // the blank between the two numbers says nothing
        EXPECT_THAT(ParseImportJournal(other), IsEmpty()) << at;
    }
    EXPECT_EQ(ParseImportJournal(whole + "rest of an older one").size(), 1u);
    EXPECT_THAT(ParseImportJournal(MakeImportJournal(std::vector<MoveRecord>{{"a", "/b", 1, {2}}})),
                IsEmpty())
        << "a path that is not absolute";
}

TEST_F(ImportJournalTest, SourceGoesWhenItsCopyHoldsTheSame) {
    const MoveRecord record = Pair("a.jpg", "content", "content");
    EXPECT_EQ(RecoverWith({record}), 1);
    EXPECT_FALSE(files::Exists(record.source));
    EXPECT_EQ(ContentOf(record.target), "content");
    EXPECT_EQ(ContentOf(JournalPath()), "");
}

TEST_F(ImportJournalTest, SourceStaysWhenAnythingIsAmiss) {
    std::vector<MoveRecord> records;
    records.push_back(Pair("other.jpg", "content", "CONTENT"));
    records.push_back(Pair("longer.jpg", "content", "content and more"));
    records.push_back(Pair("written since.jpg", "content", "content"));
    Touch(records.back().source, 1);
    records.push_back(Pair("no copy.jpg", "content", "content"));
    files::RemoveFile(records.back().target);
    records.push_back(Pair("one file.jpg", "content", "content"));
    files::RemoveFile(records.back().target);
    std::filesystem::create_hard_link(records.back().source, records.back().target);
    EXPECT_EQ(RecoverWith(records), 0);
    for (const MoveRecord& record : records) EXPECT_EQ(ContentOf(record.source), "content") << record.source;
}

TEST_F(ImportJournalTest, OneImportUsesItAtATime) {
    ImportJournal first, second;
    EXPECT_TRUE(first.Open(At("Temp")));
    EXPECT_FALSE(second.Open(At("Temp")));
    first = {};
    EXPECT_TRUE(second.Open(At("Temp")));
    EXPECT_FALSE(first.Open(""));
    EXPECT_TRUE(first.Open(At("new/Temp"))) << "the folder is made";
}

TEST_F(ImportJournalTest, NextMoveFinishesWhatWasCutOff) {
    const MoveRecord record = Pair("a.jpg", "content", "content");
    {
        ImportJournal journal;
        ASSERT_TRUE(journal.Open(At("Temp")));
        ASSERT_EQ(journal.Write(std::vector<MoveRecord>{record}), files::FileResult::Done);
    }
    Import();
    EXPECT_TRUE(files::Exists(record.source)) << "an import that copies leaves it";
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_FALSE(files::Exists(record.source));
    EXPECT_EQ(NamesInDay().size(), 1u);
}

}  // namespace
}  // namespace kalmora
