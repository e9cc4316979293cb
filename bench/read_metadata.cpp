// How fast the program's own code reads what many photos say, against the lower bounds.
//
//     bench_read_metadata LIST [ROUNDS [JOB]]
//
// LIST: a file with one path a line. All jobs run round by round, so that a slow moment of the machine meets
// all of them, and are measured in processor time, so that what others do there does not count. Prints for
// each the median seconds, the microseconds a file and the ratio to its bound. With JOB (metadata, object,
// preview, pixels) that one is run ROUNDS times and nothing printed: for a profiler.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "baseline.h"
#include "media/photo_file.h"
#include "media/photo_metadata.h"
#include "media/preview_reader.h"
#include "pictures/picture_cache.h"
#include "platform/image.h"

namespace {

using kalmora::PhotoFile;

constexpr kalmora::Size kMonthCell{137, 110};  // device pixels; smaller than a camera's thumbnail

std::size_t Bound(const char* path) {
    bench::Basics basics;
    return bench::ReadBasics(path, bench::Read::BasicsOnly, basics) ? basics.iso + basics.shutter + 1 : 0;
}

std::size_t ReadMetadata(const char* path) {
    static kalmora::PhotoMetadata metadata;
    kalmora::ReadPhotoMetadata(path, metadata);
    kalmora::SystemTime date;
    return static_cast<std::size_t>(kalmora::ShotDateOf(metadata, date)) +
           static_cast<std::size_t>(metadata.camera.iso) + metadata.xpComment.has_value();
}

// What indexing asks of each photo.
std::size_t AskObject(const char* path) {
    PhotoFile photo(path);
    kalmora::SystemTime date;
    photo.ReadExifValues();
    const bool dated = photo.ReadShotDate(date);
    return static_cast<std::size_t>(dated) +
           static_cast<std::size_t>(photo.camera.iso + photo.GetEstimate(1)) +
           (photo.GetComment() != nullptr);
}

std::size_t ReadThumbnail(const char* path) {
    return kalmora::ExifPreviews().Read(path, kalmora::images::WithThumbnail::Yes).thumbnail.size();
}

// Never from the cache: a picture is asked for once between two clearings of it.
std::size_t LoadCell(const char* path) {
    const kalmora::Size size = kalmora::Pictures().Load(path, kMonthCell).GetSize();
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

struct Job {
    const char* name;
    const char* title;
    std::size_t (*run)(const char* path);
    int bound;  // the job it is held against; -1: it is one
    std::vector<double> seconds{};
    std::size_t sum = 0;
};

double RunOnce(const Job& job, const std::vector<std::string>& paths, std::size_t& sum) {
    kalmora::Pictures().Clear();
    const double start = bench::ThreadSeconds();
    for (const std::string& path : paths) sum += job.run(path.c_str());
    return bench::ThreadSeconds() - start;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> paths = argc > 1 ? bench::ReadList(argv[1]) : std::vector<std::string>();
    if (paths.empty()) {
        std::fprintf(stderr, "usage: %s LIST [ROUNDS [JOB]]; LIST names the files, one a line\n", argv[0]);
        return 2;
    }
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 9;
    kalmora::Pictures().UsePreviews(&kalmora::ExifPreviews());

    Job jobs[] = {{"bound", "lower bound, metadata", Bound, -1},
                  {"metadata", "ReadPhotoMetadata", ReadMetadata, 0},
                  {"object", "PhotoFile, as indexing asks", AskObject, 0},
                  {"pixels-bound", "lower bound, thumbnail's pixels", bench::DecodeThumbnail, -1},
                  {"preview", "embedded thumbnail, not decoded", ReadThumbnail, 3},
                  {"pixels", "images::Load into a cell", LoadCell, 3}};
    if (argc > 3) {
        for (Job& job : jobs)
            for (int round = 0; std::strcmp(job.name, argv[3]) == 0 && round < rounds; ++round)
                RunOnce(job, paths, job.sum);
        return 0;
    }
    for (int round = 0; round < rounds; ++round)
        for (Job& job : jobs) job.seconds.push_back(RunOnce(job, paths, job.sum));
    for (const Job& job : jobs) {
        const double median = bench::Median(job.seconds);
        std::printf("%-32s %9.4f s %8.2f us a file", job.title, median,
                    median * 1e6 / static_cast<double>(paths.size()));
        if (job.bound >= 0) {
            // Round by round: both halves of a ratio met the same moment.
            std::vector<double> ratios;
            for (std::size_t round = 0; round < job.seconds.size(); ++round)
                ratios.push_back(job.seconds[round] / jobs[job.bound].seconds[round]);
            std::printf(" %6.2f", bench::Median(ratios));
        } else {
            std::printf("       ");
        }
        std::printf("   (%zu)\n", job.sum);
    }
    return 0;
}
