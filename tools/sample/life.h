#pragma once

#include <string>
#include <vector>

#include "stamp.h"
#include "tables.h"

namespace sample {

enum class Weather { Clear, Fair, Cloudy };

struct Camera {
    const char* maker;
    const char* model;
    const char* software;
    bool bigEndian;
};
const Camera& CameraAt(int index);

// One photo: when it is taken, of what, with which camera, and what its owner thinks of it.
struct Shot {
    Stamp when;
    const Scene* scene = nullptr;
    Weather weather = Weather::Fair;
    int width = 1600;
    int height = 1200;
    int camera = 0;
    int orientation = 1;  // as the camera stores it: 1 upright, 6 and 8 lying on a side
    std::uint32_t seed = 1;
    std::string fileName;
    std::string comment;
    std::string estimations;
};

// A drawing, or the scene of a movie, beside the photos.
struct Extra {
    Stamp when;
    const char* drawing;
    const char* comment;
};

// The invented life up to and through the month of `today`.
struct Life {
    std::vector<Shot> shots;  // by time
    std::vector<Extra> drawings;
    std::vector<Extra> movies;
};

// About `count` photos: at least one on every day of today's month, the rest over the three years before it.
// The same today, count and seed give the same life. The shots refer to `scenes`.
Life PlanLife(const std::vector<Scene>& scenes, const std::vector<Occasion>& occasions, const Stamp& today,
              int count, std::uint64_t seed);

}  // namespace sample
