// Writes Exif tags into a JPEG without decoding it: its Exif segment is edited (exif_block.h) or, where there
// is none, put in; every other byte stays. It uses safe_rewrite, so the results are its results:
//
//   Unsupported   not a JPEG
//   NotWhole      a broken one
//   ExifUnclear, MakerNoteUnclear, IndexUnclear, TrailerUnclear
//                 one of them cannot be followed without guessing
//   ExifFull      the block would pass the 64 KiB that a segment can hold
//
// A block that has to grow grows by whole disk blocks and has room then for later words. What lies behind
// it moves, and what names a place there is corrected: numbers in the block itself (exif_growth.h) and the
// index of further pictures (multi_picture_index.h). Where that is not known the photo is left alone, unless
// the words fit without growing. Any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/system_time.h"
#include "media/byte_window.h"
#include "media/exif_block.h"
#include "media/photo_metadata.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

using ExifEdits = std::vector<exif::Edit>;

// ---- what is written, as edits
// UserComment: the 8 bytes of the character code ASCII, the bytes as they are, a zero byte.
exif::Edit UserCommentEdit(std::string_view bytes);
// XPComment: UTF-16 little-endian in blocks of either order, with a zero word at the end.
exif::Edit XpCommentEdit(std::string_view utf8);
// DateTime, DateTimeOriginal and DateTimeDigitized, "2008:05:06 07:08:09" with a zero byte.
ExifEdits DateEdits(const SystemTime& date);
// Make, Model and their like in the main directory, code page 932, without a zero byte at the end: meant,
// other programs of this family write their length so. No edit for an empty text.
exif::Edit TextTagEdit(std::uint16_t tag, std::string_view utf8);

// ---- writing
RewriteResult WriteExif(const std::string& path, std::span<const exif::Edit> edits);
// The change that would write them, for SafeRewriteAll.
RewriteResult PlanExifChange(const std::string& path, std::span<const exif::Edit> edits, FileChange& change);
RewriteResult PlanExifChange(ByteWindow& file, std::span<const exif::Edit> edits, FileChange& change);

}  // namespace kalmora
