#pragma once

#include <string>
#include <vector>

#include "stage.h"
#include "stamp.h"

namespace sample {

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
    void (*paint)(Stage&) = nullptr;
    Weather weather = Weather::Fair;
    bool indoors = false;
    int width = 1600;
    int height = 1200;
    int camera = 0;
    int orientation = 1;  // as the camera stores it: 1 upright, 6 and 8 lying on a side
    std::uint32_t seed = 1;
    std::string fileName;
    std::string comment;
    std::string estimations;
};

struct Note {
    Stamp when;
    std::string text;
};

struct Drawing {
    Stamp when;
    int subject = 0;
    const char* comment = "";
};

struct Movie {
    Stamp when;
    int subject = 0;
};

// The invented life up to and through the month of `today`.
struct Life {
    std::vector<Shot> shots;  // by time
    std::vector<Note> notes;
    std::vector<Drawing> drawings;
    std::vector<Movie> movies;
};

// About `count` photos: at least one on every day of today's month, the rest over the three years
// before it. The same today, count and seed give the same life.
Life PlanLife(const Stamp& today, int count, std::uint64_t seed);

// notes.cpp
std::vector<Note> WriteNotes(const Stamp& today);

}  // namespace sample
