#include "tables.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace sample {

namespace {

std::ifstream Open(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw BadTable("cannot read " + path);
    return file;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The cells of each line that is neither empty nor a remark.
std::vector<std::vector<std::string>> Rows(const std::string& path, std::size_t cells) {
    std::ifstream file = Open(path);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> row;
        std::istringstream text(line);
        for (std::string cell; std::getline(text, cell, '|');) row.push_back(Trimmed(cell));
        if (row.size() != cells) throw BadTable(path + ": " + line);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::uint32_t Months(int first, int last) {
    std::uint32_t bits = 0;
    for (int month = first; month >= 1 && month <= 12; month = month % 12 + 1) {
        bits |= 1u << month;
        if (month == last) break;
    }
    return bits;
}

Light LightOf(const std::string& name) {
    constexpr std::array<const char*, 5> names = {"day", "rain", "dusk", "night", "inside"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (name == names[i]) return static_cast<Light>(i);
    }
    throw BadTable("scenes.txt: unknown light " + name);
}

}  // namespace

std::vector<Scene> ReadScenes(const std::string& folder) {
    std::vector<Scene> scenes;
    for (const std::vector<std::string>& row : Rows(folder + "/scenes.txt", 7)) {
        Scene scene;
        scene.name = row[0];
        int first = 0, last = 0, fromHour = 0, fromMinute = 0, toHour = 0, toMinute = 0;
        if (std::sscanf(row[1].c_str(), "%d-%d", &first, &last) == 2) scene.months = Months(first, last);
        if (std::sscanf(row[2].c_str(), "%d:%d-%d:%d", &fromHour, &fromMinute, &toHour, &toMinute) != 4) {
            throw BadTable("scenes.txt: the hours of " + scene.name);
        }
        scene.from = static_cast<float>(fromHour * 60 + fromMinute) / 60.0f;
        scene.to = static_cast<float>(toHour * 60 + toMinute) / 60.0f;
        scene.light = LightOf(row[3]);
        scene.upright = row[4] != "-";
        if (scene.upright) scene.focus = std::stof(row[4]) / 100.0f;
        scene.english = row[5];
        scene.japanese = row[6];
        scenes.push_back(std::move(scene));
    }
    if (scenes.empty()) throw BadTable(folder + "/scenes.txt: no scene");
    return scenes;
}

std::vector<Occasion> ReadOccasions(const std::string& folder) {
    std::vector<Occasion> occasions;
    for (const std::vector<std::string>& row : Rows(folder + "/occasions.txt", 4)) {
        Occasion occasion;
        if (std::sscanf(row[0].c_str(), "%d/%d", &occasion.month, &occasion.day) != 2 ||
            std::sscanf(row[1].c_str(), "%d", &occasion.days) != 1) {
            throw BadTable("occasions.txt: " + row[0]);
        }
        for (const char year : row[2]) occasion.years |= 1u << (year - '0');
        std::istringstream names(row[3]);
        for (std::string name; names >> name;) occasion.scenes.push_back(name);
        occasions.push_back(std::move(occasion));
    }
    return occasions;
}

std::vector<Note> ReadNotes(const std::string& folder, const Stamp& today) {
    std::ifstream file = Open(folder + "/notes.txt");
    std::vector<Note> notes;
    bool fits = false;  // the note that is being read
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("== ")) {
            Note note{today, ""};
            int first = 1, second = 12;
            char word[8] = "months";
            std::sscanf(line.c_str(), "== %d %d:%d %7s %d%*[- ]%d", &note.when.day, &note.when.hour,
                        &note.when.minute, word, &first, &second);
            const bool older = word[0] == 'o';
            if (older) {
                note.when.month = first;
                note.when.year -= second + (first >= today.month ? 1 : 0);
            }
            note.when.second = 0;
            fits = older || (today.month >= first && today.month <= second);
            if (fits) notes.push_back(note);
        } else if (fits) {
            const Stamp& w = notes.back().when;
            if (line == "{when}") {
                line = Format("[%04d/%02d/%02d %02d:%02d]", w.year, w.month, w.day, w.hour, w.minute);
            }
            notes.back().text += line + "\n";
        }
    }
    // The empty line in front of the next note is no part of this one.
    for (Note& note : notes) {
        while (note.text.ends_with("\n\n")) note.text.pop_back();
    }
    return notes;
}

}  // namespace sample
