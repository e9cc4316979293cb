// The lower bounds as a program, to be run beside others.
//
//     bench_baseline_read metadata|thumbnails|eighths LIST [THREADS]      LIST: a file with one path a line
//
// Prints the seconds on the clock that the job took, and a number that depends on all that was read.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "baseline.h"

namespace {

std::size_t ReadOne(const char* path) {
    bench::Basics basics;
    return bench::ReadBasics(path, bench::Read::BasicsOnly, basics) ? basics.iso + basics.shutter + 1 : 0;
}

struct NamedJob {
    const char* name;
    std::size_t (*run)(const char* path);
};
constexpr NamedJob kJobs[] = {
    {"metadata", ReadOne}, {"thumbnails", bench::DecodeThumbnail}, {"eighths", bench::DecodeEighth}};

}  // namespace

int main(int argc, char** argv) {
    const int threads = argc > 3 ? std::atoi(argv[3]) : 1;
    if (argc >= 3 && threads >= 1)
        for (const NamedJob& job : kJobs) {
            if (std::strcmp(job.name, argv[1]) != 0) continue;
            const std::vector<std::string> paths = bench::ReadList(argv[2]);
            const double start = bench::WallSeconds();
            const std::size_t sum = bench::ForEach(paths, threads, job.run);
            std::printf("%.6f %zu\n", bench::WallSeconds() - start, sum);
            return sum > 0 ? 0 : 1;
        }
    std::fprintf(stderr, "usage: %s metadata|thumbnails|eighths LIST [THREADS]\n", argv[0]);
    return 2;
}
