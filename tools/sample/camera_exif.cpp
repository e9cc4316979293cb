#include "camera_exif.h"

#include <cmath>

#include "random.h"
#include "text/text.h"

namespace sample {

namespace {

using exif::Directory;
using exif::Type;

std::int32_t Hundredths(float value) { return static_cast<std::int32_t>(std::lround(value * 100.0f)); }
exif::ByteOrder OrderOf(const Shot& shot) {
    return CameraAt(shot.camera).bigEndian ? exif::ByteOrder::Big : exif::ByteOrder::Little;
}

// What a camera would have set for the light of the hour.
Directory ShootingFields(const Shot& shot, int width, int height) {
    Random random(shot.seed ^ 0x5EEDu);
    const int hour = shot.when.hour;
    const bool dark = hour >= 19 || hour < 6;
    const bool indoors = shot.scene->light == Light::Inside;
    constexpr float apertures[] = {2.8f, 3.5f, 4.0f, 5.6f, 7.1f, 8.0f};
    const float aperture = apertures[dark || indoors ? random.Pick(0, 1) : random.Pick(2, 5)];
    constexpr std::uint32_t shutters[3][4] = {{8, 15, 30, 40}, {60, 80, 100, 125}, {200, 250, 320, 500}};
    const std::uint32_t shutter = shutters[dark                                ? 0
                                           : indoors || hour >= 17 || hour < 8 ? 1
                                                                               : 2][random.Pick(0, 3)];
    constexpr std::uint32_t speeds[2][4] = {{80, 100, 100, 200}, {400, 400, 800, 1600}};
    const std::uint32_t iso = speeds[dark || indoors ? 1 : 0][random.Pick(0, 3)];
    const float bias = random.Chance(0.2f) ? (random.Chance(0.5f) ? 0.33f : -0.33f) : 0.0f;
    const bool flash = dark && indoors && random.Chance(0.4f);
    constexpr std::uint32_t focalLengths[] = {58, 74, 92, 116, 174, 232};  // tenths of a millimetre
    const float apertureValue = 2.0f * std::log2(aperture);
    const float shutterValue = std::log2(static_cast<float>(shutter));
    const float brightness = apertureValue + shutterValue - std::log2(static_cast<float>(iso) / 3.125f);
    const std::string taken = CameraTime(shot.when);

    Directory fields(OrderOf(shot));
    fields.Rational(0x829A, 1, shutter);
    fields.Rational(0x829D, static_cast<std::uint32_t>(std::lround(aperture * 10.0f)), 10);
    fields.Short(0x8822, 2);  // exposure program: automatic
    fields.Short(0x8827, iso);
    fields.Add(0x9000, Type::Undefined, "0220");
    fields.Text(0x9003, taken);
    fields.Text(0x9004, taken);
    fields.Add(0x9101, Type::Undefined, exif::Bytes{1, 2, 3, 0});  // Y, Cb, Cr
    fields.SignedRational(0x9201, Hundredths(shutterValue), 100);
    fields.Rational(0x9202, static_cast<std::uint32_t>(Hundredths(apertureValue)), 100);
    fields.SignedRational(0x9203, Hundredths(brightness), 100);
    fields.SignedRational(0x9204, Hundredths(bias), 100);
    fields.Short(0x9209, flash ? 0x19 : 0x10);  // fired in automatic mode; switched off
    fields.Rational(0x920A, focalLengths[random.Pick(0, 5)], 10);
    if (!shot.estimations.empty()) {
        fields.Add(0x9286, Type::Undefined, std::string("ASCII\0\0\0", 8) + shot.estimations + '\0');
    }
    fields.Add(0xA000, Type::Undefined, "0100");
    fields.Short(0xA001, 1);  // sRGB
    fields.Long(0xA002, static_cast<std::uint32_t>(width));
    fields.Long(0xA003, static_cast<std::uint32_t>(height));
    return fields;
}

}  // namespace

exif::Bytes ExifSegment(const Shot& shot, int width, int height, const exif::Bytes& thumbnail) {
    const Camera& camera = CameraAt(shot.camera);
    Directory main(OrderOf(shot));
    main.Text(0x010F, camera.maker);
    main.Text(0x0110, camera.model);
    main.Short(0x0112, static_cast<std::uint32_t>(shot.orientation));
    main.Rational(0x011A, 72, 1);
    main.Rational(0x011B, 72, 1);
    main.Short(0x0128, 2);  // inches
    main.Text(0x0131, camera.software);
    main.Text(0x0132, CameraTime(shot.when));
    main.Short(0x0213, 1);
    main.Long(0x8769, 0);
    if (!shot.comment.empty()) {
        // Little-endian in files of either order, as desktop programs write it.
        main.Add(0x9C9C, Type::Byte, kalmora::text::ToUtf16(shot.comment, false) + std::string(2, '\0'));
    }
    return exif::Segment(OrderOf(shot), std::move(main), ShootingFields(shot, width, height), thumbnail, 72);
}

}  // namespace sample
