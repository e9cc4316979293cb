// The files that the benches read: the same bytes on every machine.
//
//     bench_corpus DIR [SMALL]      SMALL: how many small photos, 10000 when left out
//
//     DIR/small/2001/200101/2001_0101/IMG_00000.JPG ...     small photos, listed in DIR/small.list
//     DIR/days/...                                          the small photos once more, as hard links, in the
//                                                           first 330 days of 2001
//     DIR/embedded/...                                      March 2021, one photo of 12 megapixels a day,
//                                                           listed in DIR/embedded.list
//     DIR/bare/...                                          the same without embedded thumbnails (bare.list)
//     DIR/embedded-year/..., DIR/bare-year/...              the year 2021 of them, as hard links
//     DIR/empty                                             a folder with nothing in it
//
// About 800 MB. Exit 1 when something cannot be written.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "corpus_exif.h"
#include "corpus_pictures.h"

namespace {

namespace fs = std::filesystem;
using bench::Bytes;

constexpr int kSmallBases = 20;
constexpr int kLargeBases = 4;
constexpr int kPhotosOfAFolder = 4;
constexpr int kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int kYearOfLarge = 2021;  // not a leap year
constexpr int kMonthOfLarge = 3;

struct Base {
    int width, height;
    Bytes body;
    Bytes thumbnail;
};

Bytes WholeJpeg(const Bytes& body) {
    Bytes whole{0xFF, 0xD8};
    std::copy(body.begin(), body.end(), std::back_inserter(whole));
    return whole;
}

Base MakeBase(std::uint32_t seed, int width, int height, int grain, bench::Chroma chroma) {
    const bench::Picture picture = bench::MakePicture(seed, width, height, grain);
    return {width, height, bench::JpegBody(picture, 90, chroma),
            WholeJpeg(bench::JpegBody(bench::Reduce(picture, 160, 120), 80, bench::Chroma::HalfWidth))};
}

void Write(const fs::path& path, const Bytes& exif, const Bytes& body) {
    std::ofstream file(path, std::ios::binary);
    const auto put = [&](const Bytes& bytes) {
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    };
    put({0xFF, 0xD8});
    put(exif);
    put(body);
    if (!file.flush())
        throw fs::filesystem_error("cannot write", path, std::error_code(errno, std::generic_category()));
}

fs::path DayFolder(const fs::path& root, int year, int month, int day) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d/%04d%02d/%04d_%02d%02d", year, year, month, year, month, day);
    return root / text;
}

bench::Shot ShotOf(int number, int year, int month, int day, const Base& base) {
    constexpr std::uint32_t kIso[] = {80, 100, 200, 400, 800, 1600};
    constexpr std::uint32_t kExposure[] = {8, 30, 60, 125, 250, 500, 1000};
    constexpr std::uint32_t kAperture[] = {18, 28, 40, 56, 80};
    char date[64];
    std::snprintf(date, sizeof date, "%04d:%02d:%02d %02d:%02d:%02d", year, month, day, 8 + number % 12,
                  number % 60, number * 7 % 60);
    bench::Shot shot;
    shot.date = date;
    shot.width = base.width;
    shot.height = base.height;
    shot.iso = kIso[number % 6];
    shot.exposure = kExposure[number % 7];
    shot.aperture = kAperture[number % 5];
    if (number % 10 == 3) shot.comment = "Sunset at the harbour, number " + std::to_string(number);
    if (number % 20 == 7) shot.marks = "like:3,good:1,";
    return shot;
}

void MakeSmall(const fs::path& root, int count) {
    std::vector<Base> bases;
    for (int i = 0; i < kSmallBases; ++i)
        bases.push_back(
            MakeBase(static_cast<std::uint32_t>(100 + i), 400, 300, i % 3, bench::Chroma::HalfWidth));
    std::ofstream list(root / "small.list");
    int year = 2001, month = 1, day = 1;
    fs::path folder;
    for (int i = 0; i < count; ++i) {
        if (i % kPhotosOfAFolder == 0) {
            if (i > 0 && ++day > kMonthDays[month - 1]) {
                day = 1;
                if (++month > 12) month = 1, ++year;
            }
            folder = DayFolder(root / "small", year, month, day);
            fs::create_directories(folder);
        }
        const Base& base = bases[static_cast<std::size_t>(i * 7 % kSmallBases)];
        char name[32];
        std::snprintf(name, sizeof name, "IMG_%05d.JPG", i);
        Write(folder / name,
              bench::ExifSegment(bench::kCameras[i / 40 % 5], ShotOf(i, year, month, day, base),
                                 base.thumbnail),
              base.body);
        list << (folder / name).string() << '\n';
    }
    if (!list.flush()) throw std::runtime_error("the list of small photos cannot be written");
}

// The same photos in few days, as an album of real life has them.
void MakeDays(const fs::path& root) {
    constexpr std::size_t kDays = 330;
    std::ifstream list(root / "small.list");
    std::vector<fs::path> photos;
    for (std::string line; std::getline(list, line);) photos.emplace_back(line);
    std::size_t number = 0;
    std::size_t day = 0;
    for (int month = 1; month <= 12 && day < kDays; ++month)
        for (int date = 1; date <= kMonthDays[month - 1] && day < kDays; ++date, ++day) {
            const fs::path folder = DayFolder(root / "days", 2001, month, date);
            fs::create_directories(folder);
            for (; number < (day + 1) * photos.size() / kDays; ++number)
                fs::create_hard_link(photos[number], folder / photos[number].filename());
        }
}

void MakeYear(const fs::path& from, const fs::path& to) {
    int number = 0;
    for (int month = 1; month <= 12; ++month)
        for (int day = 1; day <= kMonthDays[month - 1]; ++day, ++number) {
            const fs::path folder = DayFolder(to, kYearOfLarge, month, day);
            fs::create_directories(folder);
            const fs::path source =
                DayFolder(from, kYearOfLarge, kMonthOfLarge, number % kMonthDays[kMonthOfLarge - 1] + 1);
            fs::create_hard_link(source / "IMG_0001.JPG", folder / "IMG_0001.JPG");
        }
}

void MakeLarge(const fs::path& root) {
    std::vector<Base> bases;
    for (int i = 0; i < kLargeBases; ++i) {
        const bool both = i % 2 == 1;  // 4000 x 3000, and the other usual shape of 12 megapixels
        bases.push_back(MakeBase(static_cast<std::uint32_t>(i + 1), both ? 4032 : 4000, both ? 3024 : 3000,
                                 both ? 14 : 11, both ? bench::Chroma::HalfBoth : bench::Chroma::HalfWidth));
    }
    for (const bool embedded : {true, false}) {
        const std::string name = embedded ? "embedded" : "bare";
        std::ofstream list(root / (name + ".list"));
        for (int day = 1; day <= kMonthDays[kMonthOfLarge - 1]; ++day) {
            const Base& base = bases[static_cast<std::size_t>(day % kLargeBases)];
            const fs::path folder = DayFolder(root / name, kYearOfLarge, kMonthOfLarge, day);
            fs::create_directories(folder);
            Write(folder / "IMG_0001.JPG",
                  bench::ExifSegment(bench::kCameras[day % 5],
                                     ShotOf(day, kYearOfLarge, kMonthOfLarge, day, base),
                                     embedded ? base.thumbnail : Bytes{}),
                  base.body);
            list << (folder / "IMG_0001.JPG").string() << '\n';
        }
        if (!list.flush()) throw std::runtime_error("the list of large photos cannot be written");
        MakeYear(root / name, root / (name + "-year"));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int small = argc > 2 ? std::atoi(argv[2]) : 10000;
    if (argc < 2 || argc > 3 || argv[1][0] == '-' || small < 1) {
        std::fprintf(stderr, "usage: %s DIR [SMALL]\n", argv[0]);
        return 2;
    }
    try {
        const fs::path root = fs::absolute(argv[1]);
        fs::create_directories(root / "empty");
        MakeSmall(root, small);
        MakeDays(root);
        MakeLarge(root);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}
