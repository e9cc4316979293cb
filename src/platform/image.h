// Pictures from files: measured, decoded at the scale in which they are drawn, kept in a bounded cache.
//
// Pictures stand upright: the Exif orientation is honoured here, sizes are those of the upright picture. Any
// thread may call anything; the cache has its own lock, which is never held while a file is read or decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/geometry.h"

namespace kalmora {

// A decoded picture. Copies share the pixels, which never change.
class Image {
public:
    class Pixels;
    Image() = default;
    explicit Image(std::shared_ptr<const Pixels> pixels) : pixels_(std::move(pixels)) {}
    bool IsEmpty() const { return !pixels_; }
    Size GetSize() const;  // in decoded pixels
    Color PixelAt(int x, int y) const;
    const std::shared_ptr<const Pixels>& Get() const { return pixels_; }

private:
    std::shared_ptr<const Pixels> pixels_;
};

namespace images {

enum class Preview {
    Never,     // decode the picture itself
    IfEnough,  // the embedded Exif thumbnail where it has at least the pixels that are wanted
    Always,    // the embedded thumbnail whenever there is one, however small
};

// The upright size in pixels from the file's head, nothing decoded. 0 by 0 when it is no readable picture.
Size Measure(const std::string& path);

// The picture, decoded so that it covers `wanted` device pixels when its shape is fitted into them (or whole
// when `wanted` is empty); at least as large as needed where the file has the pixels, at most about twice.
// Empty when the file cannot be read, is no picture, or is one that no memory could hold. Answers from the
// cache when the file (path, last-write time) was decoded for the same size before.
Image Load(const std::string& path, Size wanted, Preview preview = Preview::IfEnough);

// The cached picture only: for the size wanted, or (nearest = true) the best of any size; never touches more
// than the file's time stamp, never decodes.
Image LoadCached(const std::string& path, Size wanted, bool nearest, Preview preview = Preview::IfEnough);

// Decodes into the cache on the seam's own threads, soon; a repeated wish is one wish. Load on a wished
// picture waits for the running decode instead of doing it twice.
void Prefetch(const std::string& path, Size wanted, Preview preview = Preview::IfEnough);
// Forgets wishes that have not begun.
void CancelPrefetch();
// Blocks until no wish is left; for `shot` and for tests.
void WaitForPrefetch();

struct CacheStatistics {
    std::size_t bytes = 0;
    std::size_t limit = 0;
    std::uint64_t hits = 0;
    std::uint64_t decodes = 0;
};
CacheStatistics GetCacheStatistics();
void SetCacheLimit(std::size_t bytes);  // 256 MB at the start
void ClearCache();

// What the seam needs to know from inside a file's metadata, which is another room's trade: that room sets
// this hook at start. Without it there are no embedded thumbnails and pictures stand as they are stored.
struct EmbeddedPreview {
    int orientation = 1;                  // Exif orientation, 1 to 8
    Size storedSize;                      // of the whole picture as stored, 0 by 0 when unknown
    std::vector<std::uint8_t> thumbnail;  // the embedded JPEG; empty when there is none
};
using PreviewReader = EmbeddedPreview (*)(const std::string& path, bool withThumbnail);
void SetPreviewReader(PreviewReader reader);

// Writes a picture. Quality 0 to 100 for JPEG.
bool SavePng(const Image& image, const std::string& path);
bool SaveJpeg(const Image& image, const std::string& path, int quality);

}  // namespace images
}  // namespace kalmora
