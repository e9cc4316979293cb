#include "develop.h"

#include <array>

namespace sample {

namespace {

constexpr int curveSteps = 4096;

// Screen values by the square root of linear light: evenly fine in the shadows.
const std::array<float, curveSteps + 1>& ScreenCurve() {
    static const auto curve = [] {
        std::array<float, curveSteps + 1> values{};
        for (int i = 0; i <= curveSteps; ++i) {
            const float root = Real(i) / Real(curveSteps);
            const float v = root * root;
            values[static_cast<std::size_t>(i)] =
                255.0f * (v <= 0.0031308f ? v * 12.92f : 1.055f * std::pow(v, 1.0f / 2.4f) - 0.055f);
        }
        return values;
    }();
    return curve;
}

// Straight up to three quarters, then rolling off, so that lamps and clouds keep their shape.
float Shoulder(float v) {
    constexpr float knee = 0.6f;
    if (v <= knee) {
        return std::max(v, 0.0f);
    }
    const float over = (v - knee) / (1.0f - knee);
    return knee + (1.0f - knee) * (over / (1.0f + over)) * 1.12f;
}

// The strong light of the picture at an eighth of its size, spread wide.
Canvas Spill(const Canvas& canvas) {
    constexpr int factor = 8;
    Canvas spill(canvas.Width() / factor + 1, canvas.Height() / factor + 1);
    for (int y = 0; y < spill.Height(); ++y) {
        for (int x = 0; x < spill.Width(); ++x) {
            Colour sum;
            int count = 0;
            for (int v = y * factor; v < std::min((y + 1) * factor, canvas.Height()); v += 2) {
                for (int u = x * factor; u < std::min((x + 1) * factor, canvas.Width()); u += 2) {
                    const Colour c = canvas.At(u, v);
                    sum = sum + c * Smooth(0.55f, 1.3f, Luminance(c));
                    ++count;
                }
            }
            spill.At(x, y) = count > 0 ? sum * (1.0f / Real(count)) : Colour{};
        }
    }
    spill.Blur(spill.Whole(), Real(std::max(canvas.Width(), canvas.Height())) / 320.0f);
    return spill;
}

}  // namespace

Image DevelopPicture(const Canvas& canvas, const Develop& settings, std::uint32_t seed) {
    const int width = canvas.Width();
    const int height = canvas.Height();
    Image image{width, height, {}};
    image.rgb.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    const Canvas spill = Spill(canvas);
    std::vector<Colour> spillRow(static_cast<std::size_t>(spill.Width()));
    std::uint32_t bits = (seed * 2654435761u) | 1u;
    const auto& curve = ScreenCurve();
    const Colour balance{1.0f + 0.10f * settings.warmth, 1.0f, 1.0f - 0.12f * settings.warmth};
    const float centreX = Real(width) * 0.5f;
    const float centreY = Real(height) * 0.5f;
    const float inverseRadius = 1.0f / (centreX * centreX + centreY * centreY);
    // The contrast turns about a middle grey.
    constexpr float grey = 118.0f;
    std::uint8_t* out = image.rgb.data();
    for (int y = 0; y < height; ++y) {
        const float dy = Real(y) - centreY;
        const float spillY = Real(y) / 8.0f - 0.5f;
        for (int x = 0; x < spill.Width(); ++x) {
            spillRow[static_cast<std::size_t>(x)] = spill.Sample(Real(x), spillY) * settings.bloom;
        }
        for (int x = 0; x < width; ++x) {
            const float dx = Real(x) - centreX;
            const float r2 = (dx * dx + dy * dy) * inverseRadius;
            const float falloff = settings.exposure * (1.0f - settings.vignette * r2 * (0.4f + 0.6f * r2));
            const float along = std::max(Real(x) / 8.0f - 0.5f, 0.0f);
            const auto cell = static_cast<std::size_t>(along);
            Colour c =
                canvas.At(x, y) + Mix(spillRow[cell], spillRow[cell + 1], along - static_cast<float>(cell));
            c = c * balance * falloff;
            const float luminance = Luminance(c);
            c = Mix({luminance, luminance, luminance}, c, settings.saturation);
            // A shift register: grain wants no more of chance than that.
            bits ^= bits << 13;
            bits ^= bits >> 17;
            bits ^= bits << 5;
            const float noise =
                (Real(static_cast<int>(bits & 0xFF)) + Real(static_cast<int>((bits >> 8) & 0xFF)) - 255.0f);
            const float dither = Real(static_cast<int>((bits >> 16) & 0xFF)) * (1.0f / 255.0f);
            const float grain = noise * settings.grain;
            auto screen = [&](float v) {
                const float root = std::sqrt(std::clamp(settings.paper ? v : Shoulder(v), 0.0f, 1.0f));
                const float level = curve[static_cast<std::size_t>(root * Real(curveSteps))];
                const float shaped = grey + (level - grey) * settings.contrast + grain + dither;
                return static_cast<std::uint8_t>(std::clamp(shaped, 0.0f, 255.0f));
            };
            *out++ = screen(c.r);
            *out++ = screen(c.g);
            *out++ = screen(c.b);
        }
    }
    return image;
}

Image FitInto(const Image& image, int width, int height) {
    Image fitted{width, height, {}};
    fitted.rgb.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, 0);
    const float scale = std::min(Real(width) / Real(image.width), Real(height) / Real(image.height));
    const int innerWidth = std::max(1, static_cast<int>(Real(image.width) * scale + 0.5f));
    const int innerHeight = std::max(1, static_cast<int>(Real(image.height) * scale + 0.5f));
    const int left = (width - innerWidth) / 2;
    const int top = (height - innerHeight) / 2;
    for (int y = 0; y < innerHeight; ++y) {
        const int fromY = y * image.height / innerHeight;
        const int toY = std::max(fromY + 1, (y + 1) * image.height / innerHeight);
        for (int x = 0; x < innerWidth; ++x) {
            const int fromX = x * image.width / innerWidth;
            const int toX = std::max(fromX + 1, (x + 1) * image.width / innerWidth);
            std::uint32_t sum[3] = {0, 0, 0};
            for (int v = fromY; v < toY; ++v) {
                for (int u = fromX; u < toX; ++u) {
                    const std::size_t at =
                        (static_cast<std::size_t>(v) * static_cast<std::size_t>(image.width) +
                         static_cast<std::size_t>(u)) *
                        3;
                    for (std::size_t i = 0; i < 3; ++i) {
                        sum[i] += image.rgb[at + i];
                    }
                }
            }
            const auto count = static_cast<std::uint32_t>((toX - fromX) * (toY - fromY));
            const std::size_t to = (static_cast<std::size_t>(top + y) * static_cast<std::size_t>(width) +
                                    static_cast<std::size_t>(left + x)) *
                                   3;
            for (std::size_t i = 0; i < 3; ++i) {
                fitted.rgb[to + i] = static_cast<std::uint8_t>((sum[i] + count / 2) / count);
            }
        }
    }
    return fitted;
}

void Mirror(Image& image) {
    const std::size_t stride = static_cast<std::size_t>(image.width) * 3;
    for (std::size_t row = 0; row < image.rgb.size(); row += stride) {
        for (std::size_t left = 0, right = stride - 3; left < right; left += 3, right -= 3) {
            std::swap_ranges(image.rgb.begin() + static_cast<std::ptrdiff_t>(row + left),
                             image.rgb.begin() + static_cast<std::ptrdiff_t>(row + left + 3),
                             image.rgb.begin() + static_cast<std::ptrdiff_t>(row + right));
        }
    }
}

Image Turned(const Image& image, int quarters) {
    const bool half = quarters == 2;
    Image turned{half ? image.width : image.height, half ? image.height : image.width, {}};
    turned.rgb.resize(image.rgb.size());
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            int toX = image.width - 1 - x;
            int toY = image.height - 1 - y;
            if (quarters == 1) {
                toX = image.height - 1 - y;
                toY = x;
            } else if (quarters == 3) {
                toX = y;
                toY = image.width - 1 - x;
            }
            const std::size_t from = (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                                      static_cast<std::size_t>(x)) *
                                     3;
            const std::size_t to = (static_cast<std::size_t>(toY) * static_cast<std::size_t>(turned.width) +
                                    static_cast<std::size_t>(toX)) *
                                   3;
            for (std::size_t i = 0; i < 3; ++i) {
                turned.rgb[to + i] = image.rgb[from + i];
            }
        }
    }
    return turned;
}

}  // namespace sample
