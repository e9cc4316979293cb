#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "stamp.h"

namespace sample {

// What the light of a scene is, which decides how hour and weather change a photo of it.
enum class Light { Day, Rain, Dusk, Night, Inside };

// A row of scenes.txt.
struct Scene {
    std::string name;          // of the drawing
    std::uint32_t months = 0;  // bit 1 January to bit 12 December
    float from = 0;            // hours
    float to = 0;
    Light light = Light::Day;
    bool upright = false;  // looks well in portrait format
    float focus = 0.5f;    // where an upright photo looks: part of the width from the left
    std::string english;
    std::string japanese;
};

// A row of occasions.txt.
struct Occasion {
    int month = 1;
    int day = 1;
    int days = 1;
    std::uint32_t years = 0;          // bit 0 this year, bit 1 last year ...
    std::vector<std::string> scenes;  // names or the beginnings of names
};

struct Note {
    Stamp when;
    std::string text;
};

// A table in the folder of the scenes is missing or wrong; what() names it.
struct BadTable : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The tables that lie beside the rendered scenes. They throw BadTable.
std::vector<Scene> ReadScenes(const std::string& folder);
std::vector<Occasion> ReadOccasions(const std::string& folder);
// The notes of a log that is made for the month of `today`.
std::vector<Note> ReadNotes(const std::string& folder, const Stamp& today);

}  // namespace sample
