// The verbs that write into photos, as a script uses them.
#include <gmock/gmock.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <tuple>

#include "media/picture_files.h"
#include "media/png_builder.h"
#include "program_fixture.h"
#include "support/permissions.h"

namespace kalmora {
namespace {

using nlohmann::ordered_json;
using test::DecodableJpeg;
using test::JpegOf;
using test::Outcome;
using test::PngOf;
using testing::HasSubstr;

class WriteVerbsTest : public test::CommandLineTest {
protected:
    WriteVerbsTest() {
        Write("a.jpg", JpegOf(""));
        Write("b.png", PngOf(""));
        Write("c.txt", "a note");
    }
    std::string Content(const std::string& name) const {
        return files::ReadWholeFile(Path(name)).value_or("none");
    }
    ordered_json Shown(const std::string& name) const {
        return ordered_json::parse(Run("show --json '" + Path(name) + "'").out)[0];
    }
};

TEST_F(WriteVerbsTest, RateGivesAnObjectAFileAndTheValues) {
    const Outcome rated = Run("rate --json a.jpg '" + Path("b.png") + "' like");
    EXPECT_EQ(rated.status, 0) << Errors();
    EXPECT_EQ(ordered_json::parse(rated.out), ordered_json::parse(R"([
        {"file": "a.jpg", "result": "written", "like": 128, "good": 0, "privacy": 0},
        {"file": ")" + Path("b.png") + R"(", "result": "written", "like": 128, "good": 0, "privacy": 0}])"));
    EXPECT_EQ(Shown("a.jpg")["like"], 128);
    EXPECT_EQ(Shown("b.png")["like"], 128);
}

TEST_F(WriteVerbsTest, RateKnowsEachRating) {
    for (const auto& [word, key, value] : {std::tuple{"like", "like", 128},
                                           {"like", "like", 192},
                                           {"dislike", "like", 160},
                                           {"public", "privacy", 128},
                                           {"private", "privacy", 64},
                                           {"good", "good", 128},
                                           {"bad", "good", 64},
                                           {"clear", "like", 0},
                                           {"bad", "good", -128}}) {
        const Outcome rated = Run("rate a.jpg " + std::string(word));
        EXPECT_EQ(rated.status, 0) << Errors();
        EXPECT_EQ(Shown("a.jpg")[key], value) << word;
        EXPECT_THAT(rated.out, HasSubstr(std::string(key) + " " + std::to_string(value)));
    }
}

TEST_F(WriteVerbsTest, RateTellsOfEachFileThatFails) {
    const Outcome rated = Run("rate --json a.jpg c.txt absent.jpg b.png bad");
    EXPECT_EQ(rated.status, 1);
    const auto records = ordered_json::parse(rated.out);
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(records[0]["result"], "written");
    EXPECT_EQ(records[1], ordered_json::parse(R"({"file": "c.txt", "result": "unsupported"})"));
    EXPECT_EQ(records[2], ordered_json::parse(R"({"file": "absent.jpg", "result": "unreadable"})"));
    EXPECT_EQ(records[3]["good"], -128);
    EXPECT_THAT(Errors(), HasSubstr("kalmora rate: c.txt: unsupported"));
    EXPECT_EQ(Content("c.txt"), "a note");
    const Outcome plain = Run("rate c.txt like");
    EXPECT_EQ(plain.status, 1);
    EXPECT_EQ(plain.out, "");
}

TEST_F(WriteVerbsTest, CommentWritesAddsAndTakesOut) {
    EXPECT_EQ(Run("comment a.jpg 'a walk'").out, "a.jpg: written\n");
    EXPECT_EQ(Shown("a.jpg")["comment"], "a walk");
    const Outcome added = Run("comment --append --json a.jpg '\u3042 hills'");
    EXPECT_EQ(added.status, 0);
    EXPECT_EQ(ordered_json::parse(added.out)[0]["comment"], "a walk\r\n\u3042 hills");
    EXPECT_EQ(Shown("a.jpg")["comment"], "a walk\r\n\u3042 hills");
    EXPECT_EQ(Run("comment a.jpg ''").status, 0);
    EXPECT_EQ(Shown("a.jpg")["comment"], "");
    EXPECT_EQ(Run("comment b.png 'caf\u00E9 \U0001F600'").status, 0);
    EXPECT_EQ(Shown("b.png")["comment"], "caf\u00E9 \U0001F600");
    EXPECT_EQ(Run("comment --json c.txt words").status, 1);
    EXPECT_EQ(Run("comment absent.jpg words").status, 1);
}

TEST_F(WriteVerbsTest, CommentThatDoesNotFitIsRefused) {
    Write("words", std::string(33'000, 'w'));
    const Outcome written = Run("comment --json a.jpg \"$(cat words)\"");
    EXPECT_EQ(written.status, 1);
    EXPECT_EQ(ordered_json::parse(written.out)[0]["result"], "too large");
    EXPECT_EQ(ordered_json::parse(written.out)[0]["reason"], "its Exif block has no room for it");
    EXPECT_THAT(Errors(), HasSubstr("a.jpg: too large: its Exif block has no room for it"));
    EXPECT_EQ(Content("a.jpg"), JpegOf(""));
}

TEST_F(WriteVerbsTest, DateIsWritten) {
    for (const char* name : {"a.jpg", "b.png"}) {
        const Outcome written = Run("date --json " + std::string(name) + " '2008-11-13 10:15:00'");
        EXPECT_EQ(written.status, 0) << Errors();
        EXPECT_EQ(ordered_json::parse(written.out)[0]["date"], "2008-11-13T10:15:00");
        EXPECT_EQ(Shown(name)["date"], "2008-11-13T10:15:00");
        EXPECT_EQ(Run("date " + std::string(name) + " 2001-02-03T04:05").status, 0);
        EXPECT_EQ(Shown(name)["date"], "2001-02-03T04:05:00");
    }
    EXPECT_EQ(Run("date c.txt '2008-11-13 10:15:00'").status, 1);
}

TEST_F(WriteVerbsTest, WrongUseEndsWithTwoAndTouchesNothing) {
    for (const char* words :
         {"rate", "rate a.jpg", "rate a.jpg wonderful", "rate like a.jpg", "comment a.jpg", "date a.jpg",
          "date a.jpg yesterday", "date a.jpg '2008-02-30 10:15:00'", "date a.jpg '2008-11-13'",
          "date a.jpg '2008-11-13 24:00'", "date a.jpg '2008-11-13 10:15:00 '", "rotate a.jpg",
          "rotate a.jpg 45", "rotate a.jpg 0", "comment --wrong a.jpg x"})
        EXPECT_EQ(Run(words).status, 2) << words;
    EXPECT_EQ(Content("a.jpg"), JpegOf(""));
}

TEST_F(WriteVerbsTest, RotateTurnsAJpegAndKeepsItsWords) {
    if (!files::Exists("/usr/bin/jpegtran")) GTEST_SKIP() << "jpegtran is not installed";
    Write("t.jpg", DecodableJpeg(64, 48));
    ASSERT_EQ(Run("comment t.jpg words").status, 0);
    ASSERT_EQ(Run("rate t.jpg like").status, 0);
    for (const auto& [degrees, width] : {std::pair{90, 48}, {180, 48}, {270, 64}}) {
        const Outcome turned = Run("rotate --json t.jpg " + std::to_string(degrees));
        EXPECT_EQ(turned.status, 0) << Errors();
        EXPECT_EQ(ordered_json::parse(turned.out)[0],
                  ordered_json::parse(R"({"file": "t.jpg", "result": "turned", "degrees": )" +
                                      std::to_string(degrees) + "}"));
        EXPECT_EQ(Shown("t.jpg")["width"], width);
        EXPECT_EQ(Shown("t.jpg")["comment"], "words");
        EXPECT_EQ(Shown("t.jpg")["like"], 128);
    }
}

TEST_F(WriteVerbsTest, RotateTellsWhatIsWrong) {
    for (const auto& [name, words] :
         {std::pair{"b.png", "not a JPEG"}, {"c.txt", "not a JPEG"}, {"absent.jpg", "no such file"}}) {
        const Outcome turned = Run("rotate --json " + std::string(name) + " 90");
        EXPECT_EQ(turned.status, 1);
        EXPECT_EQ(ordered_json::parse(turned.out)[0]["result"], words);
    }
    Write("home/kalmora.ini", "PathOfJpegTran=/no/such/jpegtran\n");
    const Outcome turned = Run("rotate --json a.jpg 90");
    EXPECT_EQ(turned.status, 1);
    EXPECT_EQ(ordered_json::parse(turned.out)[0]["result"], "no jpegtran: /no/such/jpegtran");
}

TEST_F(WriteVerbsTest, ReadOnlyPhotoIsDeniedByEachOfThem) {
    Write("t.jpg", DecodableJpeg(64, 48));
    test::MakeReadOnly(Path("t.jpg"));
    for (const char* words : {"rate --json t.jpg like", "comment --json t.jpg x",
                              "date --json t.jpg '2008-11-13 10:15:00'", "rotate --json t.jpg 90"}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1) << words;
        EXPECT_EQ(ordered_json::parse(outcome.out)[0]["result"], "denied") << words;
    }
    EXPECT_EQ(Content("t.jpg"), DecodableJpeg(64, 48));
}

TEST_F(WriteVerbsTest, TwoCommentsAddedAtTheSameTimeBothStand) {
    const std::string add = "'" KALMORA_PROGRAM "' --home '" + Path("home") + "' comment --append a.jpg ";
    const std::string command = "cd '" + folder_ + "' && for i in $(seq 20); do " + add +
                                "\"left $i.\" >/dev/null & " + add + "\"right $i.\" >/dev/null; wait; done";
    // NOLINTNEXTLINE(bugprone-command-processor): a script does this
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string words = Shown("a.jpg")["comment"];
    for (int i = 1; i <= 20; ++i)
        for (const char* side : {"left ", "right "})
            EXPECT_THAT(words, HasSubstr(side + std::to_string(i) + ".")) << i;
}

// The one that finds no extension.dat, and then the other's, once took it for one that cannot be read.
TEST_F(WriteVerbsTest, TwoFirstStartsAtOnceBothKnowTheKindsOfFiles) {
    const std::string rate = "'" KALMORA_PROGRAM "' --home '" + Path("new") + "$i' rate a.jpg like";
    const std::string command = "cd '" + folder_ + "' && for i in $(seq 30); do " + rate +
                                " >/dev/null 2>>errors & " + rate + " >/dev/null 2>>errors; wait; done";
    std::system(command.c_str());  // NOLINT(bugprone-command-processor): a script does this
    const std::string errors = Content("errors");
    EXPECT_EQ(errors.find("unsupported"), std::string::npos) << errors;
    EXPECT_EQ(errors.find("cannot be read"), std::string::npos) << errors;
}

TEST_F(WriteVerbsTest, RunsAtTheSameTimeDoNotLoseARating) {
    const std::string program = "'" KALMORA_PROGRAM "' --home '" + Path("home") + "'";
    std::string command = "cd '" + folder_ + "' && for i in 1 2 3 4; do " + program +
                          " rate a.jpg b.png like >/dev/null & done; wait";
    // NOLINTNEXTLINE(bugprone-command-processor): a script does this
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(Shown("a.jpg")["like"], 240);
    EXPECT_EQ(Shown("b.png")["like"], 240);
}

}  // namespace
}  // namespace kalmora
