// How fast the metadata of many photos are read, against what opening and reading the files costs by itself.
//
//     bench_read_metadata LIST [ROUNDS]      LIST: a file with one path a line
//
// Prints for each measurement the median processor time of a round, and the microseconds a file. The first
// round warms the file cache.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "media/photo.h"
#include "media/photo_metadata.h"
#include "media/preview_reader.h"
#include "platform/files.h"

namespace {

using kalmora::CPhoto;

// Processor time of this thread: what others do on the machine does not count.
double Seconds(const std::function<void()>& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Job {
    const char* name;
    std::function<std::size_t(const std::string&)> run;  // something that depends on all that was read
    std::vector<double> seconds{};
    std::size_t sum = 0;
};

std::size_t OpenAndRead(const std::string& path) {
    std::uint8_t bytes[4096];
    kalmora::files::InputFile file;
    return file.Open(path) ? file.ReadAt(0, bytes) : 0;
}

std::size_t ReadMetadata(const std::string& path) {
    static kalmora::PhotoMetadata metadata;
    kalmora::ReadPhotoMetadata(path, metadata);
    kalmora::SystemTime date;
    return static_cast<std::size_t>(kalmora::ShotDateOf(metadata, date)) +
           static_cast<std::size_t>(metadata.camera.iso) + metadata.xpComment.has_value();
}

// What indexing asks of each photo.
std::size_t AskObject(const std::string& path) {
    CPhoto photo(path);
    kalmora::SystemTime date;
    photo.ReadExifValues();
    const bool dated = photo.ReadShotDate(date);
    return static_cast<std::size_t>(dated) + static_cast<std::size_t>(photo.iso + photo.GetEstimate(1)) +
           (photo.GetComment() != nullptr);
}

std::size_t ReadThumbnail(const std::string& path) {
    return kalmora::ReadEmbeddedPreview(path, true).thumbnail.size();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s LIST [ROUNDS]\n", argv[0]);
        return 2;
    }
    std::ifstream list(argv[1]);
    std::vector<std::string> paths;
    for (std::string line; std::getline(list, line);)
        if (!line.empty()) paths.push_back(line);
    if (paths.empty()) {
        std::fprintf(stderr, "%s names no file\n", argv[1]);
        return 1;
    }
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 9;

    std::vector<Job> jobs{{"open and read 4 KiB", OpenAndRead},
                          {"ReadPhotoMetadata", ReadMetadata},
                          {"CPhoto, as indexing asks", AskObject},
                          {"embedded thumbnail", ReadThumbnail}};
    // Round by round, so that a slow moment of the machine meets all of them.
    for (int round = 0; round < rounds; ++round)
        for (Job& job : jobs)
            job.seconds.push_back(Seconds([&] {
                for (const std::string& path : paths) job.sum += job.run(path);
            }));
    for (Job& job : jobs) {
        std::sort(job.seconds.begin(), job.seconds.end());
        const double median = job.seconds[job.seconds.size() / 2];
        std::printf("%-26s %8.4f s %8.2f us a file   (%zu)\n", job.name, median,
                    median * 1e6 / static_cast<double>(paths.size()), job.sum);
    }
    return 0;
}
