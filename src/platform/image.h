// Pictures from files, decoded at the scale in which they are drawn, and written to files.
//
// Pictures are upright: the Exif orientation is honoured here, sizes are those of the upright picture. Any
// thread may call anything.
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
    Size GetSize() const;           // in decoded pixels
    std::size_t ByteCount() const;  // what the pixels take in memory
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

// What a decoder needs to know from inside a file's metadata.
struct EmbeddedPreview {
    int orientation = 1;                  // Exif orientation, 1 to 8
    Size storedSize;                      // of the whole picture as stored, 0 by 0 when unknown
    std::vector<std::uint8_t> thumbnail;  // the embedded JPEG; empty when there is none
};

enum class WithThumbnail { No, Yes };

// To read it is another room's trade. Any thread.
class PreviewReader {
public:
    virtual ~PreviewReader() = default;
    // Of a JPEG. A file without metadata gives orientation 1, no size and no thumbnail.
    virtual EmbeddedPreview Read(const std::string& path, WithThumbnail withThumbnail) const = 0;
};

enum class DecodeOutcome {
    Decoded,
    NoPicture,   // the file was read and holds no picture that can be decoded: it will not until it changes
    Unreadable,  // it could not be read now, or the program is about to end
};

struct DecodedPicture {
    DecodeOutcome outcome = DecodeOutcome::Unreadable;
    Image image;  // empty unless it was decoded
};

// The picture, decoded so that it covers `wanted` device pixels when its shape is fitted into them (or whole
// when `wanted` is empty); at least as large as needed where the file has the pixels, at most about twice.
// One that no memory could hold is none. Without a reader (null) there are no embedded thumbnails and
// pictures are given as they are stored.
DecodedPicture Decode(const std::string& path, Size wanted, Preview preview, const PreviewReader* reader);

// Writes a picture. Quality 0 to 100 for JPEG. False when it is empty or the file cannot be written.
bool SavePng(const Image& image, const std::string& path);
bool SaveJpeg(const Image& image, const std::string& path, int quality);

}  // namespace images
}  // namespace kalmora
