// Builds Exif blocks: directories of tagged values, the bytes in one byte order, and the block
// of five directories that a photo has.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace exif {

using Bytes = std::vector<std::uint8_t>;

enum class ByteOrder { Little, Big };

enum class Type : std::uint16_t {
    Byte = 1,
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    Undefined = 7,
    SignedRational = 10
};

// Numbers and texts, one behind the other.
class Writer {
public:
    explicit Writer(ByteOrder order = ByteOrder::Little) : order_(order) {}

    // The lowest `length` bytes of the value.
    void Put(std::uint32_t value, int length);
    void Put(const Bytes& more) { bytes_.insert(bytes_.end(), more.begin(), more.end()); }
    void Put(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
    // Fills with zeros up to `length` bytes in all.
    void PadTo(std::size_t length);
    std::uint32_t Length() const { return static_cast<std::uint32_t>(bytes_.size()); }
    const Bytes& Get() const { return bytes_; }

private:
    ByteOrder order_;
    Bytes bytes_;
};

// One directory. Entries are written in the order in which they were added, which is to be that of their
// tags, and values of more than four bytes follow it in the same order.
class Directory {
public:
    explicit Directory(ByteOrder order) : order_(order) {}

    // The count follows from the length of the value.
    void Add(std::uint16_t tag, Type type, Bytes value);
    void Add(std::uint16_t tag, Type type, std::string_view value) {
        Add(tag, type, Bytes(value.begin(), value.end()));
    }
    void Text(std::uint16_t tag, std::string_view text);  // closed with a zero
    void Short(std::uint16_t tag, std::uint32_t value) { Numbers(tag, Type::Short, {value}, 2); }
    void Long(std::uint16_t tag, std::uint32_t value) { Numbers(tag, Type::Long, {value}, 4); }
    void Rational(std::uint16_t tag, std::uint32_t above, std::uint32_t below) {
        Numbers(tag, Type::Rational, {above, below}, 4);
    }
    void SignedRational(std::uint16_t tag, std::int32_t above, std::int32_t below) {
        Numbers(tag, Type::SignedRational,
                {static_cast<std::uint32_t>(above), static_cast<std::uint32_t>(below)}, 4);
    }
    // An entry as a hostile file may have it: type and count are written as they are given.
    void AddAsGiven(std::uint16_t tag, std::uint16_t type, std::uint32_t count, Bytes value);
    // An entry whose four value bytes are this number, with any length; SetLong leaves it alone.
    void AddPointing(std::uint16_t tag, std::uint16_t type, std::uint32_t count, std::uint32_t offset);
    // A number that is known only when all is laid out: replaces the value of entries that were added.
    void SetLong(std::uint16_t tag, std::uint32_t value);
    // Adds the entry for such a number where there is none.
    void WantLong(std::uint16_t tag);

    bool IsEmpty() const { return entries_.empty(); }

    // In bytes, with the values behind the directory.
    std::uint32_t Length() const;
    // At the end of `out`, whose first byte offsets count from; `next` is the offset of the directory that
    // follows, or 0, or left out.
    void Write(Writer& out, std::optional<std::uint32_t> next) const;

private:
    struct Entry {
        std::uint16_t tag = 0, type = 0;
        std::uint32_t count = 0;
        Bytes value;
        bool isFixed = false;
    };
    void Numbers(std::uint16_t tag, Type type, const std::vector<std::uint32_t>& numbers, int length);

    ByteOrder order_;
    std::vector<Entry> entries_;
};

// A block of directories in the order of the enum, each followed by its values; those without an entry are
// left out, but for the main one. The preview follows them, a JPEG.
class Block {
public:
    enum Part { Main, Exif, Gps, Interoperability, Preview };

    explicit Block(ByteOrder order)
        : order_(order),
          parts_{Directory(order), Directory(order), Directory(order), Directory(order), Directory(order)} {}

    ByteOrder Order() const { return order_; }
    Directory& At(Part part) { return parts_[part]; }
    void SetPreview(Bytes jpeg) { preview_ = std::move(jpeg); }
    // Leaves the offset of the next directory out of the main one.
    void WithoutNextOffset() { hasNextOffset_ = false; }
    // Writes this offset there instead of the true one.
    void SetNextOffset(std::uint32_t offset) { nextOffset_ = offset; }

    // From the byte order mark on. Pointers to the directories and to the preview are set to where those
    // are, and added at the end of their directory where they are missing.
    Bytes Build() const;

private:
    std::optional<std::uint32_t> NextOfMain(std::uint32_t preview) const;

    ByteOrder order_;
    std::array<Directory, 5> parts_;
    Bytes preview_;
    bool hasNextOffset_ = true;
    std::uint32_t nextOffset_ = 0;
};

// The content of an APP1 segment from "Exif" on: a block of the main and the Exif directory, and of the
// preview with its own directory, which says that it has so many dots per inch.
Bytes Segment(ByteOrder order, Directory main, Directory exif, Bytes preview, std::uint32_t dotsPerInch);

}  // namespace exif
