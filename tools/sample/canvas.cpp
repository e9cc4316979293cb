#include "canvas.h"

#include <numbers>

namespace sample {

namespace {

constexpr float tau = 2.0f * std::numbers::pi_v<float>;

std::vector<float>& ThreadCells() {
    thread_local std::vector<float> cells;
    return cells;
}

// One pass of a running mean along a line of cells that stand `stride` apart.
void RunningMean(const float* from, float* to, int count, std::size_t stride, int radius) {
    const float share = 1.0f / Real(2 * radius + 1);
    float sum = 0;
    auto at = [&](int i) { return i < 0 || i >= count ? 0.0f : from[static_cast<std::size_t>(i) * stride]; };
    for (int i = -radius; i <= radius; ++i) {
        sum += at(i);
    }
    for (int i = 0; i < count; ++i) {
        to[static_cast<std::size_t>(i) * stride] = sum * share;
        sum += at(i + radius + 1) - at(i - radius);
    }
}

}  // namespace

Path Ellipse(Point centre, float rx, float ry, float angle) {
    const int count = std::clamp(Whole(std::max(rx, ry) * 0.8f) + 12, 16, 160);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    Path path;
    path.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const float a = tau * Real(i) / Real(count);
        const float x = rx * std::cos(a);
        const float y = ry * std::sin(a);
        path.push_back({centre.x + x * c - y * s, centre.y + x * s + y * c});
    }
    return path;
}

Path Box(float left, float top, float right, float bottom) {
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

Path Ribbon(const Path& line, float from, float to) {
    const std::size_t count = line.size();
    Path outline(count * 2);
    for (std::size_t i = 0; i < count; ++i) {
        const Point ahead = line[std::min(i + 1, count - 1)] - line[i > 0 ? i - 1 : 0];
        const float length = std::max(std::hypot(ahead.x, ahead.y), 1e-4f);
        const float half =
            0.5f *
            Lerp(from, to, static_cast<float>(i) / static_cast<float>(std::max<std::size_t>(count - 1, 1)));
        const Point side{-ahead.y / length * half, ahead.x / length * half};
        outline[i] = line[i] + side;
        outline[2 * count - 1 - i] = line[i] - side;
    }
    return outline;
}

Path Curve(const Path& knots, int stepsBetween) {
    if (knots.size() < 3) {
        return knots;
    }
    Path line;
    const std::size_t last = knots.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        const Point before = knots[i > 0 ? i - 1 : 0];
        const Point a = knots[i];
        const Point b = knots[i + 1];
        const Point after = knots[std::min(i + 2, last)];
        for (int step = 0; step < stepsBetween; ++step) {
            const float t = Real(step) / Real(stepsBetween);
            const Point p = a * 2.0f + (b - before) * t +
                            (before * 2.0f - a * 5.0f + b * 4.0f - after) * (t * t) +
                            (a * 3.0f - before - b * 3.0f + after) * (t * t * t);
            line.push_back(p * 0.5f);
        }
    }
    line.push_back(knots[last]);
    return line;
}

Coverage::Coverage(const Path& outline, int width, int height, float softness) : cells_(ThreadCells()) {
    if (outline.size() < 3) {
        return;
    }
    Point low = outline[0];
    Point high = outline[0];
    for (const Point p : outline) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    const float margin = softness * 3.0f + 1.0f;
    bounds_.left = static_cast<int>(std::clamp(low.x - margin, 0.0f, Real(width)));
    bounds_.top = static_cast<int>(std::clamp(low.y - margin, 0.0f, Real(height)));
    bounds_.right = static_cast<int>(std::clamp(high.x + margin + 1.0f, 0.0f, Real(width)));
    bounds_.bottom = static_cast<int>(std::clamp(high.y + margin + 1.0f, 0.0f, Real(height)));
    if (bounds_.Empty()) {
        bounds_ = {};
        return;
    }
    stride_ = bounds_.Width() + 2;
    cells_.assign(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(bounds_.Height()), 0.0f);
    const Point origin{Real(bounds_.left), Real(bounds_.top)};
    for (std::size_t i = 0; i < outline.size(); ++i) {
        AddEdge(outline[i] - origin, outline[(i + 1) % outline.size()] - origin);
    }
    for (int y = 0; y < bounds_.Height(); ++y) {
        float* row = cells_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(stride_);
        float sum = 0;
        for (int x = 0; x < bounds_.Width(); ++x) {
            sum += row[x];
            row[x] = std::min(std::fabs(sum), 1.0f);
        }
        row[bounds_.Width()] = row[bounds_.Width() + 1] = 0;
    }
    if (softness > 0.5f) {
        Soften(softness);
    }
}

const float* Coverage::Row(int y) const {
    return cells_.data() + static_cast<std::size_t>(y - bounds_.top) * static_cast<std::size_t>(stride_);
}

// Notes, for each pixel row that the edge crosses, how the covered area changes from column to column;
// the sum along the row is the coverage.
void Coverage::AddEdge(Point a, Point b) {
    if (a.y == b.y) {
        return;
    }
    float sign = 1;
    if (a.y > b.y) {
        std::swap(a, b);
        sign = -1;
    }
    const float slope = (b.x - a.x) / (b.y - a.y);
    float x = a.y < 0 ? a.x - a.y * slope : a.x;
    const float right = Real(bounds_.Width());
    const int end = std::min(bounds_.Height(), static_cast<int>(std::ceil(std::min(b.y, 1e6f))));
    for (int y = std::max(0, Whole(a.y)); y < end; ++y) {
        float* row = cells_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(stride_);
        const float height = std::min(Real(y + 1), b.y) - std::max(Real(y), a.y);
        const float next = x + slope * height;
        const float change = sign * height;
        const float x0 = std::clamp(std::min(x, next), 0.0f, right);
        const float x1 = std::clamp(std::max(x, next), 0.0f, right);
        const int first = static_cast<int>(x0);
        const int last = static_cast<int>(std::ceil(x1));
        if (last <= first + 1) {
            const float mean = 0.5f * (x0 + x1) - Real(first);
            row[first] += change * (1.0f - mean);
            row[first + 1] += change * mean;
        } else {
            // The edge crosses several columns. Of each, what lies right of the edge is covered: wholly for
            // the height it ran before it came here, and by the mean of the rest for the height it runs
            // inside.
            const float share = change / (x1 - x0);
            float entered = x0;
            float before = 0;
            for (int column = first; column < last; ++column) {
                const float leave = std::min(Real(column + 1), x1);
                const float rest = Real(column + 1) - 0.5f * (entered + leave);
                const float inside = share * ((entered - x0) + (leave - entered) * rest);
                row[column] += inside - before;
                before = inside;
                entered = leave;
            }
            row[last] += change - before;
        }
        x = next;
    }
}

void Coverage::Soften(float radius) {
    const int width = bounds_.Width();
    const int height = bounds_.Height();
    const auto stride = static_cast<std::size_t>(stride_);
    const int reach = std::max(1, Whole(radius * 0.6f + 0.5f));
    thread_local std::vector<float> other;
    other.assign(cells_.size(), 0.0f);
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = 0; y < height; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * stride;
            RunningMean(cells_.data() + row, other.data() + row, width, 1, reach);
        }
        for (int x = 0; x < width; ++x) {
            const auto column = static_cast<std::size_t>(x);
            RunningMean(other.data() + column, cells_.data() + column, height, stride, reach);
        }
    }
}

Canvas::Canvas(int width, int height)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

Area Canvas::Clip(Area area) const {
    return {std::max(area.left, 0), std::max(area.top, 0), std::min(area.right, width_),
            std::min(area.bottom, height_)};
}

Colour Canvas::Sample(float x, float y) const {
    x = std::clamp(x, 0.0f, Real(width_ - 1) - 0.001f);
    y = std::clamp(y, 0.0f, Real(height_ - 1) - 0.001f);
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    const float tx = x - Real(ix);
    const Colour above = Mix(At(ix, iy), At(ix + 1, iy), tx);
    const Colour below = Mix(At(ix, iy + 1), At(ix + 1, iy + 1), tx);
    return Mix(above, below, y - Real(iy));
}

void Canvas::Dab(Point centre, float rx, float ry, float angle, Tint tint, float feather) {
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const float reachX = std::hypot(rx * c, ry * s) + 1.0f;
    const float reachY = std::hypot(rx * s, ry * c) + 1.0f;
    const Area area = Clip({sample::Whole(centre.x - reachX), sample::Whole(centre.y - reachY),
                            sample::Whole(centre.x + reachX) + 1, sample::Whole(centre.y + reachY) + 1});
    const float edge = std::min(rx, ry) / std::max(feather, 0.01f);
    for (int y = area.top; y < area.bottom; ++y) {
        const float dy = Real(y) - centre.y;
        for (int x = area.left; x < area.right; ++x) {
            const float dx = Real(x) - centre.x;
            const float ex = (dx * c + dy * s) / rx;
            const float ey = (dy * c - dx * s) / ry;
            const float d2 = ex * ex + ey * ey;
            if (d2 < 1.0f) {
                Blend(At(x, y), tint, std::min(1.0f, (1.0f - std::sqrt(d2)) * edge));
            }
        }
    }
}

void Canvas::Glow(Point centre, float radius, Colour light) {
    const Area area = Clip({sample::Whole(centre.x - radius), sample::Whole(centre.y - radius),
                            sample::Whole(centre.x + radius) + 1, sample::Whole(centre.y + radius) + 1});
    const float inverse = 1.0f / (radius * radius);
    for (int y = area.top; y < area.bottom; ++y) {
        const float dy = Real(y) - centre.y;
        for (int x = area.left; x < area.right; ++x) {
            const float dx = Real(x) - centre.x;
            const float d2 = (dx * dx + dy * dy) * inverse;
            if (d2 < 1.0f) {
                const float fall = 1.0f - d2;
                const float fall2 = fall * fall;
                At(x, y) = At(x, y) + light * (fall2 * fall2);
            }
        }
    }
}

void Canvas::Bokeh(Point centre, float radius, Colour light) {
    const Area area = Clip({sample::Whole(centre.x - radius), sample::Whole(centre.y - radius),
                            sample::Whole(centre.x + radius) + 1, sample::Whole(centre.y + radius) + 1});
    for (int y = area.top; y < area.bottom; ++y) {
        const float dy = Real(y) - centre.y;
        for (int x = area.left; x < area.right; ++x) {
            const float dx = Real(x) - centre.x;
            const float d = std::sqrt(dx * dx + dy * dy) / radius;
            if (d < 1.0f) {
                // The rim of such a disc is a little brighter than its middle.
                const float edge = std::min(1.0f, (1.0f - d) * radius * 0.5f);
                At(x, y) = At(x, y) + light * (edge * (0.88f + 0.22f * d * d * d * d));
            }
        }
    }
}

void Canvas::Stroke(const Path& line, float from, float to, Tint tint, float softness) {
    if (line.size() >= 2) {
        Fill(Ribbon(line, from, to), tint, softness);
    }
}

void Canvas::Blur(Area area, float radius) {
    area = Clip(area);
    if (area.Empty() || radius < 0.6f) {
        return;
    }
    // A wide blur is done on a reduced copy: what it would keep of the fine cells is nothing.
    const int factor = std::clamp(sample::Whole(radius / 2.5f), 1, 16);
    const int columns = (area.Width() + factor - 1) / factor;
    const int rows = (area.Height() + factor - 1) / factor;
    Canvas small(columns, rows);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) {
            Colour sum;
            float count = 0;
            for (int v = area.top + y * factor; v < std::min(area.top + (y + 1) * factor, area.bottom); ++v) {
                for (int u = area.left + x * factor; u < std::min(area.left + (x + 1) * factor, area.right);
                     ++u) {
                    sum = sum + At(u, v);
                    count += 1.0f;
                }
            }
            small.At(x, y) = sum * (1.0f / count);
        }
    }
    const int reach = std::max(1, sample::Whole(radius / Real(factor) * 0.75f + 0.5f));
    std::vector<Colour> line;
    auto mean = [&](int count, auto at) {
        line.resize(static_cast<std::size_t>(count));
        const float share = 1.0f / Real(2 * reach + 1);
        Colour sum;
        for (int i = -reach; i <= reach; ++i) {
            sum = sum + at(std::clamp(i, 0, count - 1));
        }
        for (int i = 0; i < count; ++i) {
            line[static_cast<std::size_t>(i)] = sum * share;
            sum = sum + at(std::min(i + reach + 1, count - 1)) + at(std::max(i - reach, 0)) * -1.0f;
        }
        for (int i = 0; i < count; ++i) {
            at(i) = line[static_cast<std::size_t>(i)];
        }
    };
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = 0; y < rows; ++y) {
            mean(columns, [&](int x) -> Colour& { return small.At(x, y); });
        }
        for (int x = 0; x < columns; ++x) {
            mean(rows, [&](int y) -> Colour& { return small.At(x, y); });
        }
    }
    const float inverse = 1.0f / Real(factor);
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            At(x, y) = factor == 1 ? small.At(x - area.left, y - area.top)
                                   : small.Sample((Real(x - area.left) + 0.5f) * inverse - 0.5f,
                                                  (Real(y - area.top) + 0.5f) * inverse - 0.5f);
        }
    }
}

}  // namespace sample
