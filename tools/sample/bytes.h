#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sample {

enum class ByteOrder { Little, Big };

// Numbers and texts appended in one byte order.
class ByteWriter {
public:
    explicit ByteWriter(ByteOrder order = ByteOrder::Little) : order_(order) {}

    void U8(std::uint32_t value) { bytes_.push_back(static_cast<std::uint8_t>(value)); }
    void U16(std::uint32_t value);
    void U32(std::uint32_t value);
    void Text(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
    void Append(const std::vector<std::uint8_t>& more) {
        bytes_.insert(bytes_.end(), more.begin(), more.end());
    }
    void Zeros(std::size_t count) { bytes_.resize(bytes_.size() + count, 0); }
    // Overwrites four bytes written before.
    void PatchU32(std::size_t at, std::uint32_t value);

    std::size_t Size() const { return bytes_.size(); }
    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

private:
    ByteOrder order_;
    std::vector<std::uint8_t> bytes_;
};

std::u16string Utf16(std::string_view utf8);
// The text in code page 932, or, where it has a character that the page lacks, as UTF-8 with a byte-order
// mark.
std::vector<std::uint8_t> TextFileBytes(std::string_view utf8);

}  // namespace sample
