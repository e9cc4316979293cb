#include "exif_writer.h"

#include <algorithm>
#include <cmath>

namespace sample {

namespace {

enum FieldType : std::uint32_t {
    Byte = 1,
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    Undefined = 7,
    SignedRational = 10
};

// A directory of tagged fields. Values that do not fit into four bytes stand behind the directory.
class Directory {
public:
    explicit Directory(ByteOrder order) : order_(order) {}

    void AddShort(std::uint32_t tag, std::uint32_t value) {
        ByteWriter bytes(order_);
        bytes.U16(value);
        Add(tag, Short, 1, bytes);
    }
    void AddLong(std::uint32_t tag, std::uint32_t value) {
        ByteWriter bytes(order_);
        bytes.U32(value);
        Add(tag, Long, 1, bytes);
    }
    void AddText(std::uint32_t tag, const std::string& text) {
        ByteWriter bytes(order_);
        bytes.Text(text);
        bytes.U8(0);
        Add(tag, Ascii, static_cast<std::uint32_t>(bytes.Size()), bytes);
    }
    void AddRational(std::uint32_t tag, std::uint32_t numerator, std::uint32_t denominator) {
        ByteWriter bytes(order_);
        bytes.U32(numerator);
        bytes.U32(denominator);
        Add(tag, Rational, 1, bytes);
    }
    void AddSigned(std::uint32_t tag, float value) {
        ByteWriter bytes(order_);
        bytes.U32(static_cast<std::uint32_t>(static_cast<std::int32_t>(std::lround(value * 100.0f))));
        bytes.U32(100);
        Add(tag, SignedRational, 1, bytes);
    }
    void AddRaw(std::uint32_t tag, FieldType type, const ByteWriter& bytes) {
        Add(tag, type, static_cast<std::uint32_t>(bytes.Size()), bytes);
    }

    std::size_t Size() const {
        std::size_t size = 2 + 12 * fields_.size() + 4;
        for (const Field& field : fields_) {
            size += field.bytes.size() > 4 ? field.bytes.size() + field.bytes.size() % 2 : 0;
        }
        return size;
    }

    // Appends the directory, which begins at `start` within the Exif block; `next` is the offset of the
    // directory that follows, or 0.
    void Write(ByteWriter& out, std::size_t start, std::uint32_t next) {
        std::sort(fields_.begin(), fields_.end(),
                  [](const Field& a, const Field& b) { return a.tag < b.tag; });
        std::size_t behind = start + 2 + 12 * fields_.size() + 4;
        out.U16(static_cast<std::uint32_t>(fields_.size()));
        for (const Field& field : fields_) {
            out.U16(field.tag);
            out.U16(field.type);
            out.U32(field.count);
            if (field.bytes.size() > 4) {
                out.U32(static_cast<std::uint32_t>(behind));
                behind += field.bytes.size() + field.bytes.size() % 2;
            } else {
                out.Append(field.bytes);
                out.Zeros(4 - field.bytes.size());
            }
        }
        out.U32(next);
        for (const Field& field : fields_) {
            if (field.bytes.size() > 4) {
                out.Append(field.bytes);
                out.Zeros(field.bytes.size() % 2);
            }
        }
    }

private:
    struct Field {
        std::uint32_t tag;
        FieldType type;
        std::uint32_t count;
        std::vector<std::uint8_t> bytes;
    };
    void Add(std::uint32_t tag, FieldType type, std::uint32_t count, const ByteWriter& bytes) {
        fields_.push_back({tag, type, count, bytes.Bytes()});
    }

    ByteOrder order_;
    std::vector<Field> fields_;
};

ByteWriter Raw(ByteOrder order, std::string_view text) {
    ByteWriter bytes(order);
    bytes.Text(text);
    return bytes;
}

Directory ShootingFields(const ExifNote& note) {
    Directory exif(note.order);
    const std::string taken = CameraTime(note.taken);
    const float exposure = 1.0f / static_cast<float>(note.shutterDenominator);
    const float apertureValue = 2.0f * std::log2(note.aperture);
    const float shutterValue = -std::log2(exposure);
    exif.AddRational(0x829A, 1, note.shutterDenominator);
    exif.AddRational(0x829D, static_cast<std::uint32_t>(std::lround(note.aperture * 10.0f)), 10);
    exif.AddShort(0x8822, 2);  // exposure program: automatic
    exif.AddShort(0x8827, note.iso);
    exif.AddRaw(0x9000, Undefined, Raw(note.order, "0220"));
    exif.AddText(0x9003, taken);
    exif.AddText(0x9004, taken);
    exif.AddRaw(0x9101, Undefined, Raw(note.order, std::string_view("\1\2\3\0", 4)));  // Y, Cb, Cr
    exif.AddSigned(0x9201, shutterValue);
    exif.AddRational(0x9202, static_cast<std::uint32_t>(std::lround(apertureValue * 100.0f)), 100);
    exif.AddSigned(0x9203, apertureValue + shutterValue - std::log2(static_cast<float>(note.iso) / 3.125f));
    exif.AddSigned(0x9204, note.bias);
    exif.AddShort(0x9209, note.flash ? 0x19 : 0x10);  // fired in automatic mode; switched off
    exif.AddRational(0x920A, static_cast<std::uint32_t>(std::lround(note.focalLength * 10.0f)), 10);
    if (!note.estimations.empty()) {
        exif.AddRaw(0x9286, Undefined,
                    Raw(note.order, std::string("ASCII\0\0\0", 8) + note.estimations + '\0'));
    }
    exif.AddRaw(0xA000, Undefined, Raw(note.order, "0100"));
    exif.AddShort(0xA001, 1);  // sRGB
    exif.AddLong(0xA002, note.width);
    exif.AddLong(0xA003, note.height);
    return exif;
}

}  // namespace

std::vector<std::uint8_t> ExifSegment(const ExifNote& note) {
    constexpr std::uint32_t mainStart = 8;
    Directory main(note.order);
    main.AddText(0x010F, note.maker);
    main.AddText(0x0110, note.model);
    main.AddShort(0x0112, static_cast<std::uint32_t>(note.orientation));
    main.AddRational(0x011A, 72, 1);
    main.AddRational(0x011B, 72, 1);
    main.AddShort(0x0128, 2);  // inches
    main.AddText(0x0131, note.software);
    main.AddText(0x0132, CameraTime(note.taken));
    main.AddShort(0x0213, 1);
    if (!note.comment.empty()) {
        // Little-endian in files of either order, as desktop programs write it.
        ByteWriter text(ByteOrder::Little);
        for (const char16_t unit : Utf16(note.comment)) {
            text.U16(unit);
        }
        text.U16(0);
        main.AddRaw(0x9C9C, Byte, text);
    }
    Directory exif = ShootingFields(note);
    const auto exifStart =
        static_cast<std::uint32_t>(mainStart + main.Size() + 12);  // 12: the pointer itself
    main.AddLong(0x8769, exifStart);
    const auto thumbStart = static_cast<std::uint32_t>(exifStart + exif.Size());

    Directory thumb(note.order);
    thumb.AddShort(0x0103, 6);  // JPEG
    thumb.AddRational(0x011A, 72, 1);
    thumb.AddRational(0x011B, 72, 1);
    thumb.AddShort(0x0128, 2);
    thumb.AddLong(0x0202, static_cast<std::uint32_t>(note.thumbnail.size()));
    const auto imageStart = static_cast<std::uint32_t>(thumbStart + thumb.Size() + 12);
    thumb.AddLong(0x0201, imageStart);

    ByteWriter block(note.order);
    block.Text(note.order == ByteOrder::Little ? "II" : "MM");
    block.U16(42);
    block.U32(mainStart);
    main.Write(block, mainStart, thumbStart);
    exif.Write(block, exifStart, 0);
    thumb.Write(block, thumbStart, 0);
    block.Append(note.thumbnail);

    ByteWriter segment;
    segment.Text(std::string_view("Exif\0\0", 6));
    segment.Append(block.Bytes());
    return segment.Bytes();
}

}  // namespace sample
