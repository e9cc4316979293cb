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
    ImportNote Pair(std::string_view name, std::string_view content, std::string_view copied) const {
        ImportNote note;
        note.source = Add(name, content);
        note.target = PutInDay(name, copied);
        const auto status = files::GetStatus(note.source);
        note.size = status->size;
        note.written = status->written;
        return note;
    }
    int SettleWith(const std::vector<ImportNote>& notes) const {
        ImportJournal journal;
        EXPECT_TRUE(journal.Open(At("Temp")));
        EXPECT_EQ(journal.Write(notes), files::FileResult::Done);
        return journal.Settle();
    }
};

TEST_F(ImportJournalTest, NotesComeBack) {
    const std::vector<ImportNote> notes{{"/card/a b\n.jpg", "/files/raw\xFF.jpg", 12, {345}},
                                        {"/x", "/y", 0, {}}};
    const auto back = ParseImportJournal(MakeImportJournal(notes));
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(back[0].source, notes[0].source);
    EXPECT_EQ(back[0].target, notes[0].target);
    EXPECT_EQ(back[0].size, 12u);
    EXPECT_EQ(back[0].written, FileTime{345});
    EXPECT_EQ(back[1].source, "/x");
    EXPECT_THAT(ParseImportJournal(MakeImportJournal({})), IsEmpty());
}

TEST_F(ImportJournalTest, HalfAJournalIsNone) {
    const std::string whole = MakeImportJournal(std::vector<ImportNote>{{"/a", "/b", 1, {2}}});
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(ParseImportJournal(whole.substr(0, length)), IsEmpty()) << length;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string other = whole;
        other[at] = static_cast<char>(other[at] ^ 1);
        if (at == 18) continue;  // the blank between the two numbers says nothing
        EXPECT_THAT(ParseImportJournal(other), IsEmpty()) << at;
    }
    EXPECT_EQ(ParseImportJournal(whole + "rest of an older one").size(), 1u);
    EXPECT_THAT(ParseImportJournal(MakeImportJournal(std::vector<ImportNote>{{"a", "/b", 1, {2}}})),
                IsEmpty())
        << "a path that is not absolute";
}

TEST_F(ImportJournalTest, SourceGoesWhenItsCopyHoldsTheSame) {
    const ImportNote note = Pair("a.jpg", "content", "content");
    EXPECT_EQ(SettleWith({note}), 1);
    EXPECT_FALSE(files::Exists(note.source));
    EXPECT_EQ(ContentOf(note.target), "content");
    EXPECT_EQ(ContentOf(JournalPath()), "");
}

TEST_F(ImportJournalTest, SourceStaysWhenAnythingIsAmiss) {
    std::vector<ImportNote> notes;
    notes.push_back(Pair("other.jpg", "content", "CONTENT"));
    notes.push_back(Pair("longer.jpg", "content", "content and more"));
    notes.push_back(Pair("written since.jpg", "content", "content"));
    Touch(notes.back().source, 1);
    notes.push_back(Pair("no copy.jpg", "content", "content"));
    files::RemoveFile(notes.back().target);
    notes.push_back(Pair("one file.jpg", "content", "content"));
    files::RemoveFile(notes.back().target);
    std::filesystem::create_hard_link(notes.back().source, notes.back().target);
    EXPECT_EQ(SettleWith(notes), 0);
    for (const ImportNote& note : notes) EXPECT_EQ(ContentOf(note.source), "content") << note.source;
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
    const ImportNote note = Pair("a.jpg", "content", "content");
    {
        ImportJournal journal;
        ASSERT_TRUE(journal.Open(At("Temp")));
        ASSERT_EQ(journal.Write(std::vector<ImportNote>{note}), files::FileResult::Done);
    }
    Import();
    EXPECT_TRUE(files::Exists(note.source)) << "an import that copies leaves it";
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_FALSE(files::Exists(note.source));
    EXPECT_EQ(NamesInDay().size(), 1u);
}

}  // namespace
}  // namespace kalmora
