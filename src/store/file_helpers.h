// Small questions about one file: its name, its size, its dates. Any thread; failure is a value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/system_time.h"

namespace kalmora {

inline constexpr std::size_t kLongestExtension = 7;  // bytes, counted in code page 932

// The extension in lower case (A to Z only), without its dot; empty when there is none. It is at most
// `longest` bytes long, counted in code page 932, and has none of / blank : \ , ( ) ~ = ? # ! " ' $ % & in
// it, so that "a.b c" has no extension.
std::string GetExtension(std::string_view path, std::size_t longest = kLongestExtension);

// What stands behind the last separator. Empty when the path has no separator or ends with one.
std::string GetFileName(std::string_view path);

// The size as import compares it: the low 32 bits less the high 32 bits, in 32-bit arithmetic, which is the
// plain size below 4 GB. 0 when the file is absent.
std::uint32_t GetFileSizeValue(const std::string& path);

// True when the file exists and may not be written; logs it then.
bool IsReadOnly(const std::string& path);

// The earlier of creation and last write, as local time. Empty when the file is absent.
std::optional<SystemTime> GetFileDate(const std::string& path);

// Gives the file a local time as last access and last write (and as creation where that can be set). False
// when the date is impossible or the file denies it.
bool SetFileDates(const std::string& path, const SystemTime& local);

// Turns each line feed, tab and carriage return into a blank, for texts that go on one line.
void BlankControls(std::string& text);

// The letters A to Z in lower case, every other byte as it is: names of cameras, which write IMG and img.
std::string LowerLetters(std::string_view letters);

}  // namespace kalmora
