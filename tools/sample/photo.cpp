#include "photo.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <array>
#include <cmath>

#include "random.h"

// jpeglib.h wants FILE to be known before it.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on
#include <cstdlib>

namespace sample {

namespace {

// How the camera and the weather change the colours of the drawing.
struct Grade {
    float exposure = 1;
    float warmth = 0;  // -1 cold to 1 warm
    float contrast = 1;
    float saturation = 1;
    float vignette = 0.2f;  // light lost in the corners
    float noise = 2.0f;     // levels of 255
};

Grade GradeOf(const Shot& shot, Random& random) {
    Grade grade;
    grade.exposure *= 1.02f + 0.10f * random.Bell();
    grade.warmth += 0.16f * random.Bell();
    grade.contrast += 0.10f * random.Bell();
    grade.saturation += 0.16f * random.Bell();
    grade.vignette = random.Range(0.08f, 0.32f);
    const Light light = shot.scene->light;
    if (light == Light::Day || light == Light::Rain) {
        const float hour = static_cast<float>(shot.when.hour) + static_cast<float>(shot.when.minute) / 60.0f;
        const float low = std::clamp(std::max(hour - 14.5f, 9.5f - hour) / 2.5f, 0.0f, 1.0f);
        grade.warmth += 0.28f * low;
        grade.exposure *= 1.0f - 0.09f * low;
        if (shot.weather == Weather::Cloudy || light == Light::Rain) {
            grade.saturation -= 0.12f;
            grade.contrast -= 0.04f;
            grade.warmth -= 0.12f;
        } else if (shot.weather == Weather::Clear) {
            grade.saturation += 0.1f;
            grade.contrast += 0.05f;
        }
        const int month = shot.when.month;
        grade.warmth += month == 12 || month <= 2 ? -0.08f : month >= 9 && month <= 11 ? 0.08f : 0.0f;
    }
    if (light == Light::Night || light == Light::Inside) grade.noise = 3.5f;
    return grade;
}

void Develop(QImage& image, const Grade& grade, Random& random) {
    std::array<std::array<float, 256>, 3> curves;
    const std::array<float, 3> gain = {grade.exposure * (1 + 0.22f * grade.warmth),
                                       grade.exposure * (1 + 0.03f * grade.warmth),
                                       grade.exposure * (1 - 0.24f * grade.warmth)};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (std::size_t level = 0; level < 256; ++level) {
            float value = static_cast<float>(level) / 255.0f * gain[channel];
            // The highlights bend before they clip.
            if (value > 0.85f) value = 0.85f + 0.15f * std::tanh((value - 0.85f) / 0.15f);
            value = 0.5f + (value - 0.5f) * grade.contrast;
            curves[channel][level] = std::clamp(value, 0.0f, 1.0f) * 255.0f;
        }
    }
    const float centreX = static_cast<float>(image.width()) / 2.0f;
    const float centreY = static_cast<float>(image.height()) / 2.0f;
    std::uint32_t state = random.Next() | 1u;
    const float noiseScale = grade.noise / 65536.0f / 65536.0f * 2.0f;
    for (int y = 0; y < image.height(); ++y) {
        const float dy = (static_cast<float>(y) - centreY) / centreY;
        std::uint8_t* at = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x, at += 3) {
            const float dx = (static_cast<float>(x) - centreX) / centreX;
            const float away = dx * dx + dy * dy;
            const float shade = 1.0f - grade.vignette * 0.25f * away * away;
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            const float noise = (static_cast<float>(state) - 2147483648.0f) * noiseScale;
            const float r = curves[0][at[0]], g = curves[1][at[1]], b = curves[2][at[2]];
            const float grey = 0.3f * r + 0.59f * g + 0.11f * b;
            auto put = [&](float value) {
                const float mixed = (grey + (value - grey) * grade.saturation) * shade + noise + 0.5f;
                return static_cast<std::uint8_t>(std::clamp(mixed, 0.0f, 255.0f));
            };
            at[0] = put(r);
            at[1] = put(g);
            at[2] = put(b);
        }
    }
}

// The part of the drawing around a centre, in a frame of the target's size.
QImage Cut(const QImage& scene, int width, int height, double zoom, double centreX, double centreY,
           double degrees, bool mirror) {
    QImage image(width, height, QImage::Format_RGB888);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(width / 2.0, height / 2.0);
    painter.rotate(degrees);
    painter.scale(mirror ? -zoom : zoom, zoom);
    painter.translate(-centreX, -centreY);
    painter.drawImage(0, 0, scene);
    return image;
}

void AddSun(QImage& image, Random& random) {
    QPainter painter(&image);
    const double across = random.Unit();
    const QPointF sun(image.width() * across, image.height() * (0.2 * across - 0.1));
    QRadialGradient light(sun, image.width() * 0.75);
    light.setColorAt(0, QColor(255, 244, 214, 190));
    light.setColorAt(0.25, QColor(255, 236, 196, 80));
    light.setColorAt(1, QColor(255, 230, 190, 0));
    painter.setCompositionMode(QPainter::CompositionMode_Screen);
    painter.fillRect(image.rect(), light);
}

}  // namespace

QImage LoadDrawing(const std::string& folder, const std::string& name) {
    const std::string path = folder + "/" + name + ".png";
    QImage image(QString::fromStdString(path));
    if (image.isNull()) throw BadTable("cannot read " + path);
    return image.convertToFormat(QImage::Format_RGB32);
}

QImage TakePhoto(const QImage& scene, const Shot& shot) {
    Random random(shot.seed);
    const bool upright = shot.height > shot.width;
    const double degrees = 1.1 * random.Bell();
    // The smallest zoom at which the tilted frame still lies within the drawing.
    const double tilt = std::fabs(std::sin(degrees * 3.14159265 / 180.0));
    const double fill = std::max((shot.width + tilt * shot.height) / scene.width(),
                                 (shot.height + tilt * shot.width) / scene.height());
    const double zoom = fill * (1.0 + (upright ? 0.10 : 0.32) * random.Unit() * random.Unit());
    const double halfWidth = (shot.width + tilt * shot.height) / zoom / 2.0;
    const double halfHeight = (shot.height + tilt * shot.width) / zoom / 2.0;
    const double focus = scene.width() * double(shot.scene->focus);
    const double spareX = scene.width() / 2.0 - halfWidth;
    const double spareY = scene.height() / 2.0 - halfHeight;
    const double wanted = upright ? focus + 60.0 * double(random.Bell())
                                  : scene.width() / 2.0 + spareX * random.Range(-1.0f, 1.0f);
    const double centreX = std::clamp(wanted, halfWidth, std::max(halfWidth, scene.width() - halfWidth));
    const double centreY = scene.height() / 2.0 + spareY * random.Range(-1.0f, 1.0f);
    QImage image = Cut(scene, shot.width, shot.height, zoom, centreX, centreY, degrees, random.Chance(0.5f));
    if (shot.scene->light == Light::Day && shot.weather == Weather::Clear && random.Chance(0.3f)) {
        AddSun(image, random);
    }
    const Grade grade = GradeOf(shot, random);
    Develop(image, grade, random);
    return image;
}

QImage MovieFrame(const QImage& scene, float t) {
    const double scale = 320.0 / scene.width();
    const double zoom = scale * (1.25 + 0.5 * t);
    const double spareX = scene.width() / 2.0 - 160.0 / zoom;
    const double spareY = scene.height() / 2.0 - 120.0 / zoom;
    // Reduced first: the painter takes single pixels of a large drawing.
    const QImage small = scene.scaledToWidth(640, Qt::SmoothTransformation);
    const double part = 640.0 / scene.width();
    return Cut(small, 320, 240, zoom / part, (scene.width() / 2.0 + spareX * (t - 0.5)) * part,
               (scene.height() / 2.0 - spareY * (0.6 - t)) * part, 0, false);
}

QImage FitInto(const QImage& image, int width, int height) {
    const QImage small = image.scaled(width, height, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage fitted(width, height, QImage::Format_RGB888);
    fitted.fill(Qt::black);
    QPainter(&fitted).drawImage((width - small.width()) / 2, (height - small.height()) / 2, small);
    return fitted;
}

std::vector<std::uint8_t> JpegBytes(const QImage& image, int quality, const std::vector<std::uint8_t>& exif) {
    const QImage pixels = image.convertToFormat(QImage::Format_RGB888);
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors{};
    // The library's own handler ends the program; for a picture in memory only a lack of memory leads there.
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &buffer, &size);
    encoder.image_width = static_cast<JDIMENSION>(pixels.width());
    encoder.image_height = static_cast<JDIMENSION>(pixels.height());
    encoder.input_components = 3;
    encoder.in_color_space = JCS_RGB;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, quality, TRUE);
    encoder.comp_info[0].h_samp_factor = 2;  // colour at half width, as cameras store it
    encoder.comp_info[0].v_samp_factor = 1;
    encoder.write_JFIF_header = exif.empty() ? TRUE : FALSE;
    jpeg_start_compress(&encoder, TRUE);
    if (!exif.empty()) {
        jpeg_write_marker(&encoder, JPEG_APP0 + 1, exif.data(), static_cast<unsigned int>(exif.size()));
    }
    while (encoder.next_scanline < encoder.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(pixels.constScanLine(static_cast<int>(encoder.next_scanline)));
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::vector<std::uint8_t> bytes(buffer, buffer + size);
    std::free(buffer);
    return bytes;
}

}  // namespace sample
