// The program's own drawings: their names, and their pictures at the size wanted. Any thread.
#pragma once

#include <string>

#include "base/geometry.h"
#include "platform/image.h"

namespace kalmora {

std::string MonthPictureName(int month);  // "Res/Month/11.png"
std::string HourPictureName(int hour);    // "Res/Time/07.png"
// 0 Monday to 6 Sunday: "Res/Week/Monday.png". The plain drawing, one letter on a coloured strip, is for
// where the whole one is too small to be read.
enum class WeekdayDrawing { Whole, Plain };
std::string WeekdayPictureName(int column, WeekdayDrawing drawing);

// The size in logical pixels of a drawing at its natural scale, looked up once a run; empty when there is
// none.
Size MeasureResPicture(const std::string& name);
// The drawing for an area of `logical` pixels on a surface of that scale: the sharper variant (name@2x.png)
// where the plain one has too few pixels. Empty when there is none. Decoded once, then from the cache.
Image LoadResPicture(const std::string& name, Size logical, double scale);

}  // namespace kalmora
