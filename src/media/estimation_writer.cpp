#include "media/estimation_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>

namespace kalmora {

namespace {

constexpr std::string_view kClosing = "</estimations>";
constexpr std::int32_t kFirstStep = 128;

enum class Direction : int { Up = 1, Down = -1 };

struct Rating {
    EstimateType type;
    const char* axis;  // as it is written in the mark-up
    std::int32_t Estimations::*value;
    Direction direction;
};

constexpr std::array<Rating, 6> kRatings{{
    {EstimateType::Like, "like", &Estimations::like, Direction::Up},
    {EstimateType::Public, "privacy", &Estimations::privacy, Direction::Up},
    {EstimateType::Good, "good", &Estimations::good, Direction::Up},
    {EstimateType::Dislike, "like", &Estimations::like, Direction::Down},
    {EstimateType::Private, "privacy", &Estimations::privacy, Direction::Down},
    {EstimateType::Bad, "good", &Estimations::good, Direction::Down},
}};

const Rating* RatingOf(EstimateType type) {
    const auto found = std::find_if(kRatings.begin(), kRatings.end(),
                                    [type](const Rating& rating) { return rating.type == type; });
    return found == kRatings.end() ? nullptr : &*found;
}

std::string Head(const char* axis, std::int32_t value, std::int32_t last) {
    char text[96];
    std::snprintf(text, sizeof text, "<estimation type='%s' value='%d' last='%d'>", axis, value, last);
    return text;
}

std::string Row(const CalendarDate& today, std::int32_t value) {
    char text[96];
    std::snprintf(text, sizeof text, "<log date='%04d/%02d/%02d' value='%d'/>", today.year, today.month,
                  today.day, value);
    return text;
}

std::string FirstElement(const Rating& rating, const CalendarDate& today) {
    const std::int32_t value = static_cast<int>(rating.direction) * kFirstStep;
    return Head(rating.axis, value, kFirstStep) + Row(today, value) + "</estimation>";
}

void RemoveBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

// Takes the words off the front; a blank in them matches any number of blanks.
bool TakeWords(std::string_view& text, std::string_view words) {
    for (const char c : words) {
        if (c == ' ') {
            RemoveBlanks(text);
        } else {
            if (!text.starts_with(c)) return false;
            text.remove_prefix(1);
        }
    }
    return true;
}

std::optional<std::int32_t> TakeNumber(std::string_view& text) {
    RemoveBlanks(text);
    if (text.starts_with("+-")) return std::nullopt;
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

struct Axis {
    std::int32_t value = 0, last = 0;
};

// Both 0 unless both can be read.
Axis ReadAxis(std::string_view behindType) {
    if (!TakeWords(behindType, " value='")) return {};
    const auto value = TakeNumber(behindType);
    if (!value || !TakeWords(behindType, "' last='")) return {};
    const auto last = TakeNumber(behindType);
    return last ? Axis{*value, *last} : Axis{};
}

// No user rates that often, but other writers may leave any number.
std::int32_t Clamped(std::int64_t value) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

void StepAxis(std::string& text, std::size_t at, const Rating& rating, const CalendarDate& today,
              Estimations& values) {
    const std::size_t typeLength =
        std::string_view("<estimation type=''").size() + std::string_view(rating.axis).size();
    const Axis axis = ReadAxis(std::string_view(text).substr(at + typeLength));
    const std::size_t next = text.find('<', at + 1);
    text.erase(at, next == std::string::npos ? next : next - at);
    const auto step = static_cast<std::int32_t>(0.5 * axis.last + 0.5);
    const std::int32_t value =
        Clamped(std::int64_t{axis.value} + std::int64_t{static_cast<int>(rating.direction)} * step);
    text.insert(at, Head(rating.axis, value, step) + Row(today, value));
    values.*rating.value = value;
}

}  // namespace

EstimateStep StepEstimate(std::string_view text, const Estimations& values, EstimateType type,
                          const CalendarDate& today) {
    EstimateStep step{std::string(text.substr(0, text.find('\0'))), values};
    const std::size_t opening = step.text.find(kEstimationsOpening);
    if (type == EstimateType::Clear) {
        if (opening == std::string::npos) return step;
        step.values = {};
        // Without its end the block cannot be taken out; the values come back with the next reading: meant.
        if (const std::size_t closing = step.text.find(kClosing); closing != std::string::npos)
            step.text.erase(0, closing + kClosing.size());
        return step;
    }
    const Rating* rating = RatingOf(type);
    if (!rating) return step;
    const std::int32_t first = static_cast<int>(rating->direction) * kFirstStep;
    if (opening == std::string::npos) {
        step.text +=
            "\n" + std::string(kEstimationsOpening) + FirstElement(*rating, today) + std::string(kClosing);
        step.values.*rating->value = first;
        return step;
    }
    const std::size_t element = step.text.find("<estimation type='" + std::string(rating->axis) + "'");
    // One at the very beginning counts as missing, as it does when it is read.
    if (element == std::string::npos || element == 0) {
        step.text.insert(opening + kEstimationsOpening.size(), FirstElement(*rating, today));
        step.values.*rating->value = first;
        return step;
    }
    StepAxis(step.text, element, *rating, today, step.values);
    return step;
}

}  // namespace kalmora
