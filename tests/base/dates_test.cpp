#include "base/dates.h"

#include <gtest/gtest.h>

#include <vector>

namespace kalmora {
namespace {

SystemTime Date(int year, int month, int day) {
    SystemTime date;
    date.year = static_cast<std::uint16_t>(year);
    date.month = static_cast<std::uint16_t>(month);
    date.day = static_cast<std::uint16_t>(day);
    return date;
}

TEST(DaysInMonth, FebruaryFollowsTheGregorianLeapYears) {
    EXPECT_EQ(DaysInMonth(1900, 2), 28);
    EXPECT_EQ(DaysInMonth(2000, 2), 29);
    EXPECT_EQ(DaysInMonth(2004, 2), 29);
    EXPECT_EQ(DaysInMonth(2007, 2), 28);
    EXPECT_EQ(DaysInMonth(2100, 2), 28);
}

TEST(DaysInMonth, EveryMonthHasItsLength) {
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(DaysInMonth(2007, month), lengths[month - 1]) << month;
}

TEST(DaysInMonth, AMonthThatDoesNotExistHasThirtyOne) {
    EXPECT_EQ(DaysInMonth(2008, 13), 31);
    EXPECT_EQ(DaysInMonth(2008, 0), 31);
    EXPECT_EQ(DaysInMonth(2008, -2), 31);
}

TEST(AddDays, StepsOverMonthsAndYears) {
    EXPECT_EQ(AddDays(Date(2008, 2, 28), 1), Date(2008, 2, 29));
    EXPECT_EQ(AddDays(Date(2008, 2, 28), 2), Date(2008, 3, 1));
    EXPECT_EQ(AddDays(Date(2007, 12, 31), 1), Date(2008, 1, 1));
    EXPECT_EQ(AddDays(Date(2008, 1, 1), 366), Date(2009, 1, 1));
}

TEST(AddDays, ANegativeNumberStepsBack) {
    EXPECT_EQ(AddDays(Date(2008, 3, 1), -1), Date(2008, 2, 29));
    EXPECT_EQ(AddDays(Date(2008, 1, 1), -1), Date(2007, 12, 31));
    EXPECT_EQ(AddDays(Date(2009, 1, 1), -366), Date(2008, 1, 1));
}

TEST(AddDays, NoDaysLeaveTheDateEvenWhenItIsImpossible) {
    EXPECT_EQ(AddDays(Date(2008, 2, 31), 0), Date(2008, 2, 31));
    EXPECT_EQ(AddDays(SystemTime{}, 0), SystemTime{});
}

TEST(AddDays, TheDayOfWeekAndTheTimeStayAsTheyWere) {
    const SystemTime date{2008, 11, 4, 13, 10, 15, 30, 250};
    const SystemTime later = AddDays(date, 1);
    EXPECT_EQ(later.day, 14);
    EXPECT_EQ(later.dayOfWeek, 4);
    EXPECT_EQ(later.hour, 10);
    EXPECT_EQ(later.milliseconds, 250);
}

TEST(AddDays, EndsAtTheFirstAndTheLastDayThatFit) {
    EXPECT_EQ(AddDays(Date(65535, 12, 30), 5), Date(65535, 12, 31));
    EXPECT_EQ(AddDays(Date(0, 1, 3), -5), Date(0, 1, 1));
    EXPECT_EQ(AddDays(Date(2008, 11, 13), 2147483647).year, 65535);
}

TEST(CompareSystemTimes, EachFieldDecidesWhenThoseBeforeItAreEqual) {
    const SystemTime base{2008, 11, 4, 13, 10, 15, 30, 250};
    std::vector<SystemTime> later(7, base);
    ++later[0].year;
    ++later[1].month;
    ++later[2].day;
    ++later[3].hour;
    ++later[4].minute;
    ++later[5].second;
    ++later[6].milliseconds;
    for (std::size_t i = 0; i < later.size(); ++i) {
        EXPECT_EQ(CompareSystemTimes(base, later[i]), -1) << i;
        EXPECT_EQ(CompareSystemTimes(later[i], base), 1) << i;
        // An earlier field outweighs all later ones.
        if (i > 0) {
            EXPECT_EQ(CompareSystemTimes(later[i], later[i - 1]), -1) << i;
        }
    }
    EXPECT_EQ(CompareSystemTimes(base, base), 0);
}

TEST(CompareSystemTimes, TheDayOfWeekDoesNotCount) {
    SystemTime a = Date(2008, 11, 13), b = a;
    a.dayOfWeek = 6;
    EXPECT_EQ(CompareSystemTimes(a, b), 0);
}

TEST(SystemTimeLessOrEqual, IsTrueForEqualDates) {
    EXPECT_TRUE(SystemTimeLessOrEqual(Date(2008, 11, 13), Date(2008, 11, 13)));
    EXPECT_TRUE(SystemTimeLessOrEqual(Date(2008, 11, 13), Date(2008, 11, 14)));
    EXPECT_FALSE(SystemTimeLessOrEqual(Date(2008, 11, 14), Date(2008, 11, 13)));
}

TEST(DateToNumber, CountsMonthsOfThirtyOneDays) {
    EXPECT_DOUBLE_EQ(DateToNumber(SystemTime{2008, 6, 0, 31, 12, 59, 59, 999}),
                     2008 + 6 / 12.0 + 31 / 372.0 + 12 / 8928.0);
    const double hour = 1 / 8928.0;
    EXPECT_NEAR(DateToNumber(SystemTime{2008, 11, 0, 13, 11, 0, 0, 0}) -
                    DateToNumber(SystemTime{2008, 11, 0, 13, 10, 0, 0, 0}),
                hour, 1e-9);
}

TEST(ApplyDayEnd, SmallHoursBelongToTheDayBefore) {
    const auto dayOf = [](SystemTime moment, int dayEnd) {
        const SystemTime day = ApplyDayEnd(moment, dayEnd);
        EXPECT_EQ(day.hour, moment.hour);
        EXPECT_EQ(day.minute, moment.minute);
        EXPECT_EQ(day.dayOfWeek, moment.dayOfWeek);
        return std::vector<int>{day.year, day.month, day.day};
    };
    using Day = std::vector<int>;
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 1, 59, 0, 0}, 26), (Day{2008, 11, 12}));
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 2, 0, 0, 0}, 26), (Day{2008, 11, 13}));
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 0, 0, 0, 0}, 24), (Day{2008, 11, 13})) << "the rule never applies";
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 0, 0, 0, 0}, 25), (Day{2008, 11, 12}));
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 1, 0, 0, 0}, 25), (Day{2008, 11, 13}));
    EXPECT_EQ(dayOf({2008, 12, 3, 31, 1, 30, 0, 0}, 26), (Day{2008, 12, 30}));
    EXPECT_EQ(dayOf({2009, 1, 4, 1, 1, 30, 0, 0}, 26), (Day{2008, 12, 31}));
    EXPECT_EQ(dayOf({2008, 3, 6, 1, 3, 0, 0, 0}, 28), (Day{2008, 2, 29})) << "a leap year";
    EXPECT_EQ(dayOf({2009, 3, 0, 1, 3, 0, 0, 0}, 28), (Day{2009, 2, 28}));
    EXPECT_EQ(dayOf({2008, 11, 4, 13, 23, 0, 0, 0}, 48), (Day{2008, 11, 12}));
}

}  // namespace
}  // namespace kalmora
