#include "platform/clock.h"

#include <atomic>
#include <cerrno>
#include <ctime>

#include "platform/posix/unix_time.h"

namespace kalmora {

namespace {

timespec Now(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now;
}

double Milliseconds(const timespec& time) {
    return static_cast<double>(time.tv_sec) * 1000.0 + static_cast<double>(time.tv_nsec) / 1e6;
}

const double startMs = Milliseconds(Now(CLOCK_MONOTONIC));

SystemTime FromBrokenDown(const std::tm& local, long nanoseconds) {
    const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
    SystemTime time;
    time.year = field(local.tm_year + 1900);
    time.month = field(local.tm_mon + 1);
    time.dayOfWeek = field(local.tm_wday);
    time.day = field(local.tm_mday);
    time.hour = field(local.tm_hour);
    time.minute = field(local.tm_min);
    time.second = field(local.tm_sec > 59 ? 59 : local.tm_sec);  // a leap second has no place in the record
    time.milliseconds = field(static_cast<int>(nanoseconds / 1'000'000));
    return time;
}

class SystemClock final : public Clock {
public:
    SystemTime LocalTime() override {
        const timespec now = Now(CLOCK_REALTIME);
        std::tm local{};
        if (!localtime_r(&now.tv_sec, &local)) return {};
        return FromBrokenDown(local, now.tv_nsec);
    }
    double UptimeMs() override { return Milliseconds(Now(CLOCK_MONOTONIC)) - startMs; }
    void SleepMs(int milliseconds) override {
        if (milliseconds <= 0) return;
        timespec until = Now(CLOCK_MONOTONIC);
        until.tv_sec += milliseconds / 1000;
        until.tv_nsec += (milliseconds % 1000) * 1'000'000L;
        if (until.tv_nsec >= 1'000'000'000L) {
            until.tv_nsec -= 1'000'000'000L;
            ++until.tv_sec;
        }
        // An absolute end: a signal in between does not make the sleep longer.
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
        }
    }
};

SystemClock systemClock;
std::atomic<Clock*> clockInForce{nullptr};

bool IsLeapYear(int year) { return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0); }

bool IsPossible(const SystemTime& time) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (time.year < 1601 || time.year > 30827 || time.month < 1 || time.month > 12) return false;
    const int days = time.month == 2 && IsLeapYear(time.year) ? 29 : kDays[time.month - 1];
    return time.day >= 1 && time.day <= days && time.hour < 24 && time.minute < 60 && time.second < 60 &&
           time.milliseconds < 1000;
}

}  // namespace

Clock& TheClock() {
    Clock* replaced = clockInForce.load(std::memory_order_acquire);
    return replaced ? *replaced : systemClock;
}

void SetClock(Clock* clock) { clockInForce.store(clock, std::memory_order_release); }

SystemTime ToLocalSystemTime(FileTime time) {
    if (time.ticks == 0) return {};
    const timespec unixTime = ToUnixTime(time);
    std::tm local{};
    if (!localtime_r(&unixTime.tv_sec, &local)) return {};
    if (local.tm_year + 1900 < 1601 || local.tm_year + 1900 > 30827) return {};
    return FromBrokenDown(local, unixTime.tv_nsec);
}

FileTime ToFileTime(const SystemTime& local) {
    if (!IsPossible(local)) return {};
    std::tm fields{};
    fields.tm_year = local.year - 1900;
    fields.tm_mon = local.month - 1;
    fields.tm_mday = local.day;
    fields.tm_hour = local.hour;
    fields.tm_min = local.minute;
    fields.tm_sec = local.second;
    fields.tm_isdst = -1;
    fields.tm_wday = -1;  // filled in on success: -1 as a result is also a good time, one second before 1970
    const std::time_t seconds = std::mktime(&fields);
    if (seconds == static_cast<std::time_t>(-1) && fields.tm_wday < 0) return {};
    return FromUnixTime(seconds, local.milliseconds * 1'000'000L);
}

FileTime CurrentFileTime() {
    const timespec now = Now(CLOCK_REALTIME);
    return FromUnixTime(now.tv_sec, now.tv_nsec);
}

int DayOfWeek(int year, int month, int day) {
    // Months count from March, so that the leap day is the last of its year. 400 years are whole weeks.
    const long long monthsSinceZero = static_cast<long long>(year) * 12 + month - 3;
    long long y = monthsSinceZero / 12, m = monthsSinceZero % 12;
    if (m < 0) {
        m += 12;
        --y;
    }
    const long long yearOfEra = ((y % 400) + 400) % 400;
    const long long days = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + (153 * m + 2) / 5 +
                           static_cast<long long>(day) - 1;
    return static_cast<int>(((days + 3) % 7 + 7) % 7);  // 0000-03-01 was a Wednesday
}

}  // namespace kalmora
