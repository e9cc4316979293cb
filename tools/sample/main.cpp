#include <algorithm>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <optional>
#include <thread>

#include "avi_writer.h"
#include "drawings.h"
#include "exif_writer.h"
#include "jpeg_writer.h"
#include "life.h"
#include "link_writer.h"
#include "png_writer.h"
#include "sample_folder.h"
#include "wav_writer.h"

namespace sample {

namespace {

constexpr int exitFailed = 1;
constexpr int exitWrongUse = 2;

struct Options {
    std::string folder;
    Stamp today;
    int count = 200;
    std::uint64_t seed = 1;
};

constexpr const char* usage =
    "usage: kalmora-sample DIR [--date YYYY-MM-DD] [--count N] [--seed S]\n"
    "\n"
    "Makes a sample life-log in DIR: photos over three years with the month of the date\n"
    "full, notes, drawings, music, two movies. DIR must be empty, missing, or a sample\n"
    "life-log made before; that of the same month is left as it is.\n";

Stamp Today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    Stamp today;
    today.year = local.tm_year + 1900;
    today.month = local.tm_mon + 1;
    today.day = local.tm_mday;
    return today;
}

template <class Number>
std::optional<Number> ParseNumber(std::string_view text, Number low, Number high) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
        return std::nullopt;
    }
    return value;
}

std::optional<Stamp> ParseDate(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const auto year = ParseNumber(text.substr(0, 4), 1990, 9999);
    const auto month = ParseNumber(text.substr(5, 2), 1, 12);
    const auto day = ParseNumber(text.substr(8, 2), 1, 31);
    if (!year || !month || !day || !(std::chrono::year(*year) / *month / *day).ok()) {
        return std::nullopt;
    }
    Stamp date;
    date.year = *year;
    date.month = *month;
    date.day = *day;
    return date;
}

// Empty when the arguments are understood, otherwise what is wrong with them.
std::string ParseArguments(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.empty() || argument[0] != '-') {
            if (!options.folder.empty() || argument.empty()) {
                return "exactly one folder is needed";
            }
            options.folder = argument;
            continue;
        }
        if (argument != "--date" && argument != "--count" && argument != "--seed") {
            return "unknown option " + argument;
        }
        if (i + 1 == argc) {
            return argument + " needs a value";
        }
        const std::string value = argv[++i];
        bool understood = false;
        if (argument == "--date") {
            const auto date = ParseDate(value);
            understood = date.has_value();
            options.today = date.value_or(options.today);
        } else if (argument == "--count") {
            const auto count = ParseNumber(value, 1, 5000);
            understood = count.has_value();
            options.count = count.value_or(options.count);
        } else {
            const auto seed = ParseNumber<std::uint64_t>(value, 0, UINT64_MAX);
            understood = seed.has_value();
            options.seed = seed.value_or(options.seed);
        }
        if (!understood) {
            return "bad value for " + argument + ": " + value;
        }
    }
    return options.folder.empty() ? "no folder given" : "";
}

// What a camera would have set for the light of the hour.
void SetExposure(ExifNote& note, const Shot& shot) {
    Rng rng(shot.seed ^ 0x5EEDu);
    const int hour = shot.when.hour;
    const bool dark = hour >= 19 || hour < 6;
    const bool low = hour >= 17 || hour < 8;
    constexpr float apertures[6] = {2.8f, 3.5f, 4.0f, 5.6f, 7.1f, 8.0f};
    constexpr float focals[6] = {5.8f, 7.4f, 9.2f, 11.6f, 17.4f, 23.2f};
    note.aperture = apertures[dark || shot.indoors ? rng.Pick(0, 1) : rng.Pick(2, 5)];
    constexpr std::uint32_t slow[4] = {8, 15, 30, 40};
    constexpr std::uint32_t middle[4] = {60, 80, 100, 125};
    constexpr std::uint32_t fast[4] = {200, 250, 320, 500};
    const int pick = rng.Pick(0, 3);
    note.shutterDenominator = dark ? slow[pick] : shot.indoors || low ? middle[pick] : fast[pick];
    constexpr std::uint32_t sensitive[4] = {400, 400, 800, 1600};
    constexpr std::uint32_t plain[4] = {80, 100, 100, 200};
    note.iso = dark || shot.indoors ? sensitive[rng.Pick(0, 3)] : plain[rng.Pick(0, 3)];
    note.bias = rng.Chance(0.2f) ? (rng.Chance(0.5f) ? 0.33f : -0.33f) : 0.0f;
    note.flash = dark && shot.indoors && rng.Chance(0.4f);
    note.focalLength = focals[rng.Pick(0, 5)];
}

std::vector<std::uint8_t> PhotoBytes(const Shot& shot) {
    Moment moment;
    moment.month = shot.when.month;
    moment.hour = static_cast<float>(shot.when.hour) + static_cast<float>(shot.when.minute) / 60.0f;
    moment.weather = shot.weather;
    moment.seed = shot.seed;
    Stage stage(shot.width, shot.height, moment);
    shot.paint(stage);
    // No two pictures of the same subject are developed quite alike.
    Rng rng(shot.seed ^ 0xDEu);
    stage.develop.exposure *= 1.0f + 0.10f * rng.Bell();
    stage.develop.warmth += 0.14f * rng.Bell();
    Image image = DevelopPicture(stage.canvas, stage.develop, shot.seed);
    if (rng.Chance(0.5f)) Mirror(image);
    if (shot.orientation == 6) {
        image = Turned(image, 3);  // shown, it is turned a quarter clockwise
    } else if (shot.orientation == 8) {
        image = Turned(image, 1);
    }
    const Camera& camera = CameraAt(shot.camera);
    ExifNote note;
    note.order = camera.bigEndian ? ByteOrder::Big : ByteOrder::Little;
    note.maker = camera.maker;
    note.model = camera.model;
    note.software = camera.software;
    note.taken = shot.when;
    note.orientation = shot.orientation;
    note.width = static_cast<std::uint32_t>(image.width);
    note.height = static_cast<std::uint32_t>(image.height);
    note.comment = shot.comment;
    note.estimations = shot.estimations;
    SetExposure(note, shot);
    note.thumbnail = JpegBytes(FitInto(image, 160, 120), 82, {});
    return JpegBytes(image, 88, ExifSegment(note));
}

std::vector<std::uint8_t> MovieBytes(const Movie& movie, std::uint32_t seed) {
    constexpr int frameCount = 36;
    constexpr int framesPerSecond = 12;
    std::vector<std::vector<std::uint8_t>> frames;
    for (int i = 0; i < frameCount; ++i) {
        frames.push_back(
            JpegBytes(MakeMovieFrame(movie.subject, Real(i) / Real(frameCount - 1), seed), 85, {}));
    }
    return AviBytes(frames, 320, 240, framesPerSecond);
}

constexpr Tune tunes[] = {
    {96, "E5:1 D5:1 C5:2 G4:1 A4:1 C5:2 D5:1 E5:1 D5:1 A4:1 C5:3",
     "C3:1 G3:1 E3:1 G3:1 F3:1 C4:1 A3:1 C4:1 G3:1 D4:1 B3:1 D4:1 C3:1 G3:1 C4:1"},
    {84, "A4:0.5 C5:0.5 E5:1 D5:0.5 C5:0.5 B4:1 G4:0.5 B4:0.5 D5:1 C5:2 A4:0.5 E5:0.5 A5:1 G5:1 E5:2",
     "A2:1 E3:1 A3:1 E3:1 G2:1 D3:1 C3:1 G3:1 F2:1 C3:1 A2:2"},
    {108, "G4:1 B4:1 D5:1 G5:1.5 F#5:0.5 E5:1 D5:1 B4:1 C5:1 A4:1.5 B4:0.5 C5:1 D5:2 G4:2",
     "G2:1.5 D3:1.5 G3:1.5 E3:1.5 C3:1.5 A2:1.5 D3:1.5 F#3:1.5 G2:3"},
};

class Maker {
public:
    Maker(const Options& options, SampleFolder& folder)
        : options_(options), folder_(folder), life_(PlanLife(options.today, options.count, options.seed)) {}

    // Empty, or what stopped the work.
    std::string Run() {
        MakePhotos();
        MakeNotes();
        MakeDrawingsAndMovies();
        MakeMusic();
        MakeBackgrounds();
        MakeShortcut();
        return folder_.Error();
    }

    std::string Summary() const {
        return Format("made %zu photos, %zu notes, %zu drawings, %zu movies, %zu pieces of music in ",
                      life_.shots.size(), life_.notes.size(), life_.drawings.size(), life_.movies.size(),
                      std::size(tunes)) +
               options_.folder;
    }

private:
    void MakePhotos() {
        std::atomic<std::size_t> next = 0;
        auto work = [&] {
            for (std::size_t i = next++; i < life_.shots.size() && !folder_.Failed(); i = next++) {
                const Shot& shot = life_.shots[i];
                folder_.Write(DayFolder(shot.when) + "/" + shot.fileName, PhotoBytes(shot), shot.when);
            }
        };
        std::vector<std::thread> helpers;
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2u, 8u);
        for (unsigned i = 1; i < count; ++i) {
            helpers.emplace_back(work);
        }
        work();
        for (std::thread& helper : helpers) {
            helper.join();
        }
    }

    void MakeNotes() {
        for (const Note& note : life_.notes) {
            const Stamp& w = note.when;
            const std::string name = Format("/TX%04d%02d%02d_%02d%02d%02d.txt", w.year, w.month, w.day,
                                            w.hour, w.minute, w.second);
            folder_.Write(DayFolder(w) + name, TextFileBytes(note.text), w);
        }
    }

    void MakeDrawingsAndMovies() {
        std::uint32_t seed = static_cast<std::uint32_t>(options_.seed) + 500;
        for (const Drawing& drawing : life_.drawings) {
            const Stamp& w = drawing.when;
            const auto bytes = PngBytes(MakeDrawing(drawing.subject, ++seed),
                                        {{"Creation Time", CameraTime(w)}, {"Comment", drawing.comment}});
            folder_.Write(DayFolder(w) + Format("/drawing_%02d%02d.png", w.month, w.day), bytes, w);
        }
        for (const Movie& movie : life_.movies) {
            folder_.Write(DayFolder(movie.when) + Format("/MVI_%04d.AVI", 100 + movie.when.day),
                          MovieBytes(movie, ++seed), movie.when);
        }
    }

    void MakeMusic() {
        const Stamp& today = options_.today;
        const std::string month = MonthFolder(today);
        const std::string pieces[] = {month + "/Morning_Walk.wav", month + "/Rain_on_the_Window.wav",
                                      Format("%04d/Year_Round_Waltz.wav", today.year)};
        std::string list = "#EXTM3U\n";
        for (std::size_t i = 0; i < std::size(pieces); ++i) {
            folder_.Write(pieces[i], WavBytes(tunes[i]), today);
            list += folder_.Absolute(pieces[i]) + "\n";
        }
        folder_.Write(month + "/favourites.m3u", TextFileBytes(list), today);
    }

    void MakeBackgrounds() {
        const Stamp& today = options_.today;
        const auto seed = static_cast<std::uint32_t>(options_.seed);
        folder_.Write(MonthFolder(today) + "/back01.jpg",
                      JpegBytes(MakeBackground(today.month, seed + 700), 90, {}), today);
        const int otherSeason = (today.month + 5) % 12 + 1;
        folder_.Write(Format("%04d/back01.jpg", today.year),
                      JpegBytes(MakeBackground(otherSeason, seed + 701), 90, {}), today);
    }

    // On one of this month's days lies a shortcut to a photo of about a year ago.
    void MakeShortcut() {
        Stamp from = options_.today;
        from.day = std::min(from.day, 20);
        from.hour = 20;
        const auto yearAgo = DayOf(from) - std::chrono::days(365);
        const Shot* best = nullptr;
        for (const Shot& shot : life_.shots) {
            if (DayOf(shot.when) <= yearAgo) {
                best = &shot;
            }
        }
        if (!best) {
            return;
        }
        const std::string target = DayFolder(best->when) + "/" + best->fileName;
        std::string relative = "../../../" + target;
        if (best->when.year == from.year) {
            relative = "../../" + target.substr(5);
        }
        std::replace(relative.begin(), relative.end(), '/', '\\');
        folder_.Write(DayFolder(from) + "/A_year_ago.lnk", LinkBytes(folder_.Absolute(target), relative),
                      from);
    }

    const Options& options_;
    SampleFolder& folder_;
    Life life_;
};

int Main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--help") {
        std::fputs(usage, stdout);
        return 0;
    }
    Options options;
    options.today = Today();
    if (const std::string wrong = ParseArguments(argc, argv, options); !wrong.empty()) {
        std::fprintf(stderr, "kalmora-sample: %s\n%s", wrong.c_str(), usage);
        return exitWrongUse;
    }
    SampleFolder folder(options.folder);
    const std::string month = Format("%04d-%02d", options.today.year, options.today.month);
    switch (folder.Prepare(month)) {
        case SampleFolder::State::Current:
            std::printf("%s is up to date (%s)\n", options.folder.c_str(), month.c_str());
            return 0;
        case SampleFolder::State::Foreign:
            std::fprintf(stderr, "kalmora-sample: %s has files of its own in it; nothing was changed\n",
                         options.folder.c_str());
            return exitFailed;
        case SampleFolder::State::Unusable:
            std::fprintf(stderr, "kalmora-sample: %s\n", folder.Error().c_str());
            return exitFailed;
        case SampleFolder::State::Empty:
            break;
    }
    Maker maker(options, folder);
    std::string error = maker.Run();
    if (error.empty() && !folder.Finish()) {
        error = folder.Error();
    }
    if (!error.empty()) {
        std::fprintf(stderr, "kalmora-sample: %s\n", error.c_str());
        return exitFailed;
    }
    std::printf("%s\n", maker.Summary().c_str());
    return 0;
}

}  // namespace

}  // namespace sample

int main(int argc, char** argv) { return sample::Main(argc, argv); }
