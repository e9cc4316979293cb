// Where a reader of a format takes its bytes from: a file, or memory that stands for one. Not shared between
// threads.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

namespace kalmora {

class ByteSource {
public:
    virtual ~ByteSource() = default;
    // How many bytes from offset on were put into `into`; fewer than it holds at the end, 0 past it.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const = 0;
    virtual std::uint64_t Size() const = 0;
};

// The bytes are not copied and must outlive the source.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> into) const override {
        if (offset >= bytes_.size() || into.empty()) return 0;
        const std::size_t count = std::min(into.size(), bytes_.size() - static_cast<std::size_t>(offset));
        std::memcpy(into.data(), bytes_.data() + offset, count);
        return count;
    }
    std::uint64_t Size() const override { return bytes_.size(); }

private:
    std::span<const std::uint8_t> bytes_;
};

}  // namespace kalmora
