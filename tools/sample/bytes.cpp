#include "bytes.h"

#include <iconv.h>

namespace sample {

void ByteWriter::U16(std::uint32_t value) {
    const bool big = order_ == ByteOrder::Big;
    U8((big ? value >> 8 : value) & 0xFF);
    U8((big ? value : value >> 8) & 0xFF);
}

void ByteWriter::U32(std::uint32_t value) {
    const bool big = order_ == ByteOrder::Big;
    U16((big ? value >> 16 : value) & 0xFFFF);
    U16((big ? value : value >> 16) & 0xFFFF);
}

void ByteWriter::PatchU32(std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t shift = order_ == ByteOrder::Big ? 24 - 8 * i : 8 * i;
        bytes_[at + i] = static_cast<std::uint8_t>(value >> shift);
    }
}

namespace {

// Empty when a character has no place in the target.
std::string Convert(std::string_view text, const char* to) {
    const iconv_t converter = iconv_open(to, "UTF-8");
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return {};
    }
    std::string input(text);
    std::string output(text.size() * 4 + 4, '\0');
    char* in = input.data();
    char* out = output.data();
    std::size_t inLeft = input.size();
    std::size_t outLeft = output.size();
    const std::size_t lost = iconv(converter, &in, &inLeft, &out, &outLeft);
    iconv_close(converter);
    if (lost != 0) {
        return {};
    }
    output.resize(output.size() - outLeft);
    return output;
}

}  // namespace

std::u16string Utf16(std::string_view utf8) {
    const std::string bytes = Convert(utf8, "UTF-16LE");
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    }
    return text;
}

std::vector<std::uint8_t> TextFileBytes(std::string_view utf8) {
    ByteWriter file;
    const std::string local = Convert(utf8, "CP932");
    if (local.empty() && !utf8.empty()) {
        file.Text("\xEF\xBB\xBF");
        file.Text(utf8);
    } else {
        file.Text(local);
    }
    return file.Bytes();
}

}  // namespace sample
