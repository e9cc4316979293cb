#include "media/estimation.h"

#include <array>
#include <charconv>

namespace kalmora {

namespace {

struct ScaleRow {
    std::int32_t above;
    double factor;
};

// The bounds are the values that one to five ratings in the same direction reach, less one.
constexpr std::array<ScaleRow, 6> kLiked{
    {{247, 2.0}, {239, 1.8}, {223, 1.6}, {191, 1.4}, {127, 1.2}, {63, 1.1}}};
constexpr std::array<ScaleRow, 6> kDisliked{
    {{247, 0.2}, {239, 0.4}, {223, 0.5}, {191, 0.7}, {127, 0.8}, {63, 0.9}}};

std::string_view SkipBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// The number behind value=' in an element that begins with `head`; 0 when it is not there.
std::int32_t ValueOf(std::string_view text, std::string_view head) {
    constexpr std::string_view kValue = "value='";
    const std::size_t at = text.find(head);
    // An element at the very beginning counts as missing: a real one follows the block's opening.
    if (at == std::string_view::npos || at == 0) return 0;
    std::string_view rest = SkipBlanks(text.substr(at + head.size()));
    if (!rest.starts_with(kValue)) return 0;
    rest = SkipBlanks(rest.substr(kValue.size()));
    if (rest.starts_with('+')) {
        rest.remove_prefix(1);
        if (rest.starts_with('-')) return 0;
    }
    std::int32_t value = 0;
    std::from_chars(rest.data(), rest.data() + rest.size(), value);
    return value;
}

}  // namespace

Estimations ParseEstimations(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    Estimations values;
    if (text.find(kEstimationsOpening) == std::string_view::npos) return values;
    values.like = ValueOf(text, "<estimation type='like'");
    values.privacy = ValueOf(text, "<estimation type='privacy'");
    values.good = ValueOf(text, "<estimation type='good'");
    return values;
}

double EstimateScale(std::int32_t like) {
    for (const ScaleRow& row : kLiked)
        if (like > row.above) return row.factor;
    for (const ScaleRow& row : kDisliked)
        if (like < -row.above) return row.factor;
    return 1.0;
}

}  // namespace kalmora
