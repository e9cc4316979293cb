// A whole folder comes into the calendar.
#include "import/import.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "import/import_fixture.h"
#include "platform/transfer.h"
#include "support/machine.h"
#include "support/permissions.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

using ImportFolderTest = ImportTest;
using ImportDateTest = ImportTest;
using ImportMoveTest = ImportTest;

// ---- days

TEST_F(ImportFolderTest, EachFileComesIntoTheFolderOfItsDay) {
    Add("100TEST/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("100TEST/B.JPG", PhotoTaken("2009:01:02 03:04:05"));
    Add("101TEST/note.txt", "[2008/11/14 09:00] a note");
    SetDate(Add("film.mov", "a film"), {2007, 5, 2, 1, 12, 0, 0, 0});
    const ImportSummary summary = Import();
    EXPECT_THAT(TreeOf(root), ElementsAre("2007/200705/2007_0501/film.mov", "2008/200811/2008_1113/A.JPG",
                                          "2008/200811/2008_1114/note.txt", "2009/200901/2009_0102/B.JPG"));
    EXPECT_EQ(ContentOf(PathOf("A.JPG")), PhotoTaken("2008:11:13 10:15:30"));
    EXPECT_EQ(summary.end, ImportEnd::Finished);
    EXPECT_EQ(summary.total, 4);
    EXPECT_EQ(summary.done, 4);
    EXPECT_EQ(summary.failures, 0);
    EXPECT_EQ(summary.counts.at(ImportResult::Copied), 4);
    EXPECT_EQ(summary.months.size(), 4u - 1u);
    EXPECT_EQ(State().run.ImportTotal, 4);
    EXPECT_EQ(State().run.ImportDone, 4);
    EXPECT_EQ(TreeOf(card).size(), 4u) << "the sources stay";
    for (const std::string& left : TreeOf(State().settings.TempFolder))
        EXPECT_EQ(ContentOf(files::Join(State().settings.TempFolder, left)), "") << left;
}

TEST_F(ImportFolderTest, CopyKeepsTheTimesOfTheFile) {
    const std::string source = Add("a.mov", "film");
    const auto before = files::GetStatus(source);
    Import();
    EXPECT_EQ(files::GetStatus(PathOf("a.mov"))->written, before->written);
}

TEST_F(ImportDateTest, FileWithoutADateHasThatOfItsFile) {
    SetDate(Add("a.jpg", "no exif"), {2006, 2, 1, 27, 12, 0, 0, 0});
    SetDate(Add("b.jpg", PhotoTaken("0000:00:00 00:00:00")), {2006, 2, 2, 28, 12, 0, 0, 0});
    SetDate(Add("c.jpg", PhotoTaken("2008:02:30 12:00:00")), {2006, 3, 3, 1, 12, 0, 0, 0});
    SetDate(Add("d.mov", PhotoTaken("2008:11:13 10:15:30")), {2006, 3, 4, 2, 12, 0, 0, 0});
    Import();
    EXPECT_THAT(TreeOf(root), ElementsAre("2006/200602/2006_0227/a.jpg", "2006/200602/2006_0228/b.jpg",
                                          "2006/200603/2006_0301/c.jpg", "2006/200603/2006_0302/d.mov"))
        << "a day that no calendar has counts as none, and a film has no Exif";
}

TEST_F(ImportDateTest, SmallHoursBelongToTheDayBefore) {
    Add("new-year.jpg", PhotoTaken("2009:01:01 01:59:59"));
    Add("eve.jpg", PhotoTaken("2008:12:31 01:30:00"));
    Add("two.jpg", PhotoTaken("2009:01:01 02:00:00"));
    Add("leap.jpg", PhotoTaken("2008:03:01 00:30:00"));
    options.dayEnd = 26;
    Import();
    EXPECT_THAT(TreeOf(root),
                ElementsAre("2008/200802/2008_0229/leap.jpg", "2008/200812/2008_1230/eve.jpg",
                            "2008/200812/2008_1231/new-year.jpg", "2009/200901/2009_0101/two.jpg"));
}

TEST_F(ImportDateTest, NightOfTheClockChangeHasItsDay) {
    // 2:30 comes twice in one night of autumn, and never in one of spring.
    for (const auto& [name, date] :
         std::vector<std::pair<const char*, const char*>>{{"a.jpg", "2008:10:26 02:30:00"},
                                                          {"b.jpg", "2008:03:30 02:30:00"},
                                                          {"c.jpg", "2008:11:02 01:30:00"}})
        Add(name, PhotoTaken(date));
    Import();
    EXPECT_THAT(TreeOf(root), ElementsAre("2008/200803/2008_0330/b.jpg", "2008/200810/2008_1026/a.jpg",
                                          "2008/200811/2008_1102/c.jpg"));
}

// ---- names and the same file

TEST_F(ImportFolderTest, SecondImportSkipsAndCounts) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("b.mov", "film");
    Import();
    const auto before = TreeOf(root);
    const ImportSummary again = Import();
    EXPECT_EQ(TreeOf(root), before);
    EXPECT_EQ(again.done, 2);
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Same, ImportResult::Same));
    EXPECT_EQ(again.failures, 0);
}

TEST_F(ImportFolderTest, SecondAndThirdFileOfTheSameNameGetNumbersInBrackets) {
    Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("101/A.JPG", PhotoTaken("2008:11:13 10:15:31") + "2");
    Add("102/A.JPG", PhotoTaken("2008:11:13 10:15:32") + "33");
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "A[1].jpg", "A[2].jpg"));
    EXPECT_EQ(ContentOf(PathOf("A[2].jpg")), PhotoTaken("2008:11:13 10:15:32") + "33");
}

TEST_F(ImportFolderTest, SameNameAndSecondIsOneFile) {
    Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("101/A.JPG", PhotoTaken("2008:11:13 10:15:30") + "another size");
    Add("102/b.mov", "12");
    Add("103/b.mov", "ab");
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "b.mov"));
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Copied, ImportResult::Differs, ImportResult::Copied,
                                       ImportResult::Differs))
        << "and what differs is reported";
}

TEST_F(ImportFolderTest, NastyCardComesInWhole) {
    const std::vector<std::string> names{"no extension",
                                         "日本語 表示.jpg",
                                         "raw\xE9\xFFname.jpg",
                                         "sub [1]/a$b.jpg",
                                         "sub $(x)/a&b.jpg",
                                         "sub 'q'/quote\"s.jpg",
                                         "trailing blank /x .txt",
                                         "back\\slash.jpg",
                                         "new\nline.jpg",
                                         "empty.jpg",
                                         ".hidden.jpg",
                                         "a.b.c.d.jpg",
                                         std::string(251, 'n') + ".jpg"};
    std::size_t size = 0;
    for (const std::string& name : names) Add(name, name == "empty.jpg" ? "" : std::string(++size, 'x'));
    const std::string locked = Add("locked.jpg", std::string(++size, 'x'));
    test::MakeReadOnly(locked);
    const ImportSummary summary = Import();
    EXPECT_EQ(summary.failures, 0);
    EXPECT_EQ(summary.counts.at(ImportResult::Copied), static_cast<int>(names.size()) + 1);
    std::vector<std::string> expected{"locked.jpg"};
    for (const std::string& name : names) expected.push_back(name.substr(name.rfind('/') + 1));
    EXPECT_THAT(NamesInDay(), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(Import().counts.at(ImportResult::Same), static_cast<int>(names.size()) + 1);
}

TEST_F(ImportFolderTest, PipesAndLinksToNothingArePassedOver) {
    Add("a.jpg");
    ASSERT_TRUE(test::MakePipe(OnCard("pipe.jpg")));
    std::filesystem::create_symlink("nowhere", OnCard("dangling.jpg"));
    std::filesystem::create_symlink("a.jpg", OnCard("linked.jpg"));
    std::filesystem::create_directory_symlink(card, OnCard("round"));
    const ImportSummary summary = Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("a.jpg", "linked.jpg"));
    EXPECT_FALSE(files::IsLink(PathOf("linked.jpg"))) << "a copy of what it points at";
    EXPECT_EQ(summary.counts.at(ImportResult::PassedOver), 1);
    EXPECT_EQ(summary.counts.at(ImportResult::Gone), 1);
    EXPECT_EQ(summary.done, 4);
}

TEST_F(ImportFolderTest, IndexOfAnotherFolderStaysThere) {
    Add("$calendar.cidx", "# Calendar Index [0.99]\n");
    Add("a.jpg");
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("a.jpg"));
}

TEST_F(ImportFolderTest, DataFolderItselfIsRefusedAndSoIsWhatHoldsIt) {
    PutInDay("wrong.jpg", PhotoTaken("2008:11:14 10:15:30"));
    options.source = ImportOptions::Source::Goes;
    for (const std::string& source : {root, home, DayFolder(), PathOf("wrong.jpg")}) {
        options.sources = {card, source};
        const ImportSummary summary = Import();
        EXPECT_EQ(summary.end, ImportEnd::MeetsTarget) << source;
        EXPECT_EQ(summary.refused, source);
        EXPECT_THAT(TreeOf(root), ElementsAre("2008/200811/2008_1113/wrong.jpg"));
    }
}

TEST_F(ImportFolderTest, EmptyNameIsNotTheCurrentFolder) {
    for (const auto& sources : std::vector<std::vector<std::string>>{{}, {""}, {card, ""}, {"DCIM"}}) {
        options.sources = sources;
        EXPECT_EQ(Import().end, ImportEnd::NoSource);
    }
}

TEST_F(ImportFolderTest, SeveralSourcesComeInAndEachFolderOnce) {
    Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    const std::string single = Put("elsewhere/b.mov", "film");
    SetDate(single, {2008, 11, 4, 13, 10, 15, 0, 0});
    options.sources = {single, card, OnCard("100") + "/"};
    const ImportSummary summary = Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "b.mov"));
    EXPECT_THAT(Results(),
                ElementsAre(ImportResult::Copied, ImportResult::Copied, ImportResult::VisitedOnce));
    EXPECT_EQ(summary.total, 2);
}

TEST_F(ImportFolderTest, LinkedFoldersAreFollowedOnceAndWhatLiesThereStays) {
    Add("100/A.JPG", "a");
    const std::string linked = Put("elsewhere/b.mov", "film");
    SetDate(linked, {2008, 11, 4, 13, 10, 15, 0, 0});
    std::filesystem::create_directory_symlink(At("elsewhere"), OnCard("0 link"));
    std::filesystem::create_directory_symlink(At("elsewhere"), OnCard("second link"));
    std::filesystem::create_directory_symlink(OnCard("100"), OnCard("1 to 100"));
    std::filesystem::create_directory_symlink(card, At("elsewhere/round"));
    options.source = ImportOptions::Source::Goes;
    const ImportSummary summary = Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "b.mov"));
    EXPECT_TRUE(files::Exists(linked)) << "it belongs elsewhere";
    EXPECT_EQ(summary.counts.at(ImportResult::Followed), 1);
    EXPECT_EQ(summary.counts.at(ImportResult::VisitedOnce), 3) << "the way round is one of them";
    EXPECT_EQ(summary.failures, 0);
    EXPECT_EQ(summary.done, 2);
}

TEST_F(ImportFolderTest, LinkToTheDataFolderIsRefusedBeforeAnythingIsTouched) {
    Add("a.mov");
    PutInDay("b.mov", "film");
    std::filesystem::create_directory_symlink(DayFolder(), OnCard("link"));
    EXPECT_EQ(Import().end, ImportEnd::MeetsTarget);
    EXPECT_THAT(NamesInDay(), ElementsAre("b.mov"));
    files::RemoveFile(OnCard("link"));
    std::filesystem::create_directory_symlink(home, OnCard("link"));
    EXPECT_EQ(Import().end, ImportEnd::MeetsTarget) << "it holds the data folder";
}

TEST_F(ImportFolderTest, WhatMachinesPutOnACardStaysThere) {
    Add("a.mov", "film");
    for (const char* name : {".DS_Store", "._a.mov", "Desktop.INI", ".Trashes/501/b.mov", ".Spotlight-V100/x",
                             "@eaDir/a.mov/thumb.jpg", "$RECYCLE.BIN/c.mov", ".Trash-1000/files/d.mov",
                             "System Volume Information/e"})
        Add(name, name);
    options.source = ImportOptions::Source::Goes;
    const ImportSummary summary = Import();
    EXPECT_THAT(TreeOf(root), ElementsAre("2008/200811/2008_1113/a.mov"));
    EXPECT_EQ(TreeOf(card).size(), 9u);
    EXPECT_EQ(summary.failures, 0);
    EXPECT_EQ(summary.counts.at(ImportResult::PassedOver), 9) << "each file and each folder is reported";
}

TEST_F(ImportFolderTest, NumberedFilesGoOnBehindThoseOfTheDay) {
    PutInDay("0001.jpg", "one");
    PutInDay("0002.jpg", "two");
    Add("A.JPG", "aaaa");
    Add("B.JPG", "bbbbb");
    Add("c.png", "cccccc");
    options.naming = Naming::Number;
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("0001.jpg", "0002.jpg", "0003.jpg", "0004.jpg", "0005.png"));
    EXPECT_EQ(ContentOf(PathOf("0004.jpg")), "bbbbb");
}

TEST_F(ImportFolderTest, NumbersReplaceNothingAndASecondTimeAddNothing) {
    for (const ImportOptions::Source source : {ImportOptions::Source::Stays, ImportOptions::Source::Goes}) {
        files::RemoveFolderTree(DayFolder());
        Add("a.png", "first");
        Add("b.png", "second");
        Add("C.JPG", PhotoTaken("2008:11:13 10:15:30"));
        Add("D.JPG", PhotoTaken("2008:11:13 10:15:30") + "of a series");
        options.naming = Naming::Number;
        options.source = source;
        EXPECT_EQ(Import().failures, 0);
        EXPECT_THAT(NamesInDay(), ElementsAre("0001.jpg", "0001.png", "0002.jpg", "0002.png"));
        EXPECT_EQ(ContentOf(PathOf("0001.png")), "first");
        EXPECT_EQ(ContentOf(PathOf("0002.png")), "second");
    }
    Add("a.png", "first");
    Add("D.JPG", PhotoTaken("2008:11:13 10:15:30") + "of a series");
    EXPECT_THAT((Import(), Results()), ElementsAre(ImportResult::Same, ImportResult::Same));
    EXPECT_EQ(NamesInDay().size(), 4u);
    EXPECT_EQ(TreeOf(card).size(), 2u) << "what is there is not taken away";
}

// ---- what is not the same after all

TEST_F(ImportFolderTest, FileThatCountsAsTheSameAndDiffersIsToldAndLeft) {
    const std::string photo = PhotoTaken("2008:11:13 10:15:30");
    PutInDay("A.JPG", photo);
    PutInDay("b.mov", "12");
    PutInDay("c.mov", "12");
    Add("A.JPG", photo + "another");
    Add("b.mov", "ab");
    Add("c.mov", "12");
    options.source = ImportOptions::Source::Goes;
    const ImportSummary summary = Import();
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Differs, ImportResult::Differs, ImportResult::Same));
    EXPECT_EQ(reported[0].existing, PathOf("A.JPG"));
    EXPECT_EQ(TreeOf(card).size(), 3u);
    EXPECT_EQ(NamesInDay().size(), 3u);
    EXPECT_EQ(summary.differing, 2);
    EXPECT_EQ(summary.passedOver, 1);
    EXPECT_EQ(summary.failures, 0);
    options.sameBy = SameBy::Content;
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "A[1].jpg", "b.mov", "b[1].mov", "c.mov"));
    EXPECT_THAT(TreeOf(card), ElementsAre("c.mov"));
}

TEST_F(ImportFolderTest, SumTellsFilesAndBytes) {
    Add("a.mov", "12345");
    Add("b.mov", "12");
    PutInDay("b.mov", "12");
    std::filesystem::create_symlink("nowhere", OnCard("c.mov"));
    const ImportSummary summary = Import();
    EXPECT_EQ(summary.taken, 1);
    EXPECT_EQ(summary.bytes, 5u);
    EXPECT_EQ(summary.passedOver, 1);
    EXPECT_EQ(summary.failures, 1);
}

TEST_F(ImportFolderTest, RehearsalTellsTheSameAndTouchesNothing) {
    Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("100/A.xmp", "raw converter");
    Add("101/A.JPG", PhotoTaken("2008:11:13 10:15:31") + "2");
    Add("102/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    Add("081114-101530.jpg", test::JpegOf(""));
    Add("Thumbs.db", "cache");
    std::filesystem::create_directories(OnCard("empty"));
    options.source = ImportOptions::Source::Goes;
    options.addFolderName = true;
    options.run = ImportOptions::Run::Rehearsal;
    const auto before = TreeOf(home);
    Import();
    EXPECT_EQ(TreeOf(home), before);
    EXPECT_EQ(ContentOf(OnCard("081114-101530.jpg")), test::JpegOf(""));
    std::vector<std::string> targets;
    for (const ImportedFile& file : reported) targets.push_back(file.target);
    const auto results = Results();
    options.run = ImportOptions::Run::ForReal;
    Import();
    EXPECT_EQ(Results(), results);
    for (std::size_t i = 0; i < reported.size(); ++i) EXPECT_EQ(reported[i].target, targets[i]);
}

// ---- what goes with a photo

TEST_F(ImportFolderTest, CompanionsComeIntoTheDayOfTheirPhoto) {
    Add("IMG_1.JPG", PhotoTaken("2008:11:14 10:15:30"));
    for (const char* name :
         {"IMG_1.CR2", "img_1.xmp", "IMG_1.JPG.xmp", "IMG_1.AAE", "IMG_1.MOV", "IMG_1.wav"})
        Add(name, name);
    Add("IMG_2.HEIC", "no table lists it");
    Add("IMG_2.MOV", "with it");
    SetDate(OnCard("IMG_2.HEIC"), {2008, 11, 5, 14, 10, 15, 0, 0});
    Add("MVI_3.AVI", "film");
    Add("MVI_3.THM", "its picture");
    SetDate(OnCard("MVI_3.AVI"), {2008, 11, 5, 14, 10, 15, 0, 0});
    const ImportSummary summary = Import();
    EXPECT_THAT(NamesInDay(14),
                UnorderedElementsAre("IMG_1.JPG", "IMG_1.CR2", "img_1.xmp", "IMG_1.JPG.xmp", "IMG_1.AAE",
                                     "IMG_1.MOV", "IMG_2.HEIC", "IMG_2.MOV", "MVI_3.AVI", "MVI_3.THM"));
    EXPECT_THAT(NamesInDay(13), ElementsAre("IMG_1.wav")) << "a file of its own";
    EXPECT_EQ(summary.done, 11);
    EXPECT_EQ(summary.taken, 11);
}

TEST_F(ImportFolderTest, PhotoAndCompanionsKeepACommonName) {
    PutInDay("A.JPG", "another photo of that name");
    PutInDay("B.CR2", "another raw picture");
    for (const char* name : {"A.JPG", "B.JPG"}) Add(name, PhotoTaken("2008:11:13 10:15:30") + name);
    for (const char* name : {"A.CR2", "A.JPG.xmp", "B.CR2"}) Add(name, name);
    for (int i = 0; i < 2; ++i) {
        Import();
        EXPECT_THAT(NamesInDay(), UnorderedElementsAre("A.JPG", "A[1].jpg", "A[1].cr2", "A[1].jpg.xmp",
                                                       "B.CR2", "B[1].jpg", "B[1].cr2"))
            << "also a second time";
    }
    options.naming = Naming::Number;
    for (int i = 0; i < 2; ++i) {
        Import();
        EXPECT_EQ(NamesInDay().size(), 7u + 5u);
        EXPECT_EQ(ContentOf(PathOf("0001.cr2")), "A.CR2");
        EXPECT_EQ(ContentOf(PathOf("0001.jpg.xmp")), "A.JPG.xmp");
        EXPECT_EQ(ContentOf(PathOf("0002.cr2")), "B.CR2");
    }
}

TEST_F(ImportMoveTest, CompanionsGoBeforeTheirPhotoWhichTellsTheirDay) {
    Add("A.JPG", PhotoTaken("2008:11:14 10:15:30"));
    Add("A.xmp", "x");
    options.source = ImportOptions::Source::Goes;
    Import();
    ASSERT_EQ(reported.size(), 2u);
    EXPECT_EQ(reported[0].source, OnCard("A.xmp"));
    EXPECT_THAT(NamesInDay(14), ElementsAre("A.JPG", "A.xmp"));
    EXPECT_FALSE(files::Exists(card));
}

// ---- what is done with the source

TEST_F(ImportMoveTest, SourcesAndEmptiedFoldersGo) {
    const std::string source = Add("100/A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    const auto before = files::GetStatus(source);
    Add("100/deep/b.mov", "film");
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("A.JPG", "b.mov"));
    EXPECT_EQ(files::GetStatus(PathOf("A.JPG"))->identity, before->identity) << "the same file, not a copy";
    EXPECT_FALSE(files::Exists(card)) << "the import folder itself is emptied, and goes";
    EXPECT_TRUE(files::Exists(At("card")));
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Moved, ImportResult::Moved));
}

TEST_F(ImportMoveTest, SkippedFileStays) {
    Add("A.JPG", "same");
    PutInDay("A.JPG", "same");
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_THAT(TreeOf(card), ElementsAre("A.JPG"));
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Same));
}

TEST_F(ImportMoveTest, SecondNameOfTheFileGoes) {
    const std::string source = Add("a.jpg", "content"), existing = PutInDay("a.jpg");
    files::RemoveFile(existing);
    std::filesystem::create_hard_link(source, existing);
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_FALSE(files::Exists(source));
    EXPECT_EQ(ContentOf(existing), "content");
}

TEST_F(ImportMoveTest, LinkGoesAndItsFileIsCopied) {
    const std::string target = Put("elsewhere/a.jpg", "content");
    SetDate(target, {2008, 11, 4, 13, 10, 15, 0, 0});
    std::filesystem::create_symlink("../../elsewhere/a.jpg", OnCard("a.jpg"));
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_EQ(ContentOf(PathOf("a.jpg")), "content");
    EXPECT_FALSE(files::IsLink(PathOf("a.jpg")));
    EXPECT_EQ(ContentOf(target), "content") << "what it pointed at stays";
    EXPECT_FALSE(files::Exists(card));
}

TEST_F(ImportMoveTest, ProtectedFileStaysAndItsCopyIsWritable) {
    const std::string source = Add("a.jpg", "content");
    test::MakeReadOnly(source);
    options.source = ImportOptions::Source::Goes;
    Import();
    EXPECT_FALSE(files::GetStatus(PathOf("a.jpg"))->isReadOnly);
    EXPECT_TRUE(files::Exists(source)) << "as when it goes from one volume to another";
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_TRUE(reported[0].sourceStays);
}

TEST_F(ImportFolderTest, EmptyFoldersGoAlsoWhenFilesAreCopied) {
    Add("100/a.jpg");
    std::filesystem::create_directories(OnCard("101/empty/deeper"));
    Import();
    EXPECT_THAT(TreeOf(card), ElementsAre("100/a.jpg"));
    std::filesystem::remove_all(OnCard("100"));
    Import();
    EXPECT_FALSE(files::Exists(card));
}

// From one volume to another.
class ImportAcrossVolumesTest : public ImportTest {
protected:
    ImportAcrossVolumesTest() {
        const auto here = files::GetStatus(root), memory = files::GetStatus("/dev/shm");
        if (here && memory && here->volume != memory->volume && mkdtemp(other_.data())) isThere_ = true;
        options.sources = {other_};
        options.source = ImportOptions::Source::Goes;
    }
    ~ImportAcrossVolumesTest() override {
        if (isThere_) files::RemoveFolderTree(other_);
    }
    std::string AddThere(const std::string& name, const std::string& content) const {
        const std::filesystem::path path = other_ + "/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << content;
        SetDate(path, {2008, 11, 4, 13, 10, 15, 0, 0});
        return path;
    }

    std::string other_ = "/dev/shm/kalmora-import-XXXXXX";
    bool isThere_ = false;
};

TEST_F(ImportAcrossVolumesTest, VerifiedCopyTakesTheSourcesPlace) {
    if (!isThere_) GTEST_SKIP() << "this machine has one volume only";
    const std::string content(300'001, 'x');
    AddThere("100/a.jpg", content);
    AddThere("100/b.jpg", "b");
    AddThere("101/a.jpg", "another");
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("a.jpg", "a[1].jpg", "b.jpg"));
    EXPECT_EQ(ContentOf(PathOf("a.jpg")), content);
    EXPECT_FALSE(files::Exists(other_)) << "it is empty";
    EXPECT_THAT(Results(), testing::Each(ImportResult::Moved));
    EXPECT_EQ(files::ReadWholeFile(At("Temp/import.journal")), "");
}

TEST_F(ImportAcrossVolumesTest, ProtectedSourceIsCopiedAndStays) {
    if (!isThere_) GTEST_SKIP() << "this machine has one volume only";
    const std::string source = AddThere("a.jpg", "content");
    test::MakeReadOnly(source);
    Import();
    EXPECT_EQ(ContentOf(PathOf("a.jpg")), "content");
    EXPECT_TRUE(files::Exists(source));
    ASSERT_EQ(reported.size(), 1u);
    EXPECT_EQ(reported[0].result, ImportResult::Copied);
    EXPECT_TRUE(reported[0].sourceStays);
}

// ---- progress and ends

TEST_F(ImportFolderTest, ProgressTellsTheCountAndEachFile) {
    for (int i = 0; i < 200; ++i) Add("f" + std::to_string(1000 + i) + ".jpg", std::string(1u, 'x'));
    const ProgressTexts progress(probe);
    Import();
    ASSERT_EQ(progress.texts.size(), 202u);
    EXPECT_EQ(progress.texts[0], "Import Target = 100 files");
    EXPECT_EQ(progress.texts[1], "Import Target = 200 files");
    EXPECT_EQ(progress.ratios[1], 0);
    EXPECT_EQ(progress.texts[2], "1/200 = 0.50% (" + card + ")");
    EXPECT_EQ(progress.texts[201], "200/200 = 100.00% (" + card + ")");
    EXPECT_EQ(progress.ratios[201], 1);
}

TEST_F(ImportFolderTest, TrailingSeparatorIsCut) {
    Add("A.JPG", PhotoTaken("2008:11:13 10:15:30"));
    options.sources = {card + "/"};
    options.addFolderName = true;
    Import();
    EXPECT_EQ(CommentOf(PathOf("A.JPG")), "DCIM");
}

TEST_F(ImportFolderTest, AbsentFolderSaysSo) {
    options.sources = {OnCard("no such folder")};
    const ImportSummary summary = Import();
    EXPECT_EQ(summary.end, ImportEnd::NoSource);
    EXPECT_EQ(summary.done, 0);
    EXPECT_EQ(State().run.ImportDone, 0);
}

TEST_F(ImportFolderTest, InterruptEndsItAtTheNextFileAndTheNextImportGoesOn) {
    for (int i = 0; i < 10; ++i) Add("f" + std::to_string(i) + ".jpg", std::string(1u + i, 'x'));
    options.source = ImportOptions::Source::Goes;
    interrupt.RequestStop();
    EXPECT_EQ(Import().end, ImportEnd::Interrupted);
    EXPECT_EQ(TreeOf(card).size(), 10u);
    options.context = {};
    EXPECT_EQ(Import().end, ImportEnd::Finished);
    EXPECT_EQ(NamesInDay().size(), 10u);
}

TEST_F(ImportFolderTest, CardThatIsPulledGivesWhatWasCopiedAndTellsTheRest) {
    constexpr int kFiles = 300;
    for (int i = 0; i < kFiles; ++i) Add("f" + std::to_string(1000 + i) + ".jpg", std::string(1u + i, 'x'));
    arrivals.onFile = [this](const ImportedFile&) {
        if (reported.empty()) std::filesystem::remove_all(card);
    };
    const ImportSummary summary = Import();
    EXPECT_EQ(summary.done, kFiles);
    const int copied = summary.counts.at(ImportResult::Copied);
    EXPECT_GT(copied, 0);
    EXPECT_LT(copied, kFiles);
    EXPECT_EQ(summary.counts.at(ImportResult::Gone), kFiles - copied);
    EXPECT_EQ(NamesInDay().size(), static_cast<std::size_t>(copied));
    EXPECT_EQ(ContentOf(PathOf("f1000.jpg")), "x");
}

TEST_F(ImportFolderTest, WhatAKilledImportLeftIsSweptFromTheDay) {
    const std::string left = PutInDay(".kalmora-2147480000-7.cidx", "half");
    Touch(left, 0);
    Add("a.jpg");
    Import();
    EXPECT_THAT(NamesInDay(), ElementsAre("a.jpg"));
}

TEST_F(ImportFolderTest, UnwritableFolderIsDenied) {
    Put("files/2008", "a file in the way of the year");
    Add("a.jpg", "content");
    const ImportSummary summary = Import();
    EXPECT_THAT(Results(), ElementsAre(ImportResult::Denied));
    EXPECT_EQ(summary.failures, 1);
    EXPECT_TRUE(files::Exists(OnCard("a.jpg")));
}

// ---- one file

TEST_F(ImportTest, CopyToDayAndMoveToDayGiveTheNewPath) {
    const std::string source = Add("A.JPG", "content");
    EXPECT_EQ(CopyToDay(source, root, 2008, 11, 13), PathOf("A.JPG"));
    EXPECT_TRUE(files::Exists(source));
    EXPECT_FALSE(CopyToDay(source, root, 2008, 11, 13)) << "it is there";
    EXPECT_FALSE(MoveToDay(source, root, 2008, 11, 13));
    EXPECT_TRUE(files::Exists(source)) << "and so it stays";
    EXPECT_EQ(MoveToDay(source, root, 2008, 11, 14), PathOf("A.JPG", 14));
    EXPECT_FALSE(files::Exists(source));
    EXPECT_FALSE(CopyToDay(source, root, 2008, 11, 15)) << "it has gone";
    EXPECT_FALSE(CopyToDay(card, root, 2008, 11, 15)) << "a folder";
}

// Keeps how far a file was, and ends it after so many reports.
class TransferProbe final : public TransferListener {
public:
    explicit TransferProbe(std::size_t most) : most_(most) {}
    bool OnTransfer(double fraction) override {
        fractions.push_back(fraction);
        return fractions.size() < most_;
    }
    std::vector<double> fractions;

private:
    const std::size_t most_;
};

constexpr std::size_t kLarge = 40u << 20;

TEST_F(ImportTest, LargeFileIsReportedOnItsWay) {
    const std::string source = Add("film.mov", std::string(kLarge, 'x'));
    TransferProbe transfer(100);
    EXPECT_TRUE(CopyToDay(source, root, 2008, 11, 13, &transfer));
    EXPECT_THAT(transfer.fractions, ElementsAre(0.4, 0.8));
}

TEST_F(ImportTest, LargeFileThatIsEndedOnItsWayStaysWholeAndLeavesNoHalf) {
    const std::string source = Add("film.mov", std::string(kLarge, 'x'));
    TransferProbe transfer(1);
    EXPECT_FALSE(CopyToDay(source, root, 2008, 11, 13, &transfer));
    EXPECT_THAT(NamesInDay(), testing::IsEmpty());
    EXPECT_EQ(files::GetStatus(source)->size, kLarge);
    EXPECT_EQ(transfer.fractions.size(), 1u);
}

TEST_F(ImportFolderTest, StopEndsALargeFileOnItsWay) {
    Add("film.mov", std::string(kLarge, 'x'));
    StopSource stop;
    probe.onProgress = [&](double ratio, const std::string&) {
        if (ratio > 0 && ratio < 1) stop.RequestStop();
    };
    options.context = {stop.Token(), &probe};
    EXPECT_EQ(Import().end, ImportEnd::Interrupted);
    EXPECT_TRUE(files::Exists(OnCard("film.mov")));
    for (const std::string& name : TreeOf(root)) EXPECT_THAT(name, testing::EndsWith("/"));
}

TEST_F(ImportTest, BackgroundFileIsCopiedWithItsHead) {
    const std::string source = Add("A.JPG", "picture");
    EXPECT_EQ(SetBackgroundFile(source, root, Level::Month, 2008, 11, 13),
              At("files/2008/200811/back_A.JPG"));
    EXPECT_EQ(SetBackgroundFile(source, root, Level::Day, 2008, 11, 13), PathOf("back_A.JPG"));
    EXPECT_EQ(SetBackgroundFile(Add("B.JPG", "b"), root, Level::Day, 2008, 11, 0),
              At("files/2008/200811/back_B.JPG"));
    EXPECT_FALSE(SetBackgroundFile(source, root, Level::Year, 2008, 11, 13));
    EXPECT_FALSE(SetBackgroundFile(source, root, Level::Day, 2008, 11, 13)) << "the same file";
    EXPECT_TRUE(files::Exists(source));
    EXPECT_EQ(SetBackgroundFile(Add("2/A.JPG", "another picture"), root, Level::Day, 2008, 11, 13),
              PathOf("back_A[1].jpg"));
    EXPECT_EQ(SetBackgroundFile(Add("back", "x"), root, Level::Day, 2008, 11, 13), PathOf("back_back"));
    EXPECT_EQ(SetBackgroundFile(Add("2/back", "another"), root, Level::Day, 2008, 11, 13),
              PathOf("back_back[1]"));
    EXPECT_FALSE(SetBackgroundFile(OnCard("gone.jpg"), root, Level::Day, 2008, 11, 13));
    EXPECT_THAT(NamesInDay(), ElementsAre("back_A.JPG", "back_A[1].jpg", "back_back", "back_back[1]"));
}

TEST_F(ImportTest, OptionsAreThoseOfTheSettings) {
    State().settings.ImportDirectory = "/media/CARD/DCIM";
    State().settings.RemoveImportFiles = true;
    State().settings.InsertOriginalPathToExif = true;
    State().settings.DayEndTimeForScrap = 27;
    State().run.ImportCommentOn = 1;
    State().run.ImportComment = "words";
    ImportOptions given = ImportOptionsOfSettings();
    EXPECT_THAT(given.sources, ElementsAre("/media/CARD/DCIM"));
    EXPECT_EQ(given.root, root);
    EXPECT_EQ(given.source, ImportOptions::Source::Goes);
    EXPECT_EQ(given.naming, Naming::Keep);
    EXPECT_TRUE(given.addFolderName && given.addComment);
    EXPECT_EQ(given.comment, "words");
    EXPECT_EQ(given.dayEnd, 27);
    State().settings.ImportAsShortcutFile = true;
    State().settings.RenameFileWhenMove = true;
    given = ImportOptionsOfSettings();
    EXPECT_EQ(given.source, ImportOptions::Source::GetsShortcut) << "shortcuts come first";
    EXPECT_EQ(given.naming, Naming::Number);
    State().run.ImportCommentOn = 0;
    State().run.ImportComment.clear();
}

}  // namespace
}  // namespace kalmora
