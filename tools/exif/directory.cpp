#include "directory.h"

#include <algorithm>
#include <utility>

namespace exif {

namespace {

constexpr std::uint16_t exifPointer = 0x8769, gpsPointer = 0x8825, interoperabilityPointer = 0xA005;
constexpr std::uint16_t previewOffset = 0x0201, previewLength = 0x0202;
constexpr std::uint32_t mainAt = 8;  // behind the header

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

void Directory::Add(std::uint16_t tag, Type type, Bytes value) {
    const auto count = static_cast<std::uint32_t>(value.size()) / BytesOf(type);
    AddAsGiven(tag, static_cast<std::uint16_t>(type), count, std::move(value));
}

void Directory::AddAsGiven(std::uint16_t tag, std::uint16_t type, std::uint32_t count, Bytes value) {
    entries_.push_back({tag, type, count, std::move(value), false});
}

void Directory::AddPointing(std::uint16_t tag, std::uint16_t type, std::uint32_t count,
                            std::uint32_t offset) {
    Writer value(order_);
    value.Put(offset, 4);
    entries_.push_back({tag, type, count, value.Get(), true});
}

void Directory::SetLong(std::uint16_t tag, std::uint32_t number) {
    Writer value(order_);
    value.Put(number, 4);
    for (Entry& entry : entries_)
        if (entry.tag == tag && !entry.isFixed) entry.value = value.Get();
}

void Directory::WantLong(std::uint16_t tag) {
    for (const Entry& entry : entries_)
        if (entry.tag == tag && !entry.isFixed) return;
    Long(tag, 0);
}

std::uint32_t Directory::Length() const {
    std::uint32_t length = 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
    for (const Entry& entry : entries_)
        if (entry.value.size() > 4) length += Even(entry.value.size());
    return length;
}

void Directory::Write(Writer& out, std::optional<std::uint32_t> next) const {
    Writer values(order_);
    const std::uint32_t valuesAt = out.Length() + 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
    out.Put(static_cast<std::uint32_t>(entries_.size()), 2);
    for (const Entry& entry : entries_) {
        out.Put(entry.tag, 2);
        out.Put(entry.type, 2);
        out.Put(entry.count, 4);
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
    if (next) out.Put(*next, 4);
    out.Put(values.Get());
}

std::optional<std::uint32_t> Block::NextOfMain(std::uint32_t preview) const {
    if (!hasNextOffset_) return std::nullopt;
    return nextOffset_ != 0 ? nextOffset_ : preview;
}

Bytes Block::Build() const {
    std::array<Directory, 5> parts = parts_;
    if (!preview_.empty()) {
        parts[Preview].WantLong(previewOffset);
        parts[Preview].WantLong(previewLength);
        parts[Preview].SetLong(previewLength, static_cast<std::uint32_t>(preview_.size()));
    }
    if (!parts[Interoperability].IsEmpty()) parts[Exif].WantLong(interoperabilityPointer);
    if (!parts[Exif].IsEmpty()) parts[Main].WantLong(exifPointer);
    if (!parts[Gps].IsEmpty()) parts[Main].WantLong(gpsPointer);

    std::array<std::uint32_t, 5> offsets{};
    std::uint32_t at = mainAt;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        if (parts[part].IsEmpty() && part != Main) continue;
        offsets[part] = at;
        at += parts[part].Length();
    }
    parts[Main].SetLong(exifPointer, offsets[Exif]);
    parts[Main].SetLong(gpsPointer, offsets[Gps]);
    parts[Exif].SetLong(interoperabilityPointer, offsets[Interoperability]);
    if (!preview_.empty()) parts[Preview].SetLong(previewOffset, at);

    Writer block(order_);
    block.Put(order_ == ByteOrder::Big ? "MM" : "II");
    block.Put(42, 2);
    block.Put(mainAt, 4);
    for (std::size_t part = 0; part < parts.size(); ++part) {
        if (offsets[part] == 0) continue;
        parts[part].Write(block, part == Main ? NextOfMain(offsets[Preview]) : 0);
    }
    block.Put(preview_);
    return block.Get();
}

Bytes Segment(ByteOrder order, Directory main, Directory exif, Bytes preview, std::uint32_t dotsPerInch) {
    Block block(order);
    block.At(Block::Main) = std::move(main);
    block.At(Block::Exif) = std::move(exif);
    if (!preview.empty()) {
        Directory& small = block.At(Block::Preview);
        small.Short(0x0103, 6);  // JPEG
        small.Rational(0x011A, dotsPerInch, 1);
        small.Rational(0x011B, dotsPerInch, 1);
        small.Short(0x0128, 2);  // inches
        block.SetPreview(std::move(preview));
    }
    Writer segment;
    segment.Put(std::string_view("Exif\0\0", 6));
    segment.Put(block.Build());
    return segment.Get();
}

}  // namespace exif
