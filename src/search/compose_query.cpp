#include "search/compose_query.h"

#include <string_view>

#include "base/take_number.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::size_t kLongestKeyword = 1023;  // bytes of code page 932
constexpr std::size_t kLongestHour = 9;        // bytes

// One line: what was pasted may have several, or the end of one.
std::string OnOneLine(std::string keyword) {
    keyword.resize(keyword.find_last_not_of("\r\n") + 1);
    std::string line;
    for (std::size_t at = 0; at < keyword.size(); ++at) {
        const bool isPair = keyword[at] == '\r' && at + 1 < keyword.size() && keyword[at + 1] == '\n';
        if (!isPair) line += keyword[at] == '\r' || keyword[at] == '\n' ? ' ' : keyword[at];
    }
    return line;
}

std::string CutKeyword(const std::string& keyword) {
    if (text::Cp932Length(keyword) <= kLongestKeyword) return keyword;
    const std::string_view all = keyword;
    std::size_t bytes = 0, at = 0;
    while (at < all.size()) {
        const auto length = static_cast<std::size_t>(text::DecodeUtf8(all, at).length);
        bytes += text::Cp932Length(all.substr(at, length));
        if (bytes > kLongestKeyword) break;
        at += length;
    }
    return keyword.substr(0, at);
}

void Append(std::string& query, const std::string& term) {
    if (!query.empty()) query += ' ';
    query += term;
}

bool IsHour(int hour) { return hour >= 0 && hour < kHourChoices; }

// A text that is no number is 0, and an empty box leaves what was picked.
int TypedHour(const HourEntry& entry) {
    if (entry.typed.empty()) return entry.picked;
    const std::string digits = text::CutAtCharacter(text::Fold(entry.typed), kLongestHour);
    std::string_view rest = digits;
    return TakeNumber(rest).value_or(0);
}

void AppendHours(std::string& query, const HourEntry& first, const HourEntry& second) {
    int from = first.picked, to = second.picked;
    if (!IsHour(from) || !IsHour(to)) {
        from = TypedHour(first);
        to = TypedHour(second);
    }
    if (IsHour(from) && IsHour(to)) Append(query, "time:" + std::to_string(from) + "-" + std::to_string(to));
}

}  // namespace

std::string ComposeQuery(const SearchEntry& entry) {
    std::string query = CutKeyword(OnOneLine(entry.keyword));
    if (entry.face) Append(query, "tag:face");
    if (entry.nightMode) Append(query, "mode:5");
    if (entry.flash) Append(query, "flash:9");
    AppendHours(query, entry.from, entry.to);
    return query;
}

}  // namespace kalmora
