// Code pages at the edge of the program. Inside, every text is UTF-8.
//
// Code page 932 is the Windows table (NEC row 13, IBM extensions, wave dash as U+FF5E). All functions may be
// called from any thread and never fail: what cannot be converted is replaced or escaped as each function
// says.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kalmora::text {

// A text of a fixed field ends at its first zero byte.
inline std::string_view UpToZero(std::string_view bytes) { return bytes.substr(0, bytes.find('\0')); }

// ---- UTF-8
inline constexpr char32_t kReplacement = 0xFFFD;  // shown for what is ill-formed

bool IsValidUtf8(std::string_view bytes);
// The code point at `offset` and its length in bytes; an ill-formed byte gives 0xDC00 + byte and length 1.
struct CodePoint {
    char32_t value = 0;
    int length = 0;
};
CodePoint DecodeUtf8(std::string_view text, std::size_t offset);
// Appends a code point; 0xDC80 to 0xDCFF append the raw byte that they mean.
void AppendUtf8(std::string& out, char32_t value);
// Ill-formed bytes become U+FFFD: for what is shown on the screen.
std::string ToDisplay(std::string_view text);
// At most maxBytes of the text, cut before the character that would pass the limit.
std::string CutAtCharacter(std::string_view text, std::size_t maxBytes);

// ---- code page 932
// Bytes to UTF-8. A byte that is no character gives 0xDC00 + byte as its raw byte, so that nothing is lost.
// With `escapes`, "&#xHEX;" gives the character it names (and "&#x26;#x" gives "&#x").
enum class Escapes { Keep, Resolve };
std::string FromCp932(std::string_view bytes, Escapes escapes = Escapes::Keep);
// UTF-8 to bytes. A character without a code is written as "&#xHEX;" with Escapes::Resolve (and a literal
// "&#x" as "&#x26;#x"), as "?" with Escapes::Keep. FromCp932 with Resolve is its exact inverse. A raw byte
// stays that byte with Keep. U+301C, U+2212 and U+2016 take the codes of their Windows twins with Keep (and
// fit); with Resolve they are escaped, since a file name has to come back as it was.
std::string ToCp932(std::string_view utf8, Escapes escapes = Escapes::Keep);
bool FitsCp932(std::string_view utf8);
// How many bytes the text takes in code page 932 (a character without a code counts two).
std::size_t Cp932Length(std::string_view utf8);

// ---- UTF-16 and the other encodings of old Japanese text files
std::string FromUtf16(std::span<const std::uint8_t> bytes, bool bigEndian);  // lone surrogates become U+FFFD
std::string ToUtf16(std::string_view utf8, bool bigEndian);
std::string FromEucJp(std::string_view bytes);
std::string FromIso2022Jp(std::string_view bytes);

// ---- search
// Lower case, half width, katakana: the one form in which texts are compared, character by character after
// the table of code page 932; characters outside that table are only turned to lower case where they have
// one.
std::string Fold(std::string_view utf8);
// The first place of word in text, ASCII case ignored; npos when nowhere.
std::size_t FindNoCase(std::string_view text, std::string_view word);
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view head);

}  // namespace kalmora::text
