#include "media/date_text.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <span>

namespace kalmora {

namespace {

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads fields out of a text by a pattern: 'd' is a number of any length, '4' and '2' one of at most so many
// characters, a blank any number of blanks (also none), anything else itself.
class FieldScan {
public:
    explicit FieldScan(std::string_view text) : text_(text) {}

    // How many fields were filled before the text and the pattern parted.
    int Run(std::string_view pattern, std::span<int> fields) {
        std::size_t filled = 0;
        for (const char step : pattern) {
            if (step == ' ') {
                SkipBlanks();
            } else if (step == 'd' || step == '4' || step == '2') {
                const std::size_t width = step == 'd' ? text_.size() : static_cast<std::size_t>(step - '0');
                if (filled == fields.size() || !Number(width, fields[filled])) break;
                ++filled;
            } else {
                if (at_ >= text_.size() || text_[at_] != step) break;
                ++at_;
            }
        }
        return static_cast<int>(filled);
    }

private:
    void SkipBlanks() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    }

    bool Number(std::size_t width, int& value) {
        SkipBlanks();
        const std::size_t end = width < text_.size() - at_ ? at_ + width : text_.size();
        const bool negative = at_ < end && text_[at_] == '-';
        if (at_ < end && (text_[at_] == '-' || text_[at_] == '+')) ++at_;
        if (at_ >= end || !IsDigit(text_[at_])) return false;
        std::int64_t number = 0;
        for (; at_ < end && IsDigit(text_[at_]); ++at_)
            if (number < std::numeric_limits<int>::max()) number = number * 10 + (text_[at_] - '0');
        if (number > std::numeric_limits<int>::max()) number = std::numeric_limits<int>::max();
        value = static_cast<int>(negative ? -number : number);
        return true;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

using Fields = std::array<int, 6>;

// A SystemTime has 16 bits for each field; what is larger was no date anyway.
SystemTime ToSystemTime(const Fields& fields) {
    SystemTime date;
    date.year = static_cast<std::uint16_t>(fields[0]);
    date.month = static_cast<std::uint16_t>(fields[1]);
    date.day = static_cast<std::uint16_t>(fields[2]);
    date.hour = static_cast<std::uint16_t>(fields[3]);
    date.minute = static_cast<std::uint16_t>(fields[4]);
    date.second = static_cast<std::uint16_t>(fields[5]);
    return date;
}

}  // namespace

bool ParseExifDate(std::string_view text, SystemTime& date) {
    // The second scan writes over what the first one found and leaves the rest: a date in yet another form
    // gives its year alone and counts as one. Callers replace a date without a day by the file's.
    Fields fields{};
    if (FieldScan(text).Run("d:d:d d:d:d", fields) < 6) FieldScan(text).Run("d/d/d d:d:d", fields);
    date = ToSystemTime(fields);
    return date.year != 0 || date.month != 0 || date.day != 0;
}

bool ParseStampDate(std::string_view text, SystemTime& date) {
    Fields fields{};
    if (FieldScan(text).Run("d:d:d d:d:d", fields) < 6) return false;
    date = ToSystemTime(fields);
    return true;
}

bool ParseNoteDate(std::string_view line, SystemTime& date) {
    Fields fields{};
    if (FieldScan(line).Run("[4/2/2 2:2", fields) < 5) {
        fields = {};
        if (FieldScan(line).Run("[4/2/2 2", fields) < 4) return false;
    }
    date = ToSystemTime(fields);
    return true;
}

std::string StampText(const SystemTime& date) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d:%02d:%02d %02d:%02d:%02d", date.year, date.month, date.day,
                  date.hour, date.minute, date.second);
    return text;
}

}  // namespace kalmora
