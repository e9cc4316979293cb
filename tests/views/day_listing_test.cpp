#include "views/load/day_listing.h"

#include <filesystem>

#include "platform/files.h"
#include "store/data_folder.h"
#include "store/shortcuts.h"
#include "views/load/scan_backgrounds.h"
#include "views/model/calendar_store.h"
#include "views/view_fixture.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DayListingTest : public ViewTest {
protected:
    std::vector<std::string> Scan() {
        std::vector<std::string> names;
        for (const DayEntry& entry : TakeListing(*calendar_, List()))
            names.push_back(entry.path.substr(entry.path.rfind('/') + 1));
        return names;
    }
    DayListing List() { return ListDayFolder(DayFolder(2008, 11, 13), View(), StopToken()); }
    std::string Add(const std::string& name, std::string_view content = "x") {
        return AddFile(DayFolder(2008, 11, 13), name, content);
    }
};

TEST_F(DayListingTest, ListingChangesNothing) {
    const std::string empty = Add("empty.txt", ""), back = Add("back.jpg"), song = Add("song.mp3");
    Add("a.jpg");
    const DayListing listing = List();
    EXPECT_TRUE(files::Exists(empty));
    EXPECT_THAT(calls_.Take(), IsEmpty()) << "no slide is added";
    EXPECT_THAT(calendar_->backgrounds.Music(), IsEmpty());
    EXPECT_EQ(calendar_->backgrounds.CurrentImage(), "");
    EXPECT_EQ(listing.entries.size(), 1u);
    EXPECT_THAT(listing.emptyTexts, ElementsAre(empty));
    EXPECT_THAT(listing.backgrounds, ElementsAre(back));
    EXPECT_THAT(listing.music, ElementsAre(song));
}

TEST_F(DayListingTest, TakesTextsImagesAndMoviesInOrder) {
    for (const char* name : {"b.jpg", "A.txt", "c.avi", "d.doc", "noextension", "$calendar.cidx"}) Add(name);
    EXPECT_THAT(Scan(), ElementsAre("A.txt", "b.jpg", "c.avi"));
}

TEST_F(DayListingTest, MissingFolderHasNothing) { EXPECT_THAT(Scan(), IsEmpty()); }

TEST_F(DayListingTest, SubFoldersAreWalkedWhereTheyStand) {
    Add("a.jpg");
    Add("z.jpg");
    AddFile(DayFolder(2008, 11, 13) + "/more/deep", "inner.jpg", "x");
    EXPECT_THAT(Scan(), ElementsAre("a.jpg", "inner.jpg", "z.jpg"));
}

TEST_F(DayListingTest, EmptyTextVanishesFromTheDisk) {
    const std::string empty = Add("empty.txt", "");
    const std::string full = Add("full.txt", "x");
    EXPECT_THAT(Scan(), ElementsAre("full.txt"));
    EXPECT_FALSE(files::Exists(empty));
    EXPECT_TRUE(files::Exists(full));
}

TEST_F(DayListingTest, EmptyFilesOfOtherKindsStay) {
    const std::string picture = Add("empty.jpg", ""), movie = Add("empty.avi", ""),
                      other = Add("empty.doc", "");
    EXPECT_THAT(Scan(), ElementsAre("empty.avi", "empty.jpg"));
    EXPECT_TRUE(files::Exists(picture));
    EXPECT_TRUE(files::Exists(movie));
    EXPECT_TRUE(files::Exists(other));
}

TEST_F(DayListingTest, BackPicturesGoToTheBackgroundSet) {
    const std::string back = Add("back_sea.jpg");
    Add("Back.jpg");
    Add("background.txt");
    EXPECT_THAT(Scan(), ElementsAre("Back.jpg", "background.txt"))
        << "upper case is an ordinary picture here";
    EXPECT_EQ(calendar_->backgrounds.CurrentImage(), back);
}

TEST_F(DayListingTest, ShortcutStandsForItsTarget) {
    const std::string target = AddFile(root_ + "/elsewhere", "far.jpg", "x");
    const std::string song = AddFile(root_ + "/elsewhere", "song.mp3", "x");
    const std::string document = AddFile(root_ + "/elsewhere", "paper.doc", "x");
    Add("e.doc");
    ASSERT_TRUE(CreateShortcut(DayFolder(2008, 11, 13) + "/a.lnk", target));
    ASSERT_TRUE(CreateShortcut(DayFolder(2008, 11, 13) + "/b.lnk", song));
    ASSERT_TRUE(CreateShortcut(DayFolder(2008, 11, 13) + "/c.lnk", document));
    Add("d.lnk", "no shortcut at all");
    EXPECT_THAT(Scan(), ElementsAre("far.jpg"));
    EXPECT_THAT(calendar_->backgrounds.Music(), ElementsAre(song));
}

TEST_F(DayListingTest, LoopOfLinksEnds) {
    Add("a.jpg");
    std::error_code error;
    std::filesystem::create_directory_symlink(DayFolder(2008, 11, 13), DayFolder(2008, 11, 13) + "/loop",
                                              error);
    ASSERT_FALSE(error);
    const auto names = Scan();
    EXPECT_LE(names.size(), 2u);
    EXPECT_GE(names.size(), 1u);
}

TEST_F(DayListingTest, NamesOfEveryAlphabetAreTaken) {
    const std::string raw = "raw\xE9\xFF.jpg";  // no valid UTF-8
    for (const std::string& name : {std::string("運動会.jpg"), std::string("party🎉é.jpg"), raw}) Add(name);
    EXPECT_THAT(Scan(), testing::UnorderedElementsAre("運動会.jpg", "party🎉é.jpg", raw));
}

TEST_F(DayListingTest, TwentyThousandFilesAreListed) {
    const std::string folder = DayFolder(2008, 11, 13);
    Add("00000.jpg");
    for (int i = 1; i < 20000; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "/%05d.jpg", i);
        std::filesystem::copy_file(folder + "/00000.jpg", folder + name);
    }
    EXPECT_EQ(Scan().size(), 20000u);
}

TEST_F(DayListingTest, StopEndsTheWalk) {
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) Add(name);
    StopSource stop;
    EXPECT_EQ(ListDayFolder(DayFolder(2008, 11, 13), View(), stop.Token()).entries.size(), 3u);
    stop.RequestStop();
    EXPECT_THAT(ListDayFolder(DayFolder(2008, 11, 13), View(), stop.Token()).entries, IsEmpty());
}

TEST_F(DayListingTest, WalkThatIsStoppedOnItsWayGivesWhatItHasReadSoFar) {
    const std::string first = Add("a.jpg");
    const std::string second = AddFile(DayFolder(2008, 11, 13) + "/b", "inner.jpg", "x");
    AddFile(DayFolder(2008, 11, 13) + "/b", "later.jpg", "x");
    Add("c.jpg");
    StopSource stop;
    DayListing listing;
    ForEachFile(DayFolder(2008, 11, 13), stop.Token(), [&](const std::string& path) {
        listing.Add(path);
        if (path == second) stop.RequestStop();
    });
    ASSERT_EQ(listing.entries.size(), 2u) << "the folder above does not go on either";
    EXPECT_EQ(listing.entries[0].path, first);
    EXPECT_EQ(listing.entries[1].path, second);
}

TEST_F(DayListingTest, WhatIsFoundIsToldToTheSlideShow) {
    const std::string picture = Add("a.jpg");
    Add("back.jpg");
    Add("song.mp3");
    Scan();
    EXPECT_THAT(slideShow_.slides.Take(), ElementsAre(picture));
}

class ScanBackgroundsTest : public ViewTest {
protected:
    void Scan(int month) { ScanBackgrounds(*calendar_, MainRoot(), 2008, month, StopToken()); }
    std::string MonthFolder() const { return root_ + "/files/2008/200811"; }
    std::string YearFolder() const { return root_ + "/files/2008"; }
};

TEST_F(ScanBackgroundsTest, YearsMusicAlsoServesItsMonths) {
    const std::string song = AddFile(MonthFolder(), "a.mp3", "x");
    const std::string yearSong = AddFile(YearFolder(), "b.wav", "x");
    Scan(11);
    EXPECT_THAT(calendar_->backgrounds.Music(), ElementsAre(song, yearSong));
    EXPECT_EQ(calendar_->backgrounds.CurrentMusic(), song);
}

TEST_F(ScanBackgroundsTest, WithoutAMonthOnlyTheYearsFolderCounts) {
    AddFile(MonthFolder(), "a.mp3", "x");
    const std::string back = AddFile(YearFolder(), "back1.png", "x");
    Scan(0);
    EXPECT_THAT(calendar_->backgrounds.Music(), IsEmpty());
    EXPECT_EQ(calendar_->backgrounds.CurrentImage(), back);
}

TEST_F(ScanBackgroundsTest, PlaylistGivesItsStandingFiles) {
    const std::string song = AddFile(root_ + "/music", "one.mp3", "x");
    const std::string beside = AddFile(MonthFolder(), "two.ogg", "x");
    AddFile(MonthFolder(), "list.m3u",
            "#EXTM3U\r\n\r\n " + song + "\n" + song + "\r\ntwo.ogg\n/nowhere/three.mp3\n\n");
    Scan(11);
    EXPECT_THAT(calendar_->backgrounds.Music(), ElementsAre(song, beside))
        << "a line that begins with a blank is skipped";
}

TEST_F(ScanBackgroundsTest, PlaylistOfGarbageGivesNothing) {
    AddFile(MonthFolder(), "list.m3u", std::string(100000, '\x81') + std::string(5, '\0'));
    Scan(11);
    EXPECT_THAT(calendar_->backgrounds.Music(), IsEmpty());
    EXPECT_TRUE(calendar_->backgrounds.IsValid());
}

TEST(BackgroundSet, MusicStepsWrapAround) {
    BackgroundSet set;
    set.StepMusic(+1);
    EXPECT_EQ(set.CurrentMusic(), "");
    for (const char* path : {"/a", "/b", "/c"}) set.AddMusic(path, true);
    EXPECT_EQ(set.CurrentMusic(), "/a");
    set.StepMusic(-1);
    EXPECT_EQ(set.CurrentMusic(), "/c");
    set.StepMusic(+1);
    EXPECT_EQ(set.CurrentMusic(), "/a");
}

TEST(BackgroundSet, OnlyPieceStaysAfterFiveEqualDraws) {
    BackgroundSet set;
    set.AddMusic("/only", true);
    set.PickOtherMusic();
    EXPECT_EQ(set.CurrentMusic(), "/only");
}

TEST(BackgroundSet, ClearedSetIsNotValid) {
    BackgroundSet set;
    set.AddImage("/back.jpg");
    EXPECT_TRUE(set.IsValid());
    set.Clear();
    EXPECT_FALSE(set.IsValid());
    EXPECT_EQ(set.CurrentImage(), "");
}

}  // namespace
}  // namespace kalmora
