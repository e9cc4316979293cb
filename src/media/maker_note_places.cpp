#include "media/maker_note_places.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/byte_reader.h"
#include "media/exif_tags.h"

namespace kalmora::exif {

namespace {

// From where a note's offsets count.
enum class Base { Block, Note, OwnHeader };

struct Layout {
    std::string_view head;
    std::size_t directory = 0;  // where it begins in the note; with an own header, where that does
    Base base = Base::Block;
};

using namespace std::string_view_literals;
constexpr std::array<Layout, 21> kLayouts{{
    {"Nikon\0\2"sv, 10, Base::OwnHeader}, {"Nikon\0\1"sv, 8, Base::Block},
    {"OLYMPUS\0"sv, 12, Base::Note},      {"OM SYSTEM\0"sv, 16, Base::Note},
    {"OLYMP\0"sv, 8, Base::Block},        {"EPSON\0"sv, 8, Base::Block},
    {"MINOL\0"sv, 8, Base::Block},        {"CAMER\0"sv, 8, Base::Block},
    {"SANYO\0"sv, 8, Base::Block},        {"SONY "sv, 12, Base::Block},
    {"VHAB "sv, 12, Base::Block},         {"Panasonic\0"sv, 12, Base::Block},
    {"PENTAX \0"sv, 10, Base::Note},      {"AOC\0"sv, 6, Base::Block},
    {"QVC\0"sv, 6, Base::Block},          {"SIGMA\0"sv, 10, Base::Block},
    {"FOVEON\0"sv, 10, Base::Block},      {"Ricoh\0"sv, 8, Base::Block},
    {"RICOH\0"sv, 8, Base::Block},        {"Apple iOS\0"sv, 14, Base::Note},
    {"LEICA\0"sv, 8, Base::Block},
}};
constexpr std::string_view kFuji = "FUJIFILM";

// Entries whose number is the place of another directory, in the notes of the makers that have such.
constexpr std::array<std::uint16_t, 12> kMakerDirectories{0x0011, 0x0E10, 0x2010, 0x2020, 0x2030, 0x2031,
                                                          0x2040, 0x2050, 0x3000, 0x4000, 0x4500, 0x5000};

constexpr std::size_t kMostEntries = 500;

struct Start {
    std::uint64_t directory = 0;  // in the block
    std::uint64_t base = 0;       // in the block
    std::optional<ByteOrder> order;
};

std::optional<ByteOrder> OrderMark(std::string_view bytes) {
    if (bytes.starts_with("II")) return ByteOrder::Little;
    if (bytes.starts_with("MM")) return ByteOrder::Big;
    return std::nullopt;
}

Start FindStart(std::string_view note, std::uint64_t at) {
    if (note.starts_with(kFuji)) {
        constexpr std::size_t kPointer = 8;
        return {at + ReaderOf(note, ByteOrder::Little).U32(kPointer).value_or(0), at, ByteOrder::Little};
    }
    for (const Layout& layout : kLayouts) {
        if (!note.starts_with(layout.head) || note.size() < layout.directory) continue;
        const std::uint64_t begin = at + layout.directory;
        if (layout.base != Base::OwnHeader) {
            // Some say their order in the two bytes in front.
            const auto order =
                layout.directory >= 2 ? OrderMark(note.substr(layout.directory - 2)) : std::nullopt;
            return {begin, layout.base == Base::Block ? 0 : at, order};
        }
        const std::string_view own = note.substr(layout.directory);
        const auto order = OrderMark(own);
        return {begin + ReaderOf(own, order.value_or(ByteOrder::Little)).U32(4).value_or(0), begin, order};
    }
    return {at, 0, std::nullopt};
}

// The places that a directory names; empty optional when it is none.
std::optional<std::vector<NotePlace>> ReadPlaces(const ByteReader& block, const Start& start,
                                                 std::uint64_t noteEnd) {
    const auto count = block.U16(static_cast<std::size_t>(start.directory));
    if (!count || *count == 0 || *count > kMostEntries) return std::nullopt;
    if (start.directory + 2 + std::uint64_t{*count} * kEntryLength > noteEnd) return std::nullopt;
    std::vector<NotePlace> places;
    for (std::size_t i = 0; i < *count; ++i) {
        const auto at = static_cast<std::size_t>(start.directory + 2 + i * kEntryLength);
        const std::uint16_t tag = *block.U16(at), type = *block.U16(at + 2);
        const std::uint64_t length = std::uint64_t{*block.U32(at + 4)} * ElementLength(type);
        const std::uint64_t value = start.base + *block.U32(at + 8);
        if (ElementLength(type) == 0 && type != 0) return std::nullopt;
        if (length > kFieldLength) {
            places.push_back({{value, value + length}, at + 8, block.Order()});
        } else if ((type == kLongType || type == kDirectoryType) &&
                   std::find(kMakerDirectories.begin(), kMakerDirectories.end(), tag) !=
                       kMakerDirectories.end()) {
            places.push_back({{value, value + 2}, at + 8, block.Order()});
        }
    }
    return places;
}

}  // namespace

NotePlaces MakerNotePlaces(std::string_view block, const Range& note, ByteOrder blockOrder) {
    const Start start = FindStart(
        block.substr(static_cast<std::size_t>(note.begin), static_cast<std::size_t>(note.end - note.begin)),
        note.begin);
    if (start.directory >= note.end) return {};
    const ByteOrder other = blockOrder == ByteOrder::Little ? ByteOrder::Big : ByteOrder::Little;
    // A note may have an order of its own without saying so.
    for (const ByteOrder order : {start.order.value_or(blockOrder), start.order.value_or(other)})
        if (auto places = ReadPlaces(ReaderOf(block, order), start, note.end))
            return {std::move(*places), start.base, start.directory};
    return {};
}

}  // namespace kalmora::exif
