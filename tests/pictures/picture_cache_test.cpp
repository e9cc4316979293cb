#include "pictures/picture_cache.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/clock.h"
#include "platform/files.h"
#include "support/temporary_folder.h"

namespace kalmora {
namespace {

using images::Preview;
using Exactness = PictureCache::Exactness;

// The simplest of all picture files; every pixel is different from its neighbours.
std::string PortableMap(int width, int height) {
    std::string bytes = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    std::uint32_t state = 1;
    for (int i = 0; i < width * height * 3; ++i) {
        state = state * 1664525u + 1013904223u;
        bytes.push_back(static_cast<char>(state >> 24));
    }
    return bytes;
}

class PictureCacheTest : public testing::Test {
protected:
    std::string Put(const std::string& name, const std::string& content) const {
        return folder_.Add(name, content);
    }
    std::uint64_t Decodes() const { return cache_.Statistics().decodes; }

    const test::TemporaryFolder folder_;
    PictureCache cache_;
};

TEST_F(PictureCacheTest, TheSameRequestIsDecodedOnce) {
    const std::string path = Put("a.ppm", PortableMap(100, 80));
    const Image first = cache_.Load(path, Size{50, 50});
    const Image second = cache_.Load(path, Size{50, 50});
    EXPECT_EQ(first.Get(), second.Get());
    EXPECT_EQ(Decodes(), 1u);
    cache_.Load(path, Size{51, 50});
    cache_.Load(path, Size{50, 50}, Preview::Never);
    EXPECT_EQ(Decodes(), 3u);
}

TEST_F(PictureCacheTest, AChangedFileIsDecodedAgain) {
    const std::string path = Put("a.ppm", PortableMap(100, 80));
    cache_.Load(path, Size{});
    const FileTime now = CurrentFileTime();
    Put("a.ppm", PortableMap(40, 30));
    ASSERT_TRUE(files::SetTimes(path, now, FileTime{now.ticks + 10'000'000}));
    EXPECT_EQ(cache_.Load(path, Size{}).GetSize(), (Size{40, 30}));
}

TEST_F(PictureCacheTest, AFileThatIsNoPictureIsNotTriedAgainUntilItChanges) {
    const std::string path = Put("a.ppm", "no picture");
    cache_.Load(path, Size{10, 10});
    cache_.Load(path, Size{10, 10});
    EXPECT_EQ(Decodes(), 1u);
    Put("a.ppm", PortableMap(16, 16));
    EXPECT_FALSE(cache_.Load(path, Size{10, 10}).IsEmpty());
}

TEST_F(PictureCacheTest, LoadCachedNeverDecodes) {
    const std::string path = Put("a.ppm", PortableMap(100, 80));
    EXPECT_TRUE(cache_.LoadCached(path, Size{50, 50}, Exactness::Nearest).IsEmpty());
    EXPECT_EQ(Decodes(), 0u);
    cache_.Load(path, Size{50, 50});
    EXPECT_FALSE(cache_.LoadCached(path, Size{50, 50}, Exactness::Exact).IsEmpty());
    EXPECT_TRUE(cache_.LoadCached(path, Size{60, 60}, Exactness::Exact).IsEmpty());
    EXPECT_TRUE(cache_.LoadCached(folder_ / "absent", Size{60, 60}, Exactness::Nearest).IsEmpty());
}

TEST_F(PictureCacheTest, NearestIsTheSmallestThatIsLargeEnoughElseTheLargest) {
    const std::string path = Put("a.ppm", PortableMap(400, 400));
    for (const int size : {20, 200, 100}) cache_.Load(path, Size{size, size});
    EXPECT_EQ(cache_.LoadCached(path, Size{90, 90}, Exactness::Nearest).GetSize().width, 100);
    EXPECT_EQ(cache_.LoadCached(path, Size{100, 100}, Exactness::Nearest).GetSize().width, 100);
    EXPECT_EQ(cache_.LoadCached(path, Size{150, 150}, Exactness::Nearest).GetSize().width, 200);
    EXPECT_EQ(cache_.LoadCached(path, Size{300, 300}, Exactness::Nearest).GetSize().width, 200);
    const std::string other = Put("b.ppm", PortableMap(40, 40));
    EXPECT_TRUE(cache_.LoadCached(other, Size{10, 10}, Exactness::Nearest).IsEmpty());
}

TEST_F(PictureCacheTest, TheLeastRecentlyUsedGoFirst) {
    std::vector<std::string> paths;
    for (int i = 0; i < 4; ++i) paths.push_back(Put(std::to_string(i) + ".ppm", PortableMap(100, 100)));
    cache_.SetLimit(3 * 42'000);
    for (int i = 0; i < 3; ++i) cache_.Load(paths[static_cast<std::size_t>(i)], Size{});
    cache_.Load(paths[0], Size{});  // used again
    cache_.Load(paths[3], Size{});
    EXPECT_FALSE(cache_.LoadCached(paths[0], Size{}, Exactness::Exact).IsEmpty());
    EXPECT_TRUE(cache_.LoadCached(paths[1], Size{}, Exactness::Exact).IsEmpty());
    EXPECT_FALSE(cache_.LoadCached(paths[3], Size{}, Exactness::Exact).IsEmpty());
    EXPECT_LE(cache_.Statistics().bytes, cache_.Statistics().limit);
}

TEST_F(PictureCacheTest, APictureLargerThanTheCacheIsLoadedAndNotKept) {
    cache_.SetLimit(1000);
    const std::string path = Put("a.ppm", PortableMap(100, 100));
    EXPECT_FALSE(cache_.Load(path, Size{}).IsEmpty());
    EXPECT_EQ(cache_.Statistics().bytes, 0u);
}

TEST_F(PictureCacheTest, AtTheStartTheLimitIs256Megabytes) {
    EXPECT_EQ(cache_.Statistics().limit, std::size_t{268'435'456});
}

TEST_F(PictureCacheTest, ThreadsThatWantTheSamePictureShareOneDecode) {
    const std::string path = Put("a.ppm", PortableMap(2000, 1500));
    std::vector<std::thread> threads;
    std::vector<Image> got(4);
    for (Image& image : got)
        threads.emplace_back([this, &image, &path] { image = cache_.Load(path, Size{1000, 1000}); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Decodes(), 1u);
    for (const Image& image : got) EXPECT_EQ(image.Get(), got[0].Get());
}

// ---- prefetching

TEST_F(PictureCacheTest, ARequestedPictureIsInTheCacheSoon) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) paths.push_back(Put(std::to_string(i) + ".ppm", PortableMap(50, 50)));
    for (int round = 0; round < 3; ++round)
        for (const std::string& path : paths) cache_.Prefetch(path, Size{20, 20});
    cache_.WaitForPrefetch();
    EXPECT_EQ(Decodes(), 10u);
    for (const std::string& path : paths)
        EXPECT_FALSE(cache_.LoadCached(path, Size{20, 20}, Exactness::Exact).IsEmpty());
}

TEST_F(PictureCacheTest, RequestsThatHaveNotBegunCanBeForgotten) {
    const std::string path = Put("a.ppm", PortableMap(1500, 1000));
    for (int i = 1; i <= 1000; ++i) cache_.Prefetch(path, Size{i, 1000});
    cache_.CancelPrefetch();
    cache_.WaitForPrefetch();
    EXPECT_LT(Decodes(), 1000u);
}

TEST_F(PictureCacheTest, RequestsForWhatIsNotThereAreHarmless) {
    cache_.Prefetch(folder_ / "absent", Size{20, 20});
    cache_.Prefetch("", Size{-1, 20});
    cache_.WaitForPrefetch();
}

TEST_F(PictureCacheTest, ManyThreadsLoadRequestAndClearAtOnce) {
    std::vector<std::string> paths;
    for (int i = 0; i < 6; ++i) paths.push_back(Put(std::to_string(i) + ".ppm", PortableMap(120 + i, 90)));
    cache_.SetLimit(200'000);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([this, &paths, t] {
            for (int i = 0; i < 60; ++i) {
                const std::string& path = paths[static_cast<std::size_t>(i * (t + 1)) % paths.size()];
                const Size wanted{20 + i % 3 * 20, 60};
                if (i % 5 == 0) cache_.Prefetch(path, wanted);
                if (i % 17 == 0) cache_.Clear();
                if (i % 23 == 0) cache_.CancelPrefetch();
                EXPECT_FALSE(cache_.Load(path, wanted, i % 2 ? Preview::Never : Preview::IfEnough).IsEmpty());
                cache_.LoadCached(path, wanted, Exactness::Nearest);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

// ---- what is read from inside a file

// A JPEG's head as far as it says how large the picture is.
std::string JpegHead(int width, int height) {
    const auto number = [](int value) {
        return std::string{static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
    };
    return "\xFF\xD8\xFF\xC0" + number(11) + "\x08" + number(height) + number(width) + "\x01\x01\x11" +
           std::string("\0\xFF\xDA", 3);
}

class Lying final : public images::PreviewReader {
public:
    images::EmbeddedPreview Read(const std::string&, images::WithThumbnail withThumbnail) const override {
        EXPECT_EQ(withThumbnail, images::WithThumbnail::No) << "a picture that is only measured";
        return {.orientation = 6, .storedSize = {}, .thumbnail = {}};
    }
};

TEST_F(PictureCacheTest, MeasuresPicturesAsTheyStandUpright) {
    const std::string photo = Put("a.jpg", JpegHead(320, 160));
    EXPECT_EQ(cache_.Measure(photo), (Size{320, 160})) << "no reader gives its orientation";
    const Lying reader;
    cache_.UsePreviews(&reader);
    EXPECT_EQ(cache_.Measure(photo), (Size{160, 320}));
    EXPECT_EQ(cache_.Measure(Put("a.ppm", PortableMap(60, 40))), (Size{60, 40}));
    EXPECT_EQ(Decodes(), 0u);
}

TEST_F(PictureCacheTest, WhatIsNoPictureHasNoSize) {
    for (const std::string& path :
         {folder_ / "absent.jpg", Put("zero.jpg", ""), Put("text.txt", "/* XPM */\n"),
          Put("head.jpg", "\xFF\xD8"), std::string()})
        EXPECT_TRUE(cache_.Measure(path).IsEmpty()) << path;
}

}  // namespace
}  // namespace kalmora
