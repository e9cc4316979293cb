// The shell link format: what lies where in a .lnk file. Used by the reader and the writer.
// Source of the layout: the published open format description of shell links. Numbers are little-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kalmora::lnk {

// ---- the header
inline constexpr std::size_t kHeaderSize = 76;
inline constexpr std::array<std::uint8_t, 16> kClassId = {0x01, 0x14, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                                          0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};
inline constexpr std::size_t kClassIdOffset = 4;
inline constexpr std::size_t kFlagsOffset = 20;

enum Flag : std::uint32_t {
    kHasTargetIdList = 0x1,
    kHasLinkInfo = 0x2,
    kHasName = 0x4,
    kHasRelativePath = 0x8,
    kIsUnicode = 0x80,
    kForceNoLinkInfo = 0x100,
};

// ---- the block of absolute paths; its offsets count from its own start
inline constexpr std::size_t kInfoHeaderSizeOffset = 4;
inline constexpr std::size_t kInfoFlagsOffset = 8;
inline constexpr std::size_t kVolumeOffset = 12;
inline constexpr std::size_t kLocalPathOffset = 16;
inline constexpr std::size_t kNetworkOffset = 20;
inline constexpr std::size_t kSuffixOffset = 24;
inline constexpr std::size_t kLocalPathUnicodeOffset = 28;
inline constexpr std::size_t kSuffixUnicodeOffset = 32;
inline constexpr std::size_t kInfoHeaderSize = 0x1C;         // without the two Unicode offsets
inline constexpr std::size_t kInfoHeaderSizeUnicode = 0x24;  // with them

enum InfoFlag : std::uint32_t { kHasLocalPath = 0x1, kHasNetworkPath = 0x2 };

// ---- the network share inside that block; offsets count from the share's start
inline constexpr std::size_t kShareNameOffset = 8;
inline constexpr std::size_t kShareNameUnicodeOffset = 20;
inline constexpr std::size_t kShareHeaderSize = 0x14;  // a name offset past it means Unicode names

// ---- the volume
inline constexpr std::uint32_t kFixedDrive = 3;

inline constexpr std::uint32_t kShowNormal = 1;
inline constexpr std::uint32_t kAttributeFolder = 0x10, kAttributeArchive = 0x20;

}  // namespace kalmora::lnk
