#include "media/png_text_file.h"

#include <algorithm>
#include <array>

#include "base/byte_reader.h"

namespace kalmora {

namespace {

constexpr std::array<std::uint8_t, 8> kSignature{137, 'P', 'N', 'G', 13, 10, 26, 10};

}  // namespace

bool IsWholePngText(std::string_view data) {
    const std::size_t end = data.find('\0');
    return end != std::string_view::npos && end <= PngTextFile::kLongestKeyword;
}

bool PngTextFile::Parse(const std::string& path) {
    path_ = path;
    ByteWindow file;
    if (file.Open(path)) return Parse(file);
    texts_.clear();
    notWritten_.clear();
    return false;
}

bool PngTextFile::Parse(ByteWindow& file) {
    texts_.clear();
    notWritten_.clear();
    const auto signature = file.At(0, kSignature.size());
    if (!std::equal(signature.begin(), signature.end(), kSignature.begin(), kSignature.end())) return false;
    std::uint64_t position = kSignature.size(), textBytes = 0;
    for (int chunk = 0; chunk < kMostPngChunks; ++chunk) {
        if (position == file.Size()) return true;
        const ByteReader head(file.At(position, 8), ByteOrder::Big);
        const auto length = head.U32(0);
        if (!length) return false;
        // A text behind the picture's data is not seen.
        if (head.StartsWith(4, "IDAT") || head.StartsWith(4, "IEND")) return true;
        position += 8;
        if (!file.Has(position, *length + kPngChecksumLength)) return false;
        if (head.StartsWith(4, "tEXt")) {
            textBytes += *length;
            const auto data = file.Copy(position, *length, kMostPngTextBytes);
            if (!data || textBytes > kMostPngTextBytes) return false;
            Take(*data);
        }
        position += *length + kPngChecksumLength;
    }
    return false;
}

void PngTextFile::Take(std::string_view data) {
    const std::size_t end = std::min(data.find('\0'), data.size());
    std::string keyword(data.substr(0, std::min(end, kLongestKeyword)));
    std::string text(data.substr(std::min(end + 1, data.size())));
    if (IsWholePngText(data)) {
        notWritten_.erase(keyword);
        texts_.insert_or_assign(std::move(keyword), std::move(text));
    } else if (texts_.try_emplace(keyword, std::move(text)).second) {
        notWritten_.insert(std::move(keyword));
    }
}

const std::string* PngTextFile::GetText(std::string_view keyword) const {
    if (keyword.empty()) return nullptr;
    const auto found = texts_.find(keyword);
    return found == texts_.end() ? nullptr : &found->second;
}

}  // namespace kalmora
