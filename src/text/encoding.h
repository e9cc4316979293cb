// Text files of unknown encoding: which one it is, and the text in UTF-8. Any thread; never fails.
#pragma once

#include <string>
#include <string_view>

namespace kalmora {

// What DetectEncoding answers. The numbers are the ones that the rest of the program and its logs use.
enum TextEncoding : int {
    kEncodingShiftJis = 0,  // code page 932, or undecided
    kEncodingIso2022Jp = 2,
    kEncodingEucJp = 3,
    kEncodingUtf16Le = 4,  // by its byte-order mark
    kEncodingUtf8 = 5,     // by its mark, or by what IsUtf8Text says, or by score
    kEncodingUtf16Be = 7,  // by its mark
};

// True for a text that is UTF-8 from its first byte to its last and has at least one character beyond ASCII.
// A long text (4 KB) may be cut in the middle of a character.
bool IsUtf8Text(std::string_view bytes);

// A byte-order mark decides, then IsUtf8Text. Otherwise each decoder scores what it can read of the bytes
// that are not plain ASCII text; the highest score above 0 wins, ties go to EUC-JP, then UTF-8, then
// ISO-2022-JP, then code page 932. Half-width katakana are code page 932, although EUC-JP reads them as
// kanji. A long text (4 KB) may be cut in the middle of a character.
int DetectEncoding(std::string_view bytes);

// The bytes as UTF-8, read in the encoding that DetectEncoding finds, without a byte-order mark. Bytes that
// are no character of the encoding stay recognisable as such (see platform/text.h).
std::string DecodeText(std::string_view bytes);
std::string DecodeText(std::string_view bytes, int encoding);

// The other way, for text files that the program makes: code page 932, or UTF-8 with a byte-order mark when
// the text does not fit or would not be read back as it is. DecodeText(EncodeText(t)) is t for valid UTF-8.
std::string EncodeText(std::string_view utf8);

}  // namespace kalmora
