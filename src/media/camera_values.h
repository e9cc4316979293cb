// What the camera wrote down about a picture.
#pragma once

#include <cstdint>

namespace kalmora {

// As search and index work with them: first words, so a rational counts as its numerator alone and cameras
// with other denominators give other numbers. 0 where the photo has no such tag.
struct CameraValues {
    std::int32_t iso = 0;
    std::int32_t shutter = 0;
    std::int32_t brightness = 0;
    std::int32_t flash = 0;
    std::int32_t exposureBias = 0;
    std::int32_t exposureTime = 0;
    std::int32_t exposureProgram = 0;
    std::int32_t aperture = 0;
    std::int32_t mode = 0;  // picture mode of the maker note
    std::int32_t face = 0;  // 1 when the maker note has a face in it
    friend bool operator==(const CameraValues&, const CameraValues&) = default;
};

}  // namespace kalmora
