// How fast words go into photos, beside what replacing a photo costs at the least: copy, flush, rename.
//
//     bench_write_photos PHOTO FOLDER [COUNT [ROUNDS]]
//
// Fills the folder with copies of the photo, runs every job on fresh or on used copies in turn, prints
// medians over the rounds and removes what it made. The folder lies on the disk that is to be measured.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "baseline.h"
#include "media/photo_file.h"
#include "state/app_state.h"
#include "store/extension_table.h"

namespace {

namespace fs = std::filesystem;
using namespace kalmora;

void Die(const std::string& what) {
    std::fprintf(stderr, "bench_write_photos: %s\n", what.c_str());
    std::exit(1);
}

void CopyFlushRename(const std::string& path) {
    const std::string copy = path + ".tmp";
    const int from = open(path.c_str(), O_RDONLY),
              to = open(copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    struct stat status {};
    if (from < 0 || to < 0 || fstat(from, &status) != 0) Die(path);
    for (off_t left = status.st_size; left > 0;) {
        const ssize_t count = copy_file_range(from, nullptr, to, nullptr, static_cast<std::size_t>(left), 0);
        if (count <= 0) Die(path);
        left -= count;
    }
    if (fsync(to) != 0 || close(to) != 0 || close(from) != 0 || rename(copy.c_str(), path.c_str()) != 0)
        Die(path);
}

std::vector<std::string> MakeCopies(const std::string& photo, const std::string& folder, int count) {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        paths.push_back(folder + "/p" + std::to_string(i) + ".jpg");
        fs::copy_file(photo, paths.back(), fs::copy_options::overwrite_existing);
    }
    sync();
    return paths;
}

void Require(const std::vector<RewriteResult>& results) {
    for (const RewriteResult result : results)
        if (result != RewriteResult::Written) Die(NameOf(result));
}

std::vector<PhotoFile> ObjectsOf(const std::vector<std::string>& paths) {
    std::vector<PhotoFile> photos;
    photos.reserve(paths.size());
    for (const std::string& path : paths) photos.emplace_back(path);
    return photos;
}

void CommentEach(const std::vector<std::string>& paths, const char* words) {
    for (const std::string& path : paths) Require({PhotoFile(path).SetComment(words)});
}

void RateEach(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) Require({PhotoFile(path).Estimate(EstimateType::Like)});
}

void RateAll(const std::vector<std::string>& paths) {
    std::vector<PhotoFile> photos = ObjectsOf(paths);
    Require(EstimateAll(photos, EstimateType::Like));
}

struct Job {
    const char* title;
    bool needsFresh;
    std::function<void(const std::vector<std::string>&)> run;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) Die("PHOTO FOLDER [COUNT [ROUNDS]]");
    const std::string photo = argv[1], folder = std::string(argv[2]) + "/kalmora-bench-write";
    const int count = argc > 3 ? std::atoi(argv[3]) : 500, rounds = argc > 4 ? std::atoi(argv[4]) : 3;
    fs::create_directories(folder + "/Temp");
    State().settings.TempFolder = folder + "/Temp";
    LoadExtensionTable(folder + "/extension.dat");
    const std::vector<Job> jobs{
        {"lower bound: copy, flush, rename", true,
         [](const auto& paths) {
             for (const std::string& path : paths) CopyFlushRename(path);
         }},
        {"first comment, one by one", true,
         [](const auto& paths) { CommentEach(paths, "a walk in the hills"); }},
        {"later rating, one by one", false, RateEach},
        {"first rating, all at once", true, RateAll},
        {"later rating, all at once", false, RateAll},
    };
    std::map<const Job*, std::vector<double>> seconds;
    std::vector<std::string> paths;
    for (int round = 0; round < rounds; ++round)
        for (const Job& job : jobs) {
            if (job.needsFresh) paths = MakeCopies(photo, folder, count);
            sync();
            const double start = bench::WallSeconds();
            job.run(paths);
            seconds[&job].push_back(bench::WallSeconds() - start);
        }
    const double bound = bench::Median(seconds[&jobs.front()]);
    for (const Job& job : jobs) {
        const double median = bench::Median(seconds[&job]);
        std::printf("%-36s %9.1f ms %9.0f photos/s %8.2f x bound\n", job.title, median * 1000, count / median,
                    bound / median);
    }
    ClearExtensionTable();
    fs::remove_all(folder);
    return 0;
}
