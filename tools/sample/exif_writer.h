#pragma once

#include "bytes.h"
#include "stamp.h"

namespace sample {

// What a camera notes in a photo.
struct ExifNote {
    ByteOrder order = ByteOrder::Little;
    std::string maker;
    std::string model;
    std::string software;
    Stamp taken;
    int orientation = 1;
    std::uint32_t width = 0;  // as stored, before it is set upright
    std::uint32_t height = 0;
    std::uint32_t shutterDenominator = 125;  // the exposure lasts 1/n s
    float aperture = 5.6f;
    std::uint32_t iso = 100;
    float bias = 0;
    bool flash = false;
    float focalLength = 8.0f;
    std::string comment;                  // UTF-8; empty: none
    std::string estimations;              // the mark-up of the ratings; empty: none
    std::vector<std::uint8_t> thumbnail;  // a JPEG
};

// The content of the APP1 segment, from "Exif" on.
std::vector<std::uint8_t> ExifSegment(const ExifNote& note);

}  // namespace sample
