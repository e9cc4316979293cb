#include "index/index_text.h"

#include <gmock/gmock.h>

#include "text/text.h"

namespace kalmora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kFolder[] = "/life/2008/200811/2008_1113";
constexpr char kHead[] = "# Calendar Index [0.99]\n";

std::vector<EntryPointer> Read(std::string_view text, IndexReading expected = IndexReading::Done) {
    const StopToken stop;
    std::vector<EntryPointer> records;
    EXPECT_EQ(ReadIndexText(text, kFolder, stop, records), expected) << text;
    return records;
}

std::vector<EntryPointer> ReadRecords(std::string_view lines) { return Read(kHead + std::string(lines)); }

// The fields of a record that has just these lines.
IndexEntry ReadOne(std::string_view lines) {
    const auto records = ReadRecords("FILE=a.jpg\n" + std::string(lines) + "-\n");
    EXPECT_EQ(records.size(), 1u) << lines;
    return records.empty() ? IndexEntry{} : *records.front();
}

std::vector<std::string> Names(const std::vector<EntryPointer>& records) {
    std::vector<std::string> names;
    for (const EntryPointer& record : records) names.push_back(record->path.substr(sizeof kFolder));
    return names;
}

IndexEntry Sample() {
    IndexEntry entry;
    entry.path = std::string(kFolder) + "/0001.jpg";
    entry.width = 2048;
    entry.height = 1536;
    entry.lastWriteTime.ticks = std::uint64_t{0x1C9455D} << 32 | 0x8B2F1A00;
    entry.date = {2008, 11, 4, 13, 18, 42, 7, 250};
    return entry;
}

constexpr char kSample[] =
    "FILE=0001.jpg\nSIZE=2048,1536\nTIME=(1C9455D,8B2F1A00)\nDATE=2008/11/13 18:42:7\nEVAL=0,0,0\nFACE=0\n"
    "MODE=0\nVALS=0,0,0,0,0\nCOMM=\n-\n";

std::string Written(const IndexEntry& entry) {
    std::string text;
    AppendIndexRecord(text, entry, kFolder);
    return text;
}

TEST(IndexText, HeaderNamesTheVersion) { EXPECT_EQ(IndexHeader(), "# Calendar Index [0.99]\n"); }

TEST(IndexText, RecordIsTenLinesInTheirOrder) { EXPECT_EQ(Written(Sample()), kSample); }

TEST(IndexText, EveryFieldIsWrittenWhereItBelongs) {
    IndexEntry entry = Sample();
    entry.estimations.like = 192;
    entry.estimations.good = -64;
    entry.estimations.privacy = 64;
    entry.camera.face = 1;
    entry.camera.mode = 5;
    entry.camera.iso = 100;
    entry.camera.shutter = 825;
    entry.camera.brightness = -541;
    entry.camera.flash = 16;
    entry.camera.exposureBias = entry.camera.exposureTime = entry.camera.exposureProgram =
        777;  // not in the file
    entry.camera.aperture = 300;
    entry.comment = "花火 in july";
    EXPECT_EQ(
        Written(entry),
        "FILE=0001.jpg\nSIZE=2048,1536\nTIME=(1C9455D,8B2F1A00)\nDATE=2008/11/13 18:42:7\n"
        "EVAL=192,-64,64\nFACE=1\nMODE=5\nVALS=100,825,-541,16,300\nCOMM=\x89\xD4\x89\xCE in july\n-\n");
}

TEST(IndexText, ReadsWhatItWrites) {
    IndexEntry entry = Sample();
    entry.estimations.like = 1;
    entry.estimations.good = 3;
    entry.estimations.privacy = 2;
    entry.camera.face = 1;
    entry.camera.mode = 4;
    entry.camera.iso = 11;
    entry.camera.shutter = 12;
    entry.camera.brightness = 13;
    entry.camera.flash = 14;
    entry.camera.aperture = 18;
    entry.comment = "ｶﾒﾗ 写真";
    const auto records = ReadRecords(Written(entry));
    ASSERT_EQ(records.size(), 1u);
    const IndexEntry& read = *records.front();
    EXPECT_EQ(read.path, entry.path);
    EXPECT_EQ(read.comment, entry.comment);
    EXPECT_EQ(read.lastWriteTime, entry.lastWriteTime);
    EXPECT_EQ(read.date, (SystemTime{2008, 11, 0, 13, 18, 42, 7, 0}));
    EXPECT_EQ(Written(read), Written(entry));
}

TEST(IndexText, RatingsStandInTheOrderOneThreeTwo) {
    const IndexEntry entry = ReadOne("EVAL=10,30,20\n");
    EXPECT_EQ(entry.estimations.like, 10);
    EXPECT_EQ(entry.estimations.good, 30);
    EXPECT_EQ(entry.estimations.privacy, 20);
}

TEST(IndexText, TimeHasItsHighWordFirst) {
    const IndexEntry entry = ReadOne("TIME=(1C9455D,8B2F1A00)\n");
    EXPECT_EQ(entry.lastWriteTime.Low(), 0x8B2F1A00u);
    EXPECT_EQ(entry.lastWriteTime.High(), 0x1C9455Du);
}

TEST(IndexText, ValuesNotInTheFileAreZero) {
    const IndexEntry entry = ReadOne("VALS=1,2,3,4,8\n");
    EXPECT_EQ(entry.camera.flash, 4);
    EXPECT_EQ(entry.camera.exposureBias, 0);
    EXPECT_EQ(entry.camera.exposureTime, 0);
    EXPECT_EQ(entry.camera.exposureProgram, 0);
    EXPECT_EQ(entry.camera.aperture, 8);
}

TEST(IndexText, MissingFieldsKeepTheirStartValues) {
    const IndexEntry entry = ReadOne("");
    EXPECT_EQ(entry.width, -1);
    EXPECT_EQ(entry.height, -1);
    EXPECT_EQ(entry.estimations.like, 0);
    EXPECT_EQ(entry.camera.aperture, 0);
    EXPECT_EQ(entry.lastWriteTime.ticks, 0u);
    EXPECT_EQ(entry.date, SystemTime{});
    EXPECT_EQ(entry.comment, "");
}

TEST(IndexText, FieldsMayStandInAnyOrderAndTheLastOneCounts) {
    const IndexEntry entry = ReadOne("COMM=one\nMODE=1\nSIZE=1,2\nCOMM=two\nSIZE=3,4\n");
    EXPECT_EQ(entry.width, 3);
    EXPECT_EQ(entry.height, 4);
    EXPECT_EQ(entry.comment, "two");
    EXPECT_EQ(entry.camera.mode, 1);
}

TEST(IndexText, BadDigitsLeaveWhatTheScanDidNotReach) {
    EXPECT_EQ(ReadOne("SIZE=7,x\n").width, 7);
    EXPECT_EQ(ReadOne("SIZE=7,x\n").height, -1);
    EXPECT_EQ(ReadOne("SIZE=x,7\n").height, -1);
    EXPECT_EQ(ReadOne("SIZE=640;480\n").height, -1);
    EXPECT_EQ(ReadOne("DATE=2008/11/x 18:42:7\n").date, (SystemTime{2008, 11, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(ReadOne("TIME=1C9455D,8B2F1A00\n").lastWriteTime.ticks, 0u);
    EXPECT_EQ(ReadOne("TIME=(1C9455D)\n").lastWriteTime.High(), 0x1C9455Du);
}

TEST(IndexText, BlanksAndSignsBeforeNumbersAreTaken) {
    EXPECT_EQ(ReadOne("SIZE= +640, -480\n").width, 640);
    EXPECT_EQ(ReadOne("SIZE= +640, -480\n").height, -480);
    EXPECT_EQ(ReadOne("DATE=2008/11/13 \t 18:42:7\n").date.hour, 18);
    EXPECT_EQ(ReadOne("TIME=(0x1c9455d,8b2f1a00)\n").lastWriteTime.Low(), 0x8B2F1A00u);
}

TEST(IndexText, NumbersPastTheirTypeDoNoHarm) {
    EXPECT_EQ(ReadOne("SIZE=99999999999999999999,-99999999999999999999\n").width, 2147483647);
    EXPECT_EQ(ReadOne("TIME=(FFFFFFFFFFFF,0)\n").lastWriteTime.High(), 0xFFFFFFFFu);
}

TEST(IndexText, UnknownLinesBetweenRecordsArePassedOver) {
    EXPECT_THAT(Names(ReadRecords("hello\nSIZE=1,1\n\n-\nFILE=a.jpg\n-\nnobody\nFILE=b.jpg\n-\n")),
                ElementsAre("a.jpg", "b.jpg"));
}

TEST(IndexText, OnlyTheFirstByteOfTheEndCounts) {
    EXPECT_THAT(Names(ReadRecords("FILE=a.jpg\n--\nFILE=b.jpg\n- the end\n")), ElementsAre("a.jpg", "b.jpg"));
}

TEST(IndexText, UnknownLineInsideARecordDropsIt) {
    EXPECT_THAT(Names(ReadRecords("FILE=a.jpg\nWHAT=1\n-\nFILE=b.jpg\n-\n")), ElementsAre("b.jpg"));
    EXPECT_THAT(Names(ReadRecords("FILE=a.jpg\n\n-\nFILE=b.jpg\n-\n")), ElementsAre("b.jpg"));
    EXPECT_THAT(Names(ReadRecords("FILE=a.jpg\nSIZE\n-\nFILE=b.jpg\n-\n")), ElementsAre("b.jpg"));
}

TEST(IndexText, FileLineInPlaceOfTheEndIsLostWithBothRecords) {
    EXPECT_THAT(Names(ReadRecords("FILE=a.jpg\nSIZE=1,1\nFILE=b.jpg\nSIZE=1,1\n-\nFILE=c.jpg\n-\n")),
                ElementsAre("c.jpg"));
}

TEST(IndexText, KeysAreComparedCaseSensitively) {
    EXPECT_THAT(ReadRecords("file=a.jpg\n-\n"), IsEmpty());
    EXPECT_THAT(ReadRecords("FILE=a.jpg\nsize=1,1\n-\n"), IsEmpty());
}

TEST(IndexText, TextCutAnywhereLosesTheRecordThatIsCutAndNoOther) {
    const std::string text = std::string(kHead) + kSample + "FILE=b.jpg\nSIZE=1,2\nCOMM=\n-";
    const std::size_t firstEnd = sizeof kHead - 1 + sizeof kSample - 1;
    for (std::size_t length = sizeof kHead - 1; length <= text.size(); ++length) {
        const auto records = Read(std::string_view(text).substr(0, length));
        // The dash itself ends a record; its line feed adds nothing.
        const std::size_t expected = (length >= firstEnd - 1 ? 1u : 0u) + (length == text.size() ? 1u : 0u);
        EXPECT_EQ(records.size(), expected) << length;
    }
}

TEST(IndexText, OtherVersionIsRefused) {
    for (const char* head :
         {"# Calendar Index [1.00]\n", "# Calendar Index [0.98]\n", "# Calendar Index [0.991]\n",
          "# Calendar Index\n", "# Calendar Index []\n", "# calendar index [0.99]\n", "\n", "FILE=a.jpg\n",
          "\xEF\xBB\xBF# Calendar Index [0.99]\n", " # Calendar Index [0.99]\n", "garbage"}) {
        const auto records = Read(std::string(head) + kSample, IndexReading::OtherVersion);
        EXPECT_THAT(records, IsEmpty()) << head;
    }
}

TEST(IndexText, VersionIsComparedAsANumber) {
    for (const char* head :
         {"# Calendar Index [0.990]\n", "# Calendar Index [.99]\n", "#Calendar  Index[ +0.99\n",
          "# Calendar Index [9.9e-1]\n", "# Calendar Index [0.99] and more\n"})
        EXPECT_EQ(Read(std::string(head) + kSample).size(), 1u) << head;
}

TEST(IndexText, HeaderAloneAndNothingAtAllAreEmptyDays) {
    EXPECT_THAT(Read(kHead), IsEmpty());
    EXPECT_THAT(Read("# Calendar Index [0.99]"), IsEmpty());
    EXPECT_THAT(Read(""), IsEmpty());
}

TEST(IndexText, LineEndsOfTheOtherPlatformAreRead) {
    std::string text = std::string(kHead) + kSample + "FILE=b.jpg\nCOMM=two words\n-\n";
    std::string windows;
    for (const char c : text) windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const auto records = Read(windows);
    ASSERT_THAT(Names(records), ElementsAre("0001.jpg", "b.jpg"));
    EXPECT_EQ(records[0]->width, 2048);
    EXPECT_EQ(records[0]->comment, "");
    EXPECT_EQ(records[1]->comment, "two words");
}

TEST(IndexText, StopEndsTheReadingAndKeepsWhatWasRead) {
    StopSource stop;
    stop.RequestStop();
    std::vector<EntryPointer> records;
    EXPECT_EQ(ReadIndexText(std::string(kHead) + kSample, kFolder, stop.Token(), records),
              IndexReading::Stopped);
    EXPECT_THAT(records, IsEmpty());
}

TEST(IndexPath, SecondByteOfACharacterIsNoSeparator) {
    // The second byte of both is 5C.
    EXPECT_EQ(FromIndexPath("\x94\x5C\x83\x5C\\a.jpg"), "能ソ/a.jpg");
    EXPECT_EQ(ToIndexPath("能ソ/a.jpg"), "\x94\x5C\x83\x5C\\a.jpg");
    EXPECT_EQ(FromIndexPath("\xB1\\\xB2.jpg"), "ｱ/ｲ.jpg");
}

TEST(IndexPath, EveryNameOfTheFileSystemComesBack) {
    for (const std::string name : {"plain.jpg",
                                   "with blank .jpg",
                                   "été.jpg",
                                   "😀.jpg",
                                   "back\\slash.jpg",
                                   "line\nfeed.jpg",
                                   "car\rriage.jpg",
                                   "end\r",
                                   "&#x41;.jpg",
                                   "&amp;.jpg",
                                   "~wave〜−‖.jpg",
                                   "not\xFFutf8\x81.jpg",
                                   "sub/ソ\\表/x",
                                   "a=b-.jpg",
                                   "-",
                                   "FILE=x",
                                   " ",
                                   "C:drive.jpg",
                                   "...",
                                   ".hidden"})
        EXPECT_EQ(FromIndexPath(ToIndexPath(name)), name) << ToIndexPath(name);
}

TEST(IndexPath, NothingLeadsOutOfTheDay) {
    for (const std::string_view bytes :
         {std::string_view("..\\..\\etc\\passwd"), std::string_view("../a.jpg"),
          std::string_view("sub\\..\\..\\a.jpg"), std::string_view(".."), std::string_view("."),
          std::string_view(".\\a.jpg"), std::string_view("\\a.jpg"), std::string_view("/etc/passwd"),
          std::string_view("\\\\server\\share\\a.jpg"), std::string_view("C:\\a.jpg"),
          std::string_view("sub\\"), std::string_view("sub\\\\a.jpg"), std::string_view(""),
          std::string_view("&#x2E;.\\a.jpg"), std::string_view("a&#x2F;b.jpg"),
          std::string_view("&#x2E;&#x2E;/a.jpg"), std::string_view("\0a.jpg", 6)})
        EXPECT_EQ(FromIndexPath(bytes), "") << bytes;
}

TEST(IndexPath, RefusedPathTakesItsRecordAlong) {
    EXPECT_THAT(Names(ReadRecords("FILE=..\\a.jpg\nSIZE=1,1\n-\nFILE=b.jpg\n-\nFILE=\n-\nFILE=c.jpg\n-\n")),
                ElementsAre("b.jpg", "c.jpg"));
}

TEST(IndexPath, LongestNameIsWhatTheFileSystemTakes) {
    EXPECT_EQ(FromIndexPath(std::string(255, 'a')).size(), 255u);
    EXPECT_EQ(FromIndexPath(std::string(256, 'a')), "");
    std::string deep;
    while (deep.size() < 5000) deep += "folder\\";
    EXPECT_EQ(FromIndexPath(deep + "a.jpg"), "");
    EXPECT_EQ(FromIndexPath(std::string(1 << 20, 'a')), "");
}

TEST(IndexPath, ZeroByteEndsTheLine) {
    EXPECT_EQ(FromIndexPath(std::string_view("a.jpg\0..\\b", 10)), "a.jpg");
    EXPECT_EQ(ReadOne(std::string("COMM=one\0two\n", 13)).comment, "one");
}

TEST(IndexPath, PathOfAnotherFolderIsNotWritten) {
    IndexEntry entry = Sample();
    for (const char* path : {"/etc/passwd", "/life/2008/200811/2008_11130/a.jpg",
                             "/life/2008/200811/2008_1113", "/life/2008/200811/2008_1113/"}) {
        entry.path = path;
        EXPECT_EQ(Written(entry), "") << path;
    }
}

// ---- comments

TEST(IndexComment, EveryCharacterComesBack) {
    for (const std::string comment :
         {"", "a", "été €", "花火", "😀", "&#x41;", "&#x", "x\xFFy", "a\tb", "-", "FILE=a"}) {
        IndexEntry entry = Sample();
        entry.comment = comment;
        const auto records = ReadRecords(Written(entry));
        ASSERT_EQ(records.size(), 1u) << comment;
        EXPECT_EQ(records.front()->comment, comment);
    }
}

TEST(IndexComment, EscapedLineEndBecomesABlank) { EXPECT_EQ(ReadOne("COMM=a&#xA;b\n").comment, "a b"); }

TEST(IndexComment, HugeLineIsCutAtAWholeCharacter) {
    std::string line = "COMM=";
    while (line.size() < kLongestComment + 100) line += "\x89\xD4";
    const std::string comment = ReadOne(line + "\n").comment;
    EXPECT_LE(comment.size(), kLongestComment);
    EXPECT_GT(comment.size(), kLongestComment - 4);
    EXPECT_TRUE(text::IsValidUtf8(comment));
}

}  // namespace
}  // namespace kalmora
