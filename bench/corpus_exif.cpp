#include "corpus_exif.h"

#include <cmath>
#include <string_view>

#include "exif/directory.h"

namespace bench {

namespace {

using exif::ByteOrder;
using exif::Directory;
using exif::Type;
using exif::Writer;

ByteOrder OrderOf(const Camera& camera) { return camera.bigEndian ? ByteOrder::Big : ByteOrder::Little; }

// A small directory with one large value of unknown meaning, as makers write it.
Bytes MakerNote(const Camera& camera) {
    Writer note(OrderOf(camera));
    note.Put(std::string_view(camera.make).substr(0, 6));
    note.PadTo(12);
    Directory directory(OrderOf(camera));
    directory.Short(0x0001, 2);
    directory.Text(0x0006, camera.model);
    Bytes unknown(camera.makerNoteLength);
    std::uint32_t noise = camera.makerNoteLength;
    for (std::uint8_t& byte : unknown) {
        noise = noise * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(noise >> 24);
    }
    directory.Add(0x00FE, Type::Undefined, std::move(unknown));
    directory.Write(note, 0);
    return note.Get();
}

Directory MainDirectory(const Camera& camera, const Shot& shot) {
    Directory main(OrderOf(camera));
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
    main.Long(0x8769, 0);
    if (!shot.comment.empty()) {
        Bytes wide;
        for (const char letter : shot.comment + '\0') {
            wide.push_back(static_cast<std::uint8_t>(letter));
            wide.push_back(0);
        }
        main.Add(0x9C9C, Type::Byte, std::move(wide));
    }
    return main;
}

Directory ExifDirectory(const Camera& camera, const Shot& shot) {
    const auto apex = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 10000)); };
    Directory exif(OrderOf(camera));
    exif.Rational(0x829A, 1, shot.exposure);
    exif.Rational(0x829D, shot.aperture, 10);
    exif.Short(0x8822, 2);
    exif.Short(0x8827, shot.iso);
    exif.Add(0x9000, Type::Undefined, "0221");
    exif.Text(0x9003, shot.date);
    exif.Text(0x9004, shot.date);
    exif.Add(0x9101, Type::Undefined, Bytes{1, 2, 3, 0});
    exif.Rational(0x9102, 5, 1);
    exif.Rational(0x9201, apex(std::log2(shot.exposure)), 10000);
    exif.Rational(0x9202, apex(2 * std::log2(shot.aperture / 10.0)), 10000);
    exif.Rational(0x9203, shot.iso % 700, 100);
    exif.Rational(0x9204, shot.exposure % 3, 3);
    exif.Rational(0x9205, 95, 32);
    exif.Short(0x9207, 5);
    exif.Short(0x9209, 0x10);
    exif.Rational(0x920A, 24000, 1000);
    exif.Add(0x927C, Type::Undefined, MakerNote(camera));
    if (!shot.marks.empty()) {
        exif.Add(0x9286, Type::Undefined, std::string("ASCII\0\0\0", 8) + shot.marks);
    }
    exif.Add(0xA000, Type::Undefined, "0100");
    exif.Short(0xA001, 1);
    exif.Long(0xA002, static_cast<std::uint32_t>(shot.width));
    exif.Long(0xA003, static_cast<std::uint32_t>(shot.height));
    return exif;
}

}  // namespace

Bytes ExifSegment(const Camera& camera, const Shot& shot, const Bytes& thumbnail) {
    const Bytes content = exif::Segment(OrderOf(camera), MainDirectory(camera, shot),
                                        ExifDirectory(camera, shot), thumbnail, 180);
    Writer segment(ByteOrder::Big);
    segment.Put(0xFFE1, 2);
    segment.Put(static_cast<std::uint32_t>(content.size()) + 2, 2);
    segment.Put(content);
    return segment.Get();
}

}  // namespace bench
