// The only way to a byte that came from a file: every access is bounded, none can fail otherwise than by
// value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace kalmora {

enum class ByteOrder { Little, Big };

// A view of bytes with an order. Does not own them; copies are cheap. Any thread.
class ByteReader {
public:
    ByteReader() = default;
    ByteReader(std::span<const std::uint8_t> bytes, ByteOrder order) : bytes_(bytes), order_(order) {}

    std::size_t Length() const { return bytes_.size(); }
    ByteOrder Order() const { return order_; }
    bool Has(std::size_t offset, std::size_t length) const {
        return offset <= bytes_.size() && length <= bytes_.size() - offset;
    }
    std::optional<std::uint8_t> U8(std::size_t offset) const {
        if (!Has(offset, 1)) return std::nullopt;
        return bytes_[offset];
    }
    std::optional<std::uint16_t> U16(std::size_t offset) const {
        if (!Has(offset, 2)) return std::nullopt;
        const unsigned first = bytes_[offset], second = bytes_[offset + 1];
        return static_cast<std::uint16_t>(order_ == ByteOrder::Big ? first << 8 | second
                                                                   : second << 8 | first);
    }
    std::optional<std::uint32_t> U32(std::size_t offset) const {
        if (!Has(offset, 4)) return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | bytes_[offset + (order_ == ByteOrder::Big ? i : 3 - i)];
        return value;
    }
    // The bytes from offset, length of them; empty when they do not all lie inside.
    std::span<const std::uint8_t> Bytes(std::size_t offset, std::size_t length) const {
        return Has(offset, length) ? bytes_.subspan(offset, length) : std::span<const std::uint8_t>{};
    }
    // A reader of a part, cut at the end of this one.
    ByteReader Sub(std::size_t offset, std::size_t length = static_cast<std::size_t>(-1)) const {
        if (offset >= bytes_.size()) return ByteReader({}, order_);
        const std::size_t rest = bytes_.size() - offset;
        return ByteReader(bytes_.subspan(offset, length < rest ? length : rest), order_);
    }
    bool StartsWith(std::size_t offset, std::string_view text) const {
        if (!Has(offset, text.size())) return false;
        for (std::size_t i = 0; i < text.size(); ++i)
            if (bytes_[offset + i] != static_cast<std::uint8_t>(text[i])) return false;
        return true;
    }

private:
    std::span<const std::uint8_t> bytes_;
    ByteOrder order_ = ByteOrder::Little;
};

}  // namespace kalmora
