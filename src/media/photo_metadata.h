// Everything that a photo says about itself, by one look at its file.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/geometry.h"
#include "base/system_time.h"
#include "media/byte_window.h"
#include "media/camera_values.h"

namespace kalmora {

// A date as it is written in the file.
struct DateItem {
    std::uint16_t type = 0;     // 0: absent
    std::uint32_t length = 0;   // of the stored value in bytes
    std::array<char, 48> text;  // its beginning, zero-ended
    bool IsPresent() const { return type != 0; }
    std::string_view Text() const { return IsPresent() ? std::string_view(text.data()) : std::string_view(); }
};

struct PhotoMetadata {
    // How many properties the file's Exif block has (exif_reader.h says which count). Past kMostProperties
    // the file is taken to be broken and gives no camera values; its dates and texts are read all the same.
    int propertyCount = 0;
    CameraValues camera;
    DateItem dateTime;
    DateItem dateTimeOriginal;
    std::optional<std::string> xpComment;  // UTF-8
    std::uint16_t userCommentType = 0;     // 0: absent
    std::string userComment;               // bytes as stored, with their character code if they have one
    std::optional<std::string> make;       // UTF-8
    int orientation = 1;                   // 1 to 8
    std::uint64_t thumbnailOffset = 0;     // of the embedded JPEG in the file; it may be cut there
    std::uint32_t thumbnailLength = 0;     // 0: none
    Size storedSize;                       // pixels, before any turn; only when it was asked for
    FileTime written;                      // of the file as it was opened; only when its size was asked for
};

inline constexpr int kMostProperties = 200;

enum class StoredSize { Skip, Read };

// Clears and fills `metadata`. False when the file cannot be opened or is neither JPEG nor TIFF; everything
// is then at its start value. A JPEG costs one read of 4 KiB, and one more for each thing that lies further;
// asking for the stored size may cost one more. Any thread.
bool ReadPhotoMetadata(const std::string& path, PhotoMetadata& metadata, StoredSize size = StoredSize::Skip);
// The same for bytes that are seen already. `name` is for the log.
bool ReadPhotoMetadata(ByteWindow& file, const std::string& name, PhotoMetadata& metadata,
                       StoredSize size = StoredSize::Skip);

// The shooting date: DateTime, or DateTimeOriginal where the photo has no DateTime at all. (The other way
// round would be the first thing to try; but the program writes its dates into both, and DateTime is what it
// edits.) False when there is none, when it is no text of at least 10 bytes, or when it says nothing but
// zeros.
bool ShotDateOf(const PhotoMetadata& metadata, SystemTime& date);

// The text of UserComment, which holds the estimations: the bytes behind the character code, as they
// are, for every such code, zero bytes included. Empty optional when the photo has none.
std::optional<std::string> UserCommentText(const PhotoMetadata& metadata);

}  // namespace kalmora
