// The Exif block of a made-up photo, laid out as cameras do: main directory, Exif directory with a maker note
// behind most of the values, thumbnail directory, thumbnail.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

using Bytes = std::vector<std::uint8_t>;

// How a maker of cameras writes its photos.
struct Camera {
    const char* make;
    const char* model;
    bool bigEndian;
    std::uint32_t makerNoteLength;  // bytes
};

// Two makers' notes end within the first 4 KiB of a photo, the others' do not.
inline constexpr Camera kCameras[] = {{"Aldgate", "Aldgate P90", false, 3000},
                                      {"BORG", "BRG-100", false, 14000},
                                      {"Cordelia", "CX-3", false, 7000},
                                      {"Dunmore Optical", "F10", true, 2000},
                                      {"ELMSTONE CORPORATION", "ELMSTONE D90", true, 9000}};

struct Shot {
    std::string date;     // "2008:11:13 10:15:00"
    std::string comment;  // ASCII; empty: none
    std::string marks;    // content of UserComment; empty: none
    std::uint32_t iso = 100;
    std::uint32_t exposure = 125;  // one part of a second
    std::uint32_t aperture = 28;   // tenths
    int width = 0, height = 0;     // pixels
};

// A whole APP1 segment, marker included. `thumbnail` is a JPEG, or empty for a photo without one; what does
// not fit a segment (64 KB) is the caller's mistake.
Bytes ExifSegment(const Camera& camera, const Shot& shot, const Bytes& thumbnail);

}  // namespace bench
