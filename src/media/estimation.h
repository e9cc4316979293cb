// Estimations: the user's running rating of a photo on three axes, kept inside the photo as mark-up.
#pragma once

#include <cstdint>
#include <string_view>

namespace kalmora {

// What the user says of a photo. A command's number is the type plus 1099.
enum class EstimateType : int {
    Like = 1,
    Public = 2,
    Good = 3,
    Dislike = 4,
    Private = 5,
    Bad = 6,
    Clear = 7
};

// 0 means no rating on that axis; the sign is its direction, the amount how often it was given.
struct Estimations {
    std::int32_t like = 0;     // above 0 liked, below 0 disliked
    std::int32_t good = 0;     // above 0 good, below 0 bad
    std::int32_t privacy = 0;  // above 0 public, below 0 private
    friend bool operator==(const Estimations&, const Estimations&) = default;
};

inline constexpr std::string_view kEstimationsOpening = "<estimations>";

// The values in the mark-up
//     <estimations><estimation type='like' value='192' last='64'>...</estimation>...</estimations>
// that is anywhere in `text`, up to its first zero byte. The mark-up is found byte for byte by its
// literal words and is no XML; an axis that is missing or unreadable is 0.
Estimations ParseEstimations(std::string_view text);

// How large a photo with this `like` is drawn, as a factor: 0.2 to 2.0.
double EstimateScale(std::int32_t like);

}  // namespace kalmora
