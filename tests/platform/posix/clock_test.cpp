#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <thread>

#include "scoped_variable.h"
#include "support/still_clock.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

// Another time zone for a scope.
class ScopedZone {
public:
    explicit ScopedZone(const std::string& zone)
        : variable_(std::make_unique<test::ScopedVariable>("TZ", zone)) {
        tzset();
    }
    ~ScopedZone() {
        variable_.reset();
        tzset();
    }
    ScopedZone(const ScopedZone&) = delete;
    ScopedZone& operator=(const ScopedZone&) = delete;

private:
    std::unique_ptr<test::ScopedVariable> variable_;
};

SystemTime Date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                int milliseconds = 0) {
    const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
    return {field(year),   field(month),       field(DayOfWeek(year, month, day)),
            field(day),    field(hour),        field(minute),
            field(second), field(milliseconds)};
}

constexpr std::uint64_t k1970 = 116'444'736'000'000'000ull;

TEST(Clock, TellsTheLocalTimeOfTheMachine) {
    const std::uint64_t before = CurrentFileTime().ticks;
    const std::uint64_t given = ToFileTime(LocalTime()).ticks;
    const std::uint64_t after = CurrentFileTime().ticks;
    constexpr std::uint64_t kMillisecond = 10'000;
    EXPECT_GE(given + kMillisecond, before);
    EXPECT_LE(given, after);
}

TEST(Clock, UptimeNeverGoesBack) {
    double last = UptimeMs();
    EXPECT_GE(last, 0);
    for (int i = 0; i < 10'000; ++i) {
        const double now = UptimeMs();
        ASSERT_GE(now, last);
        last = now;
    }
}

TEST(Clock, SleepsAtLeastAsLongAsAsked) {
    const double before = UptimeMs();
    SleepMs(20);
    EXPECT_GE(UptimeMs() - before, 20.0);
    const double none = UptimeMs();
    SleepMs(0);
    SleepMs(-5);
    EXPECT_LT(UptimeMs() - none, 1000.0);
}

TEST(Clock, CanBeReplacedAndPutBack) {
    {
        test::StillClock fixed;
        fixed.uptimeMs = 1234;
        EXPECT_EQ(LocalTime(), (SystemTime{2008, 11, 4, 13, 10, 15, 30, 250}));
        EXPECT_EQ(UptimeMs(), 1234.0);
        SleepMs(3'600'000);
        EXPECT_EQ(fixed.sleptMs, 3'600'000);
    }
    EXPECT_GT(LocalTime().year, 2020);
}

TEST(FileTime, CountsFrom1601InUtc) {
    const ScopedZone utc("UTC0");
    EXPECT_EQ(ToFileTime(Date(1970, 1, 1)).ticks, k1970);
    EXPECT_EQ(ToFileTime(Date(1601, 1, 2)).ticks, 864'000'000'000u);
    EXPECT_EQ(ToFileTime(Date(2008, 11, 13, 10, 15, 30, 250)).ticks, 128'710'449'302'500'000u);
    EXPECT_EQ(ToLocalSystemTime({k1970}), Date(1970, 1, 1));
    EXPECT_EQ(ToLocalSystemTime({k1970 - 1}), Date(1969, 12, 31, 23, 59, 59, 999));
    EXPECT_EQ(ToLocalSystemTime({128'710'449'302'500'000}), Date(2008, 11, 13, 10, 15, 30, 250));
}

TEST(FileTime, KnowsTheSecondBefore1970) {
    const ScopedZone utc("UTC0");
    EXPECT_EQ(ToFileTime(Date(1969, 12, 31, 23, 59, 59)).ticks, k1970 - 10'000'000);
}

TEST(FileTime, IsReadInTheLocalZone) {
    const ScopedZone japan("JST-9");
    EXPECT_EQ(ToLocalSystemTime({k1970}), Date(1970, 1, 1, 9));
    EXPECT_EQ(ToFileTime(Date(1970, 1, 1, 9)).ticks, k1970);
}

TEST(FileTime, FollowsSummerTime) {
    const ScopedZone berlin("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(ToFileTime(Date(2008, 7, 1, 2)).ticks, ToFileTime(Date(2008, 7, 1, 1)).ticks + 36'000'000'000u);
    const std::uint64_t winter = ToFileTime(Date(2008, 3, 30, 1)).ticks;
    EXPECT_EQ(ToFileTime(Date(2008, 3, 30, 3)).ticks, winter + 36'000'000'000u);
    EXPECT_NE(ToFileTime(Date(2008, 3, 30, 2, 30)).ticks, 0u) << "an hour that the clocks leave out";
}

TEST(FileTime, ComesBackForEveryDayOfFourHundredYears) {
    const ScopedZone japan("JST-9");
    for (std::uint64_t ticks = k1970 - 200ull * 365 * 864'000'000'000;
         ticks < k1970 + 200ull * 365 * 864'000'000'000; ticks += 864'000'000'000ull * 7 + 12'340'000) {
        const SystemTime local = ToLocalSystemTime({ticks});
        ASSERT_EQ(ToFileTime(local).ticks, ticks) << local.year << ' ' << local.month << ' ' << local.day;
        ASSERT_EQ(local.dayOfWeek, DayOfWeek(local.year, local.month, local.day));
    }
}

TEST(FileTime, OfAnImpossibleDateIsNone) {
    const SystemTime impossible[] = {
        {},
        Date(2008, 13, 1),
        Date(2008, 0, 1),
        Date(2008, 11, 31),
        Date(2008, 11, 0),
        Date(2007, 2, 29),
        Date(1900, 2, 29),
        Date(2008, 11, 13, 24),
        Date(2008, 11, 13, 10, 60),
        Date(2008, 11, 13, 10, 15, 60),
        Date(2008, 11, 13, 10, 15, 30, 1000),
        Date(1600, 12, 31),
        Date(65535, 1, 1),
    };
    for (const SystemTime& time : impossible)
        EXPECT_EQ(ToFileTime(time).ticks, 0u) << time.year << ' ' << time.month << ' ' << time.day;
    EXPECT_NE(ToFileTime(Date(2008, 2, 29)).ticks, 0u);
    EXPECT_NE(ToFileTime(Date(2000, 2, 29)).ticks, 0u);
    EXPECT_NE(ToFileTime(Date(2008, 11, 30, 23, 59, 59, 999)).ticks, 0u);
}

TEST(FileTime, OfNoneIsAZeroDate) {
    EXPECT_EQ(ToLocalSystemTime({}), SystemTime{});
    EXPECT_EQ(ToLocalSystemTime({~std::uint64_t{0}}), SystemTime{}) << "later than the record can hold";
}

TEST(DayOfWeek, IsRightForKnownDays) {
    EXPECT_EQ(DayOfWeek(1970, 1, 1), 4);
    EXPECT_EQ(DayOfWeek(2000, 2, 29), 2);
    EXPECT_EQ(DayOfWeek(2008, 11, 13), 4);
    EXPECT_EQ(DayOfWeek(1601, 1, 1), 1);
    EXPECT_EQ(DayOfWeek(2024, 12, 29), 0);
    EXPECT_EQ(DayOfWeek(0, 3, 1), 3);
    EXPECT_EQ(DayOfWeek(-400, 3, 1), 3);
}

TEST(DayOfWeek, GoesUpByOneFromDayToDay) {
    using namespace std::chrono;
    const sys_days first = year{1599} / 12 / 1;
    for (int i = 0; i < 366 * 410; ++i) {
        const year_month_day date{first + days{i}};
        ASSERT_EQ(DayOfWeek(static_cast<int>(date.year()), static_cast<int>(unsigned(date.month())),
                            static_cast<int>(unsigned(date.day()))),
                  static_cast<int>(weekday{first + days{i}}.c_encoding()))
            << i;
    }
}

}  // namespace
}  // namespace kalmora
