#include "directory.h"

#include <algorithm>

namespace exif {

namespace {

constexpr std::uint16_t exifPointer = 0x8769;
constexpr std::uint16_t previewOffset = 0x0201;

std::uint32_t BytesOf(Type type) {
    switch (type) {
        case Type::Short:
            return 2;
        case Type::Long:
            return 4;
        case Type::Rational:
        case Type::SignedRational:
            return 8;
        default:
            return 1;
    }
}

std::uint32_t Even(std::size_t length) { return static_cast<std::uint32_t>((length + 1) / 2 * 2); }

}  // namespace

void Writer::Put(std::uint32_t value, int length) {
    for (int i = 0; i < length; ++i) {
        const int shift = 8 * (order_ == ByteOrder::Big ? length - 1 - i : i);
        bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

void Writer::PadTo(std::size_t length) { bytes_.resize(std::max(length, bytes_.size())); }

void Directory::Text(std::uint16_t tag, std::string_view text) {
    Bytes value(text.begin(), text.end());
    value.push_back(0);
    Add(tag, Type::Ascii, std::move(value));
}

void Directory::Numbers(std::uint16_t tag, Type type, const std::vector<std::uint32_t>& numbers, int length) {
    Writer value(order_);
    for (const std::uint32_t number : numbers) value.Put(number, length);
    Add(tag, type, value.Get());
}

void Directory::SetLong(std::uint16_t tag, std::uint32_t number) {
    Writer value(order_);
    value.Put(number, 4);
    for (Entry& entry : entries_)
        if (entry.tag == tag) entry.value = value.Get();
}

std::uint32_t Directory::Length() const {
    std::uint32_t length = 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
    for (const Entry& entry : entries_)
        if (entry.value.size() > 4) length += Even(entry.value.size());
    return length;
}

void Directory::Write(Writer& out, std::uint32_t next) const {
    Writer values(order_);
    const std::uint32_t valuesAt = out.Length() + 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
    out.Put(static_cast<std::uint32_t>(entries_.size()), 2);
    for (const Entry& entry : entries_) {
        out.Put(entry.tag, 2);
        out.Put(static_cast<std::uint32_t>(entry.type), 2);
        out.Put(static_cast<std::uint32_t>(entry.value.size()) / BytesOf(entry.type), 4);
        if (entry.value.size() > 4) {
            out.Put(valuesAt + values.Length(), 4);
            values.Put(entry.value);
            values.PadTo(Even(values.Length()));
        } else {
            const std::uint32_t end = out.Length() + 4;
            out.Put(entry.value);
            out.PadTo(end);
        }
    }
    out.Put(next, 4);
    out.Put(values.Get());
}

Bytes Segment(ByteOrder order, Directory main, const Directory& exif, const Bytes& preview,
              std::uint32_t dotsPerInch) {
    constexpr std::uint32_t mainAt = 8;
    const std::uint32_t exifAt = mainAt + main.Length();
    const std::uint32_t previewAt = exifAt + exif.Length();
    main.SetLong(exifPointer, exifAt);
    Writer block(order);
    block.Put(order == ByteOrder::Big ? "MM" : "II");
    block.Put(42, 2);
    block.Put(mainAt, 4);
    main.Write(block, preview.empty() ? 0 : previewAt);
    exif.Write(block, 0);
    if (!preview.empty()) {
        Directory small(order);
        small.Short(0x0103, 6);  // JPEG
        small.Rational(0x011A, dotsPerInch, 1);
        small.Rational(0x011B, dotsPerInch, 1);
        small.Short(0x0128, 2);  // inches
        small.Long(previewOffset, 0);
        small.Long(0x0202, static_cast<std::uint32_t>(preview.size()));
        small.SetLong(previewOffset, previewAt + small.Length());
        small.Write(block, 0);
        block.Put(preview);
    }
    Writer segment;
    segment.Put(std::string_view("Exif\0\0", 6));
    segment.Put(block.Get());
    return segment.Get();
}

}  // namespace exif
