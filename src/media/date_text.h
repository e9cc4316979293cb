// Dates written as text in photos and notes. They come from many writers, so they are read as leniently as a
// scan by a format does it: blanks before a number and a sign are allowed, what follows the date is ignored.
#pragma once

#include <string>
#include <string_view>

#include "base/system_time.h"

namespace kalmora {

// "2008:05:06 07:08:09" or the same with slashes in the date. True when year, month or day is not zero; a
// text that ends early gives the fields that it has, the others stay zero. The value is not checked
// otherwise.
bool ParseExifDate(std::string_view text, SystemTime& date);

// "2008:05:06 07:08:09", all six fields; the date is untouched when it is anything else.
bool ParseStampDate(std::string_view text, SystemTime& date);

// The head of a note: "[2008/11/13 10:15" or "[2008/11/13 10", followed by anything. The date is untouched
// when the line does not begin so. Seconds are 0, and so are minutes in the second form.
bool ParseNoteDate(std::string_view line, SystemTime& date);

// "2008:05:06 07:08:09", as it is written into photos.
std::string StampText(const SystemTime& date);

}  // namespace kalmora
