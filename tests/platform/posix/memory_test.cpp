#include "platform/memory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace kalmora {
namespace {

constexpr std::size_t kMb = 1024 * 1024;
constexpr std::size_t kPicture = 160 * 120 * 4;

std::size_t ResidentBytes() {
    std::size_t whole = 0, resident = 0;
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (file == nullptr) return 0;
    if (std::fscanf(file, "%zu %zu", &whole, &resident) != 2) resident = 0;
    std::fclose(file);
    return resident * 4096;
}

using Pictures = std::vector<std::unique_ptr<char[]>>;

// Made on a thread of its own, as a run of paints does, in place of the oldest.
void Renew(Pictures& pictures) {
    std::thread([&] {
        for (auto& picture : pictures) {
            picture.reset(new char[kPicture]);
            std::memset(picture.get(), 1, kPicture);
        }
    }).join();
}

TEST(Memory, PicturesThatOthersHaveReplacedLeaveNothingBehindInTheHeapOfTheirThread) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer has an allocator of its own, which keeps what is freed";
#endif
    ReturnFreedMemory();
    const std::size_t before = ResidentBytes();
    Pictures pictures(32 * kMb / kPicture);
    Renew(pictures);
    EXPECT_GT(ResidentBytes(), before + 30 * kMb);
    // A few of the first stay in use, and another thread replaces the rest.
    Pictures kept;
    for (std::size_t i = 0; i < pictures.size(); i += 40) kept.push_back(std::move(pictures[i]));
    Renew(pictures);
    EXPECT_LT(ResidentBytes(), before + 42 * kMb);
    for (auto& picture : pictures) picture.reset();
    EXPECT_LT(ResidentBytes(), before + 10 * kMb);
}

}  // namespace
}  // namespace kalmora
