// Directories of tagged values, as an Exif block is made of them, and the bytes in one order that they stand
// in.
#pragma once

#include <cstdint>
#include <string_view>
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

// One directory. Values of more than four bytes stand behind it in the order in which they were added, so
// entries are added in the order of their tags.
class Directory {
public:
    explicit Directory(ByteOrder order) : order_(order) {}

    void Add(std::uint16_t tag, Type type, Bytes value) { entries_.push_back({tag, type, std::move(value)}); }
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
    // A number that is known only when all is laid out: replaces the value of an entry that was added.
    void SetLong(std::uint16_t tag, std::uint32_t value);

    // In bytes, with the values behind the directory.
    std::uint32_t Length() const;
    // At the end of `out`, whose first byte offsets count from; `next` is the offset of the directory that
    // follows, or 0.
    void Write(Writer& out, std::uint32_t next) const;

private:
    struct Entry {
        std::uint16_t tag;
        Type type;
        Bytes value;
    };
    void Numbers(std::uint16_t tag, Type type, const std::vector<std::uint32_t>& numbers, int length);

    ByteOrder order_;
    std::vector<Entry> entries_;
};

// The content of an APP1 segment from "Exif" on: the main directory, which has an entry for the pointer to
// the Exif directory (tag 0x8769, any value), and the preview, a JPEG, with its own directory. Without a
// preview that directory is left out. `dotsPerInch` is told of the preview.
Bytes Segment(ByteOrder order, Directory main, const Directory& exif, const Bytes& preview,
              std::uint32_t dotsPerInch);

}  // namespace exif
