#include "media/date_text.h"

#include <gtest/gtest.h>

#include <string>

namespace kalmora {
namespace {

SystemTime Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    SystemTime date;
    date.year = static_cast<std::uint16_t>(year);
    date.month = static_cast<std::uint16_t>(month);
    date.day = static_cast<std::uint16_t>(day);
    date.hour = static_cast<std::uint16_t>(hour);
    date.minute = static_cast<std::uint16_t>(minute);
    date.second = static_cast<std::uint16_t>(second);
    return date;
}

struct Row {
    const char* text;
    bool good;
    SystemTime date;
};

void PrintTo(const Row& row, std::ostream* out) { *out << '"' << row.text << '"'; }

class ExifDate : public testing::TestWithParam<Row> {};
INSTANTIATE_TEST_SUITE_P(
    Forms, ExifDate,
    testing::Values(Row{"2008:05:06 07:08:09", true, Date(2008, 5, 6, 7, 8, 9)},
                    Row{"2008/05/06 07:08:09", true, Date(2008, 5, 6, 7, 8, 9)},
                    Row{"2008:5:6 7:8:9", true, Date(2008, 5, 6, 7, 8, 9)},
                    Row{"  2008: 05: 06   07: 08: 09", true, Date(2008, 5, 6, 7, 8, 9)},
                    Row{"2008:05:0607:08:09", true, Date(2008, 5, 607)},  // the day swallows the hour
                    Row{"2008:05:06 07:08:09.123+09:00", true, Date(2008, 5, 6, 7, 8, 9)},
                    Row{"2008:05:06 07:08", true, Date(2008, 5, 6, 7, 8)},  // what is there counts
                    Row{"2008:05:06", true, Date(2008, 5, 6)}, Row{"2008/05/06", true, Date(2008, 5, 6)},
                    Row{"2008-05-06 07:08:09", true, Date(2008, 0, 0)},  // another form: the year alone
                    Row{"2008:05/06 07:08:09", true, Date(2008, 5, 0)}, Row{"0000:00:00 00:00:00", false, {}},
                    Row{"    :  :     :  :  ", false, {}}, Row{"", false, {}}, Row{"yesterday", false, {}},
                    Row{"0000:00:00 12:30:00", false, {}}, Row{"0:0:1 0:0:0", true, Date(0, 0, 1)},
                    Row{"2001:12:00 00:00:00", true, Date(2001, 12, 0)}));

TEST_P(ExifDate, IsReadLeniently) {
    const Row& row = GetParam();
    SystemTime date;
    EXPECT_EQ(ParseExifDate(row.text, date), row.good);
    if (row.good) {
        EXPECT_EQ(date.year, row.date.year);
        EXPECT_EQ(date.month, row.date.month);
        EXPECT_EQ(date.day, row.date.day);
        EXPECT_EQ(date.hour, row.date.hour);
        EXPECT_EQ(date.minute, row.date.minute);
        EXPECT_EQ(date.second, row.date.second);
    }
}

TEST(ExifDateText, SurvivesNumbersOfAnyLength) {
    SystemTime date;
    ParseExifDate(std::string(5000, '9') + ":" + std::string(5000, '9'), date);
    ParseExifDate("-99999999999999999999:-1:+5", date);
    EXPECT_EQ(date.day, 5);
}

TEST(StampDate, WantsAllSixFieldsWithColons) {
    SystemTime date = Date(1, 1, 1);
    for (const char* bad : {"2008/05/06 07:08:09", "2008:05:06 07:08", "2008:05:06",
                            "Tue, 6 May 2008 07:08:09", "2008-05-06T07:08:09", ""}) {
        EXPECT_FALSE(ParseStampDate(bad, date)) << bad;
        EXPECT_EQ(date, Date(1, 1, 1)) << bad;
    }
    EXPECT_TRUE(ParseStampDate("2008:05:06 07:08:09", date));
    EXPECT_EQ(date, Date(2008, 5, 6, 7, 8, 9));
    EXPECT_TRUE(ParseStampDate("0:0:0 0:0:0", date));
}

class NoteDate : public testing::TestWithParam<Row> {};
INSTANTIATE_TEST_SUITE_P(Forms, NoteDate,
                         testing::Values(Row{"[2008/11/13 10:15] dentist", true, Date(2008, 11, 13, 10, 15)},
                                         Row{"[2008/11/13 10:15:59", true, Date(2008, 11, 13, 10, 15)},
                                         Row{"[2008/11/13 10] dentist", true, Date(2008, 11, 13, 10)},
                                         Row{"[2008/11/13 10:", true, Date(2008, 11, 13, 10)},
                                         Row{"[2008/1/3 9:5]", true, Date(2008, 1, 3, 9, 5)},
                                         Row{"[2008/11/13  10:15]", true, Date(2008, 11, 13, 10, 15)},
                                         Row{"[2008/11/131015]", true, Date(2008, 11, 13, 10)},
                                         Row{"[2008/11/13]", false, {}}, Row{"2008/11/13 10:15", false, {}},
                                         Row{" [2008/11/13 10:15]", false, {}},
                                         Row{"[20081/11/13 10:15]", false, {}},
                                         Row{"[2008-11-13 10:15]", false, {}}, Row{"[Memo]", false, {}},
                                         Row{"", false, {}}));

TEST_P(NoteDate, StandsInBracketsAtTheHead) {
    const Row& row = GetParam();
    SystemTime date;
    EXPECT_EQ(ParseNoteDate(row.text, date), row.good);
    EXPECT_EQ(date, row.date);
}

}  // namespace
}  // namespace kalmora
