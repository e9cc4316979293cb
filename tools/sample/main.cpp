#include <QBuffer>
#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <ctime>
#include <map>
#include <optional>
#include <thread>

#include "camera_exif.h"
#include "life.h"
#include "photo.h"
#include "riff.h"
#include "sample_folder.h"
#include "store/shortcuts.h"
#include "text/text.h"

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
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && value >= low && value <= high ? std::optional(value) : std::nullopt;
}

bool ParseDate(std::string_view text, Stamp& date) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
    date.year = ParseNumber(text.substr(0, 4), 1990, 9999).value_or(0);
    date.month = ParseNumber(text.substr(5, 2), 1, 12).value_or(0);
    date.day = ParseNumber(text.substr(8, 2), 1, 31).value_or(0);
    return date.year != 0 && (std::chrono::year(date.year) / date.month / date.day).ok();
}

// Empty when the arguments are understood, otherwise what is wrong with them.
std::string ParseArguments(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.empty() || argument[0] != '-') {
            if (!options.folder.empty() || argument.empty()) return "exactly one folder is needed";
            options.folder = argument;
            continue;
        }
        if (argument != "--date" && argument != "--count" && argument != "--seed")
            return "unknown option " + argument;
        if (++i == argc) return argument + " needs a value";
        const std::string value = argv[i];
        bool understood = true;
        if (argument == "--date") {
            understood = ParseDate(value, options.today);
        } else if (argument == "--count") {
            options.count = ParseNumber(value, 1, 5000).value_or(0);
            understood = options.count != 0;
        } else {
            const auto seed = ParseNumber<std::uint64_t>(value, 0, UINT64_MAX);
            understood = seed.has_value();
            options.seed = seed.value_or(0);
        }
        if (!understood) return "bad value for " + argument + ": " + value;
    }
    return options.folder.empty() ? "no folder given" : "";
}

Bytes PhotoBytes(const QImage& scene, const Shot& shot) {
    QImage image = TakePhoto(scene, shot);
    // The camera was held on a side: shown, the picture is turned back.
    if (shot.orientation == 6) image = image.transformed(QTransform().rotate(270));
    if (shot.orientation == 8) image = image.transformed(QTransform().rotate(90));
    const Bytes thumbnail = JpegBytes(FitInto(image, 160, 120), 82, {});
    return JpegBytes(image, 88, ExifSegment(shot, image.width(), image.height(), thumbnail));
}

Bytes MovieBytes(const QImage& scene) {
    constexpr int frameCount = 36;
    std::vector<Bytes> frames;
    for (int i = 0; i < frameCount; ++i) {
        frames.push_back(JpegBytes(MovieFrame(scene, static_cast<float>(i) / (frameCount - 1)), 85, {}));
    }
    return AviBytes(frames, 320, 240, 12);
}

// In code page 932, or, where it has a character that the page lacks, as UTF-8 with a byte-order mark.
Bytes TextFileBytes(const std::string& text) {
    const std::string bytes =
        kalmora::text::FitsCp932(text) ? kalmora::text::ToCp932(text) : "\xEF\xBB\xBF" + text;
    return Bytes(bytes.begin(), bytes.end());
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
        : options_(options),
          folder_(folder),
          scenes_(ReadScenes(drawings_)),
          notes_(ReadNotes(drawings_, options.today)),
          life_(PlanLife(scenes_, ReadOccasions(drawings_), options.today, options.count, options.seed)) {}

    // Empty, or what stopped the work. Throws BadTable when a drawing is missing.
    std::string Run() {
        MakePhotos();
        for (const Note& note : notes_) {
            const Stamp& w = note.when;
            const std::string name = Format("/TX%04d%02d%02d_%02d%02d%02d.txt", w.year, w.month, w.day,
                                            w.hour, w.minute, w.second);
            folder_.Write(DayFolder(w) + name, TextFileBytes(note.text), w);
        }
        MakeDrawingsAndMovies();
        MakeMusic();
        MakeBackgrounds();
        MakeShortcut();
        return folder_.Error();
    }

    std::string Summary() const {
        return Format("made %zu photos, %zu notes, %zu drawings, %zu movies, %zu pieces of music in ",
                      life_.shots.size(), notes_.size(), life_.drawings.size(), life_.movies.size(),
                      std::size(tunes)) +
               options_.folder;
    }

private:
    // A thread takes all photos of one scene after the other, so that each drawing is decoded once.
    void MakePhotos() {
        std::map<const Scene*, std::vector<const Shot*>> byScene;
        for (const Shot& shot : life_.shots) byScene[shot.scene].push_back(&shot);
        const std::vector work(byScene.begin(), byScene.end());
        std::atomic<std::size_t> next = 0;
        auto make = [&] {
            for (std::size_t i = next++; i < work.size() && !folder_.Failed(); i = next++) {
                const QImage scene = LoadDrawing(drawings_, work[i].first->name);
                for (const Shot* shot : work[i].second) {
                    folder_.Write(DayFolder(shot->when) + "/" + shot->fileName, PhotoBytes(scene, *shot),
                                  shot->when);
                }
            }
        };
        std::vector<std::jthread> helpers;
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2u, 8u);
        for (unsigned i = 1; i < count; ++i) helpers.emplace_back(make);
        make();
    }

    void MakeDrawingsAndMovies() {
        for (const Extra& drawing : life_.drawings) {
            const Stamp& w = drawing.when;
            QImage image = LoadDrawing(drawings_, drawing.drawing).convertToFormat(QImage::Format_RGB888);
            image.setText("Creation Time", QString::fromStdString(CameraTime(w)));
            image.setText("Comment", drawing.comment);
            QBuffer png;
            image.save(&png, "png");
            folder_.Write(DayFolder(w) + Format("/drawing_%02d%02d.png", w.month, w.day),
                          Bytes(png.data().begin(), png.data().end()), w);
        }
        for (const Extra& movie : life_.movies) {
            folder_.Write(DayFolder(movie.when) + Format("/MVI_%04d.AVI", 100 + movie.when.day),
                          MovieBytes(LoadDrawing(drawings_, movie.drawing)), movie.when);
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

    // Very light pictures to lie behind a month and a year with black text on them.
    void MakeBackgrounds() {
        const Stamp& today = options_.today;
        constexpr const char* seasons[] = {"paper-winter", "paper-spring", "paper-summer", "paper-autumn"};
        auto paper = [&](int month) {
            return JpegBytes(LoadDrawing(drawings_, seasons[month % 12 / 3]), 90, {});
        };
        folder_.Write(MonthFolder(today) + "/back01.jpg", paper(today.month), today);
        folder_.Write(Format("%04d/back01.jpg", today.year), paper(today.month + 6), today);
    }

    // On one of this month's days lies a shortcut to a photo of about a year ago.
    void MakeShortcut() {
        Stamp from = options_.today;
        from.day = std::min(from.day, 20);
        from.hour = 20;
        const Shot* best = nullptr;
        for (const Shot& shot : life_.shots) {
            if (DayOf(shot.when) <= DayOf(from) - std::chrono::days(365)) best = &shot;
        }
        if (!best) return;
        const std::string target = folder_.Absolute(DayFolder(best->when) + "/" + best->fileName);
        const std::string link = kalmora::MakeShortcut(target, folder_.Absolute(DayFolder(from)));
        folder_.Write(DayFolder(from) + "/A_year_ago.lnk", Bytes(link.begin(), link.end()), from);
    }

    const Options& options_;
    SampleFolder& folder_;
    const std::string drawings_ = KALMORA_SAMPLE_DRAWINGS;  // as the build rendered them, with the tables
    std::vector<Scene> scenes_;
    std::vector<Note> notes_;
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

int main(int argc, char** argv) {
    try {
        return sample::Main(argc, argv);
    } catch (const sample::BadTable& bad) {
        std::fprintf(stderr, "kalmora-sample: %s\n", bad.what());
        return sample::exitFailed;
    }
}
