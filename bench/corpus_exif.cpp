#include "corpus_exif.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

namespace bench {

namespace {

enum Type : std::uint16_t { kByte = 1, kAscii = 2, kShort = 3, kLong = 4, kRational = 5, kUndefined = 7 };

constexpr std::uint32_t kElement[] = {0, 1, 1, 2, 4, 8, 1, 1};

class Writer {
public:
    explicit Writer(bool bigEndian) : bigEndian_(bigEndian) {}
    void Put(std::uint32_t value, int length) {
        for (int i = 0; i < length; ++i)
            bytes_.push_back(static_cast<std::uint8_t>(value >> 8 * (bigEndian_ ? length - 1 - i : i)));
    }
    void Put(const Bytes& more) { std::copy(more.begin(), more.end(), std::back_inserter(bytes_)); }
    void PadTo(std::size_t length) { bytes_.resize(std::max(length, bytes_.size())); }
    std::uint32_t Length() const { return static_cast<std::uint32_t>(bytes_.size()); }
    const Bytes& Get() const { return bytes_; }

private:
    bool bigEndian_;
    Bytes bytes_;
};

Bytes Of(std::string_view text) { return Bytes(text.begin(), text.end()); }

// One directory. Values of more than four bytes stand behind it in the order in which they were added, so
// entries are added in the order of their tags.
class Directory {
public:
    explicit Directory(bool bigEndian) : bigEndian_(bigEndian) {}

    void Add(std::uint16_t tag, Type type, Bytes value) { entries_.push_back({tag, type, std::move(value)}); }
    void Text(std::uint16_t tag, std::string_view text) {
        Bytes value = Of(text);
        value.push_back(0);
        Add(tag, kAscii, std::move(value));
    }
    void Short(std::uint16_t tag, std::uint32_t value) { Number(tag, kShort, value, 2); }
    void Long(std::uint16_t tag, std::uint32_t value) { Number(tag, kLong, value, 4); }
    void Rational(std::uint16_t tag, std::uint32_t above, std::uint32_t below) {
        Writer value(bigEndian_);
        value.Put(above, 4);
        value.Put(below, 4);
        Add(tag, kRational, value.Get());
    }
    // Numbers that are known only when all is laid out.
    void SetLong(std::uint16_t tag, std::uint32_t number) {
        Writer value(bigEndian_);
        value.Put(number, 4);
        for (Entry& entry : entries_)
            if (entry.tag == tag) entry.value = value.Get();
    }

    std::uint32_t Length() const {
        std::uint32_t length = 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
        for (const Entry& entry : entries_)
            if (entry.value.size() > 4) length += Even(entry.value.size());
        return length;
    }
    // At the end of `out`, whose first byte offsets count from.
    void Write(Writer& out, std::uint32_t next) const {
        Writer values(bigEndian_);
        const std::uint32_t valuesAt =
            out.Length() + 2 + 12 * static_cast<std::uint32_t>(entries_.size()) + 4;
        out.Put(static_cast<std::uint32_t>(entries_.size()), 2);
        for (const Entry& entry : entries_) {
            out.Put(entry.tag, 2);
            out.Put(entry.type, 2);
            out.Put(static_cast<std::uint32_t>(entry.value.size()) / kElement[entry.type], 4);
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

private:
    struct Entry {
        std::uint16_t tag;
        Type type;
        Bytes value;
    };
    static std::uint32_t Even(std::size_t length) { return static_cast<std::uint32_t>((length + 1) / 2 * 2); }
    void Number(std::uint16_t tag, Type type, std::uint32_t number, int length) {
        Writer value(bigEndian_);
        value.Put(number, length);
        Add(tag, type, value.Get());
    }

    bool bigEndian_;
    std::vector<Entry> entries_;
};

constexpr std::uint16_t kExifPointer = 0x8769, kThumbnailOffset = 0x0201;

// A small directory with one large value that nobody knows, as makers write it.
Bytes MakerNote(const Camera& camera) {
    Writer note(camera.bigEndian);
    note.Put(Of(std::string_view(camera.make).substr(0, 6)));
    note.PadTo(12);
    Directory directory(camera.bigEndian);
    directory.Short(0x0001, 2);
    directory.Text(0x0006, camera.model);
    Bytes unknown(camera.makerNoteLength);
    std::uint32_t noise = camera.makerNoteLength;
    for (std::uint8_t& byte : unknown) {
        noise = noise * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(noise >> 24);
    }
    directory.Add(0x00FE, kUndefined, std::move(unknown));
    directory.Write(note, 0);
    return note.Get();
}

Directory MainDirectory(const Camera& camera, const Shot& shot) {
    Directory main(camera.bigEndian);
    main.Text(0x010E, std::string(31, ' '));
    main.Text(0x010F, camera.make);
    main.Text(0x0110, camera.model);
    main.Short(0x0112, 1);
    main.Rational(0x011A, 180, 1);
    main.Rational(0x011B, 180, 1);
    main.Short(0x0128, 2);
    main.Text(0x0131, "Firmware 1.01");
    main.Text(0x0132, shot.date);
    main.Short(0x0213, 2);
    main.Long(kExifPointer, 0);
    if (!shot.comment.empty()) {
        Bytes wide;
        for (const char letter : shot.comment + '\0') {
            wide.push_back(static_cast<std::uint8_t>(letter));
            wide.push_back(0);
        }
        main.Add(0x9C9C, kByte, std::move(wide));
    }
    return main;
}

Directory ExifDirectory(const Camera& camera, const Shot& shot) {
    const auto apex = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 10000)); };
    Directory exif(camera.bigEndian);
    exif.Rational(0x829A, 1, shot.exposure);
    exif.Rational(0x829D, shot.aperture, 10);
    exif.Short(0x8822, 2);
    exif.Short(0x8827, shot.iso);
    exif.Add(0x9000, kUndefined, Of("0221"));
    exif.Text(0x9003, shot.date);
    exif.Text(0x9004, shot.date);
    exif.Add(0x9101, kUndefined, {1, 2, 3, 0});
    exif.Rational(0x9102, 5, 1);
    exif.Rational(0x9201, apex(std::log2(shot.exposure)), 10000);
    exif.Rational(0x9202, apex(2 * std::log2(shot.aperture / 10.0)), 10000);
    exif.Rational(0x9203, shot.iso % 700, 100);
    exif.Rational(0x9204, shot.exposure % 3, 3);
    exif.Rational(0x9205, 95, 32);
    exif.Short(0x9207, 5);
    exif.Short(0x9209, 0x10);
    exif.Rational(0x920A, 24000, 1000);
    exif.Add(0x927C, kUndefined, MakerNote(camera));
    if (!shot.marks.empty()) {
        Bytes value = Of(std::string_view("ASCII\0\0\0", 8));
        std::copy(shot.marks.begin(), shot.marks.end(), std::back_inserter(value));
        exif.Add(0x9286, kUndefined, std::move(value));
    }
    exif.Add(0xA000, kUndefined, Of("0100"));
    exif.Short(0xA001, 1);
    exif.Long(0xA002, static_cast<std::uint32_t>(shot.width));
    exif.Long(0xA003, static_cast<std::uint32_t>(shot.height));
    return exif;
}

}  // namespace

Bytes ExifSegment(const Camera& camera, const Shot& shot, const Bytes& thumbnail) {
    constexpr std::uint32_t kHeader = 8;
    Directory main = MainDirectory(camera, shot);
    const Directory exif = ExifDirectory(camera, shot);
    const std::uint32_t exifAt = kHeader + main.Length();
    const std::uint32_t thumbnailDirectoryAt = exifAt + exif.Length();
    main.SetLong(kExifPointer, exifAt);

    Writer block(camera.bigEndian);
    block.Put(Of(camera.bigEndian ? "MM" : "II"));
    block.Put(42, 2);
    block.Put(kHeader, 4);
    main.Write(block, thumbnail.empty() ? 0 : thumbnailDirectoryAt);
    exif.Write(block, 0);
    if (!thumbnail.empty()) {
        Directory small(camera.bigEndian);
        small.Short(0x0103, 6);
        small.Rational(0x011A, 180, 1);
        small.Rational(0x011B, 180, 1);
        small.Short(0x0128, 2);
        small.Long(kThumbnailOffset, 0);
        small.Long(0x0202, static_cast<std::uint32_t>(thumbnail.size()));
        small.SetLong(kThumbnailOffset, thumbnailDirectoryAt + small.Length());
        small.Write(block, 0);
        block.Put(thumbnail);
    }

    Writer segment(true);
    segment.Put(0xFFE1, 2);
    segment.Put(block.Length() + 8, 2);
    segment.Put(Of(std::string_view("Exif\0\0", 6)));
    segment.Put(block.Get());
    return segment.Get();
}

}  // namespace bench
