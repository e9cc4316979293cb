// What is known of a file before it comes in: its date, and what an old phone left to its file name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/system_time.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

// The date of an image or a text as its object gives it, of anything else that of its file: the earlier of
// creation and last write. A date that no calendar has counts as none, and the file's own is taken. Empty
// when there is none, as for a file that has gone. Any thread.
std::optional<SystemTime> DateOfSource(const std::string& path);

// The date in a name that begins like "081113-101530": year, month, day, hour, minute and second, two digits
// each, in the years from 2000 on. One phone with a camera that writes no Exif called its pictures so. Empty
// for any other name and for a date that no calendar has.
std::optional<SystemTime> PhoneNameDate(std::string_view fileName);

// Writes the date into such a picture, and the phone as its maker and model. Any image is taken to be one,
// also when another camera has signed it: meant, and held by ImportPhoneTest.SignedPictureIsSignedAnew.
RewriteResult WritePhoneDate(const std::string& path, const SystemTime& date);

}  // namespace kalmora
