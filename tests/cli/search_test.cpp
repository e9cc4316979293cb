// kalmora search, as a script uses it.
#include <gmock/gmock.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <vector>

#include "program_fixture.h"
#include "text/text.h"

namespace kalmora {
namespace {

using test::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SearchVerbTest : public test::CommandLineTest {
protected:
    SearchVerbTest() {
        Note("2007", "05", "0501", "spring.txt", "a dog in spring");
        Note("2008", "11", "1113", "cat.txt", "A Cat");
        Note("2008", "11", "1114", "both.txt", "cat and dog");
        Note("2008", "12", "1224", "tree.txt", "さくらの花見 cat");
    }
    std::string DayPath(const std::string& year, const std::string& month, const std::string& day) const {
        return Path("data/" + year + "/" + year + month + "/" + year + "_" + day);
    }
    void Note(const std::string& year, const std::string& month, const std::string& day,
              const std::string& name, const std::string& content) const {
        const std::string folder = DayPath(year, month, day);
        ASSERT_EQ(std::system(("mkdir -p '" + folder + "'").c_str()), 0);
        ASSERT_EQ(files::WriteWholeFile(folder + "/" + name, content), files::FileResult::Done);
    }
    Outcome Search(const std::string& arguments) const {
        return Run("--data '" + Path("data") + "' search " + arguments);
    }
    // The names of the files that it prints, line by line.
    std::vector<std::string> Found(const std::string& arguments) const {
        std::vector<std::string> names;
        const std::string out = Search(arguments).out;
        for (std::size_t at = 0, end; (end = out.find('\n', at)) != std::string::npos; at = end + 1) {
            const std::string line = out.substr(at, end - at);
            EXPECT_TRUE(line.starts_with(Path("data"))) << line;
            names.push_back(line.substr(line.rfind('/') + 1));
        }
        return names;
    }
};

TEST_F(SearchVerbTest, PathsArePrintedInTheOrderOfTheDays) {
    EXPECT_THAT(Found("cat"), ElementsAre("cat.txt", "both.txt", "tree.txt"));
    EXPECT_THAT(Found("--all cat"), ElementsAre("cat.txt", "both.txt", "tree.txt"));
    EXPECT_THAT(Found("'dog cat'"), ElementsAre("both.txt"));
    EXPECT_THAT(Found("'spring or tree'"), IsEmpty()) << "the words are in the paths";
    EXPECT_THAT(Found("'dog or 花見'"), ElementsAre("spring.txt", "both.txt", "tree.txt"));
}

TEST_F(SearchVerbTest, NotesInUtf8WithoutAMarkAreFound) {
    Note("2008", "11", "1115", "food.txt", "Frühstück mit Käse");
    Note("2008", "11", "1116", "place.txt", "café");
    Note("2008", "11", "1117", "weather.txt", "10°");
    Note("2008", "11", "1118", "kana.txt", "\xB6\xC0\xB6\xC5");  // ｶﾀｶﾅ in code page 932
    EXPECT_THAT(Found("käse"), ElementsAre("food.txt"));
    EXPECT_THAT(Found("Frühstück"), ElementsAre("food.txt"));
    EXPECT_THAT(Found("café"), ElementsAre("place.txt"));
    EXPECT_THAT(Found("10°"), ElementsAre("weather.txt"));
    EXPECT_THAT(Found("カタカナ"), ElementsAre("kana.txt"));
}

TEST_F(SearchVerbTest, StatusTellsWhetherSomethingWasFound) {
    EXPECT_EQ(Search("cat").status, 0);
    const Outcome nothing = Search("bird");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.out, "");
    EXPECT_EQ(Search("").status, 2) << "without a query";
    EXPECT_EQ(Search("''").status, 2);
    EXPECT_EQ(Search("cat --year x").status, 2);
    EXPECT_EQ(Search("cat --all --year 2008").status, 2);
    EXPECT_EQ(Search("cat --year 2008 --month 2008-11").status, 2);
    EXPECT_EQ(Search("--help").status, 0);
}

TEST_F(SearchVerbTest, PeriodsNarrowTheSearch) {
    EXPECT_THAT(Found("--year 2008 cat"), ElementsAre("cat.txt", "both.txt", "tree.txt"));
    EXPECT_THAT(Found("--month 2008-11 cat"), ElementsAre("cat.txt", "both.txt"));
    EXPECT_THAT(Found("cat --day 2008-11-14"), ElementsAre("both.txt"));
    EXPECT_THAT(Found("--day 2008-11-15 cat"), IsEmpty());
    EXPECT_THAT(Found("--year 2007 cat"), IsEmpty());
    EXPECT_THAT(Found("--month 2031-01 cat"), IsEmpty());
}

TEST_F(SearchVerbTest, WordsMayBeSeveralArguments) {
    EXPECT_THAT(Found("cat dog"), ElementsAre("both.txt"));
    EXPECT_THAT(Found("cat or 花見"), ElementsAre("both.txt", "tree.txt"))
        << "cat.txt has its word in the path";
}

TEST_F(SearchVerbTest, JapaneseIsFoundInEveryWidth) {
    for (const char* query :
         {"さくら", "サクラ", "ｻｸﾗ", "さくらの花見", "ｻｸﾗﾉ花見", "花見　ＣＡＴ", "花見　ｃａｔ"})
        EXPECT_THAT(Found(std::string("'") + query + "'"), ElementsAre("tree.txt")) << query;
    EXPECT_THAT(Found("さくらんぼ"), IsEmpty());
}

TEST_F(SearchVerbTest, WhatHasNoIndexGetsOne) {
    const std::string index = DayPath("2008", "11", "1113") + "/$calendar.cidx";
    EXPECT_FALSE(files::Exists(index));
    EXPECT_THAT(Found("--day 2008-11-13 cat"), ElementsAre("cat.txt"));
    EXPECT_TRUE(files::Exists(index));
    EXPECT_FALSE(files::Exists(DayPath("2008", "11", "1114") + "/$calendar.cidx"));
    Search("--all cat");
    EXPECT_TRUE(files::Exists(DayPath("2007", "05", "0501") + "/$calendar.cidx"));
}

TEST_F(SearchVerbTest, IndexIsBelievedUntilAnUpdate) {
    Search("cat");
    Note("2008", "11", "1113", "new.txt", "cat");
    EXPECT_THAT(Found("--day 2008-11-13 cat"), ElementsAre("cat.txt"));
    ASSERT_EQ(Run("--data '" + Path("data") + "' update --month 2008-11").status, 0);
    EXPECT_THAT(Found("--day 2008-11-13 cat"), ElementsAre("cat.txt", "new.txt"));
}

TEST_F(SearchVerbTest, IndexFromTheOtherPlatformIsSearched) {
    const std::string text =
        "# Calendar Index [0.99]\r\nFILE=散歩\\花.jpg\r\nSIZE=240,180\r\nTIME=(1C9455D,8B2F1A00)\r\n"
        "DATE=2008/11/13 18:42:7\r\nEVAL=64,0,-3\r\nFACE=1\r\nMODE=5\r\nVALS=400,825,0,9,280\r\n"
        "COMM=ｻｸﾗ canon\r\n-\r\n";
    Note("2008", "11", "1113", "$calendar.cidx", text::ToCp932(text));
    for (const char* query : {"サクラ", "散歩/花", "flash:9", "'mode:5 tag:face'", "'iso:400~401 canon'",
                              "'tag:like tag:private time:night'"})
        EXPECT_THAT(Found(std::string("--day 2008-11-13 ") + query), ElementsAre("花.jpg")) << query;
    EXPECT_THAT(Found("--day 2008-11-13 tag:good"), IsEmpty());
}

TEST_F(SearchVerbTest, JsonHasTheRecords) {
    const std::string text =
        "# Calendar Index [0.99]\nFILE=a.jpg\nSIZE=240,180\nDATE=2008/11/13 18:42:7\n"
        "EVAL=64,5,-3\nFACE=1\nMODE=5\nVALS=400,825,7,9,280\nCOMM=words\n-\nFILE=b.jpg\n-\n";
    Note("2008", "11", "1113", "$calendar.cidx", text);
    const Outcome found = Search("--json --day 2008-11-13 jpg");
    EXPECT_EQ(found.status, 0);
    const auto records = nlohmann::ordered_json::parse(found.out);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0], (nlohmann::ordered_json{{"path", DayPath("2008", "11", "1113") + "/a.jpg"},
                                                  {"date", "2008-11-13T18:42:07"},
                                                  {"width", 240},
                                                  {"height", 180},
                                                  {"iso", 400},
                                                  {"shutter", 825},
                                                  {"brightness", 7},
                                                  {"flash", 9},
                                                  {"aperture", 280},
                                                  {"mode", 5},
                                                  {"face", 1},
                                                  {"comment", "words"},
                                                  {"like", 64},
                                                  {"good", 5},
                                                  {"privacy", -3}}));
    EXPECT_TRUE(records[1]["date"].is_null());
    EXPECT_EQ(records[1]["width"], -1);
    const Outcome nothing = Search("--json bird");
    EXPECT_EQ(nothing.status, 1);
    EXPECT_THAT(nlohmann::json::parse(nothing.out), IsEmpty());
}

TEST_F(SearchVerbTest, NameThatIsNoUtf8StillGivesValidJson) {
    Note("2008", "11", "1113", "raw\xE9\xFF.txt", "bird");
    const Outcome found = Search("--json bird");
    EXPECT_EQ(found.status, 0);
    EXPECT_EQ(nlohmann::json::parse(found.out).size(), 1u);
    EXPECT_THAT(Search("bird").out, HasSubstr("raw\xE9\xFF.txt\n")) << "the path as it is";
}

TEST_F(SearchVerbTest, MissingDataFolderIsAFailure) {
    const Outcome outcome = Run("--data '" + Path("gone") + "' search cat");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(Errors(), HasSubstr("no such folder"));
}

TEST_F(SearchVerbTest, SecondFolderOfTheSettingsIsSearchedToo) {
    ASSERT_EQ(std::system(
                  ("mkdir -p '" + Path("home") + "' '" + Path("other/2008/200811/2008_1101") + "'").c_str()),
              0);
    Write("other/2008/200811/2008_1101/other.txt", "a cat");
    Write("home/kalmora.ini", "[Main]\nDataDirectory=" + Path("data") +
                                  "\nUseOtherFolder=1\nOtherDirectory=" + Path("other") + "\n");
    EXPECT_THAT(Run("search --month 2008-11 cat").out,
                testing::EndsWith("other/2008/200811/2008_1101/other.txt\n"));
    EXPECT_THAT(Found("--month 2008-11 cat"), ElementsAre("cat.txt", "both.txt")) << "not with --data";
}

TEST_F(SearchVerbTest, InterruptEndsIt) {
    // More than a pipe holds for each of many months: while the output is not read, the search cannot end.
    const std::string name(200, 'x');
    std::string index = "# Calendar Index [0.99]\n";
    for (int i = 0; i < 1000; ++i) index += "FILE=" + name + std::to_string(i) + ".jpg\n-\n";
    for (int year = 1950; year < 2000; ++year)
        Note(std::to_string(year), "01", "0101", "$calendar.cidx", index);
    Write("script", "mkfifo pipe\n'" KALMORA_PROGRAM
                    "' --home home --data data search xxx >pipe 2>errors2 &\n"
                    "exec 3<pipe\ndd bs=1 count=1 <&3 >/dev/null 2>&1\nkill -INT $!\n"
                    "wc -l <&3 >lines\nwait $!\necho $? >status\n");
    ASSERT_EQ(std::system(("cd '" + folder_ + "' && sh script").c_str()), 0);
    EXPECT_EQ(files::ReadWholeFile(Path("status")), "2\n");
    EXPECT_LT(std::atoi(files::ReadWholeFile(Path("lines")).value_or("99999").c_str()), 49'000);
    EXPECT_THAT(files::ReadWholeFile(Path("errors2")).value_or(""), HasSubstr("interrupted"));
}

TEST_F(SearchVerbTest, ResultThatCannotBePrintedIsAFailure) {
    const std::string data = "--data '" + Path("data") + "' ";
    for (const char* verb :
         {"search cat", "search --json cat", "index", "show data/2008/200811/2008_1113/cat.txt"}) {
        EXPECT_EQ(Run(data + verb + " > /dev/full").status, 1) << verb;
        EXPECT_THAT(Errors(), HasSubstr("standard output cannot be written")) << verb;
    }
}

TEST_F(SearchVerbTest, DateThatNoCalendarHasIsNull) {
    Note("2008", "11", "1113", "$calendar.cidx",
         "# Calendar Index [0.99]\nFILE=a.txt\nDATE=2008/13/45 25:61:61\nCOMM=cat\n-\n");
    EXPECT_THAT(Search("--json --day 2008-11-13 cat").out, HasSubstr("\"date\":null"));
}

}  // namespace
}  // namespace kalmora
