// What a killed import has still to do is done by the next.
#include "import/import_arrivals.h"

#include <gmock/gmock.h>

#include "import/import_fixture.h"
#include "media/photo_file.h"
#include "support/closed_folder.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using ImportArrivalsTest = ImportTest;

TEST(ArrivalRecords, AreReadUpToTheFirstThatDoesNotAddUp) {
    const std::string one = MakeWordsRecord({"/d/a.jpg", "words\r\nof two lines", 12, {34}});
    const std::string other = MakeWordsRecord({"/d/\xE9.jpg", "w", 0, {0}});
    const auto both = ParseWordsRecords(one + other);
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0].words, "words\r\nof two lines");
    EXPECT_EQ(both[0].size, 12u);
    EXPECT_EQ(both[0].written.ticks, 34u);
    EXPECT_EQ(both[1].path, "/d/\xE9.jpg");
    for (std::size_t length = 0; length < other.size(); ++length)
        EXPECT_EQ(ParseWordsRecords(one + other.substr(0, length)).size(), 1u) << length;
    std::string spoilt = one + other;
    spoilt[one.size() - 2] ^= 1;
    EXPECT_THAT(ParseWordsRecords(spoilt), IsEmpty());
    EXPECT_THAT(ParseWordsRecords(MakeWordsRecord({"relative", "w", 0, {0}})), IsEmpty());
    const auto months =
        ParseMonthRecords(MakeMonthRecord({"/d", 2008, 11}) + MakeMonthRecord({"/d", 2008, 13}));
    EXPECT_THAT(months, ElementsAre(MonthToCome{"/d", 2008, 11}));
}

TEST(ArrivalRecords, AreTheseBytes) {
    using std::string_literals::operator""s;
    EXPECT_EQ(MakeWordsRecord({"/d/a.jpg", "words", 12, {34}}),
              "16c3da27 0000000021\n12 34\0/d/a.jpg\0words\0"s);
    EXPECT_EQ(MakeMonthRecord({"/d", 2008, 11}), "a5319acf 0000000011\n2008 11\0/d\0"s);
}

TEST_F(ImportArrivalsTest, NextImportGivesTheWordsAndTheIndex) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    const std::string bare = PutInDay("bare.jpg", photo), written = PutInDay("written.jpg", photo);
    const auto status = files::GetStatus(bare);
    PhotoFile(written).SetComment("100TEST");
    {
        ArrivalJournal killed;
        ASSERT_TRUE(killed.Open(State().settings.TempFolder));
        killed.AddMonth({root, 2008, 11});
        killed.AddWords({bare, "100TEST", status->size, status->written});
        killed.AddWords({bare, "100TEST", status->size, status->written});  // and once more for a copy
        killed.AddWords({written, "100TEST", status->size, status->written});
        killed.AddWords({PathOf("never appeared.jpg"), "100TEST", 1, {}});
    }
    Add("note.txt", "[2009/01/02] a note");
    options.index = ImportOptions::Index::UpToDate;
    const ImportSummary summary = Import();
    EXPECT_EQ(CommentOf(bare), "100TEST");
    EXPECT_EQ(CommentOf(written), "100TEST") << "once";
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=bare.jpg"));
    EXPECT_TRUE(summary.isIndexed);
    EXPECT_EQ(ContentOf(At("Temp/import.words")), "");
    EXPECT_EQ(ContentOf(At("Temp/import.months")), "");
}

TEST_F(ImportArrivalsTest, InterruptedImportLeavesItsMonthsToTheNext) {
    for (int i = 0; i < 10; ++i) Add("f" + std::to_string(i) + ".mov", std::string(1u + i, 'x'));
    options.index = ImportOptions::Index::UpToDate;
    options.source = ImportOptions::Source::Goes;
    arrivals.onFile = [this](const ImportedFile&) { interrupt.RequestStop(); };
    for (int i = 10; i < 600; ++i) Add("f" + std::to_string(1000 + i) + ".mov", std::string(1u + i, 'x'));
    EXPECT_EQ(Import().end, ImportEnd::Interrupted);
    options.context = {};
    EXPECT_FALSE(HasIndex());
    files::RemoveFolderTree(card);
    arrivals.onFile = nullptr;
    EXPECT_EQ(Import().end, ImportEnd::NoSource);
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=f0.mov")) << "the card has gone, and the index is whole";
}

TEST_F(ImportArrivalsTest, IndexLearnsOfAFileThatStoodThereAlready) {
    Add("a.mov", "film");
    PutInDay("b.mov", "film");
    LoadDay();
    PutInDay("a.mov", "film");
    options.index = ImportOptions::Index::UpToDate;
    Import();
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Same));
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=a.mov"));
}

TEST_F(ImportArrivalsTest, WordsThatCannotBeWrittenNowStayInTheJournal) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    const std::string locked = PutInDay("locked.jpg", photo), other = PutInDay("other.jpg", photo);
    const std::string away = At("stick/2008/2008_11/2008_1113/away.jpg");
    const auto status = files::GetStatus(locked);
    const std::string film = PutInDay("film.mov", "takes no words");
    {
        ArrivalJournal killed;
        ASSERT_TRUE(killed.Open(State().settings.TempFolder));
        killed.AddWords({locked, "100TEST", status->size, status->written});
        killed.AddWords({other, "100TEST", status->size, status->written});
        killed.AddWords({film, "100TEST", 1, {}});
        killed.AddWords({away, "100TEST", status->size, status->written});
    }
    std::filesystem::permissions(locked, std::filesystem::perms::owner_read);
    options.addFolderName = true;
    Add("new.jpg", PhotoTaken("2008:11:13 11:00:00"));
    const ImportSummary first = Import();
    EXPECT_EQ(first.wordsPending, 2);
    EXPECT_EQ(first.failures, 0) << "all of this import is done";
    EXPECT_EQ(CommentOf(other), "100TEST");
    EXPECT_EQ(CommentOf(locked), "");
    EXPECT_EQ(ParseWordsRecords(ContentOf(At("Temp/import.words"))).size(), 2u);

    std::filesystem::permissions(locked, std::filesystem::perms::owner_all);
    Put("stick/2008/2008_11/2008_1113/away.jpg", photo);
    EXPECT_EQ(Import().wordsPending, 0);
    EXPECT_EQ(CommentOf(locked), "100TEST");
    EXPECT_EQ(CommentOf(away), "100TEST");
    EXPECT_EQ(ContentOf(At("Temp/import.words")), "");
}

TEST_F(ImportArrivalsTest, MonthsOfAFolderThatIsAwayStay) {
    PutInDay("a.mov", "film");
    const MonthToCome away{At("stick"), 2008, 11};
    {
        ArrivalJournal killed;
        ASSERT_TRUE(killed.Open(State().settings.TempFolder));
        killed.AddMonth(away);
        killed.AddMonth({root, 2008, 11});
    }
    for (const auto index : {ImportOptions::Index::UpToDate, ImportOptions::Index::LeftToUpdate}) {
        options.index = index;
        Add("b" + std::to_string(static_cast<int>(index)) + ".mov", "another film");
        EXPECT_TRUE(Import().isIndexed);
        EXPECT_THAT(IndexOf(), HasSubstr("FILE=a.mov"));
        EXPECT_THAT(ParseMonthRecords(ContentOf(At("Temp/import.months"))), ElementsAre(away));
    }
    MakeFolder("stick");
    Import();
    EXPECT_EQ(ContentOf(At("Temp/import.months")), "");
}

TEST_F(ImportArrivalsTest, MonthsWithAFolderThatCannotBeListedStay) {
    PutInDay("a.mov", "film");
    options.index = ImportOptions::Index::UpToDate;
    Add("b.jpg", PhotoTaken("2008:11:14 10:15:30"));
    {
        const test::ClosedFolder cannotBeListed(DayFolder());
        EXPECT_FALSE(Import().isIndexed);
        EXPECT_THAT(IndexOf(14), HasSubstr("FILE=b.jpg")) << "the other days are up to date";
        EXPECT_THAT(ParseMonthRecords(ContentOf(At("Temp/import.months"))),
                    ElementsAre(MonthToCome{root, 2008, 11}));
    }
    EXPECT_TRUE(Import().isIndexed);
    EXPECT_THAT(IndexOf(), HasSubstr("FILE=a.mov"));
    EXPECT_EQ(ContentOf(At("Temp/import.months")), "");
}

TEST_F(ImportArrivalsTest, TwoImportsDoNotShareIt) {
    ArrivalJournal first, second;
    ASSERT_TRUE(first.Open(State().settings.TempFolder));
    EXPECT_FALSE(second.Open(State().settings.TempFolder));
    second.AddMonth({root, 2008, 11});
    EXPECT_EQ(second.Recover(), 0);
    EXPECT_THAT(ParseMonthRecords(ContentOf(At("Temp/import.months"))), IsEmpty());
    EXPECT_FALSE(ArrivalJournal().Open(""));
}

}  // namespace
}  // namespace kalmora
