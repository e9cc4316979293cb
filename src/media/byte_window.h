// A file seen through a small window: its first bytes stay, one further stretch is kept, the rest is never
// read.
//
// Metadata stand in the first few hundred bytes of nearly every photo, so one read serves most questions, and
// a far value costs one read more. No heap: a window lives on the stack of the one who asks. One thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/files.h"

namespace kalmora {

class ByteWindow {
public:
    static constexpr std::size_t kStretch = 4096;  // the longest that At can hand out, and the size of a read

    ByteWindow() {}  // the arrays are filled by reading, never cleared
    // Bytes that stand in memory already; they outlive the window.
    explicit ByteWindow(std::span<const std::uint8_t> memory) : memory_(memory), inMemory_(true) {}
    ByteWindow(const ByteWindow&) = delete;
    ByteWindow& operator=(const ByteWindow&) = delete;

    // Opens the file and reads its first stretch. False when it cannot be opened or is no regular file.
    bool Open(const std::string& path);

    // `length` bytes from `offset` on; empty when they do not all lie in the file, or for more than kStretch
    // of them. Good until the next call.
    std::span<const std::uint8_t> At(std::uint64_t offset, std::size_t length) {
        if (!inMemory_ && offset <= headLength_ && length <= headLength_ - offset)
            return {head_.data() + offset, length};
        return AtFar(offset, length);
    }
    // True when all those bytes lie in the file. Nothing is read.
    bool Has(std::uint64_t offset, std::uint64_t length);
    // A copy of a longer stretch. Empty optional when it does not all lie in the file or is past `limit`.
    std::optional<std::string> Copy(std::uint64_t offset, std::uint64_t length, std::uint64_t limit);
    std::uint64_t Size();

private:
    std::span<const std::uint8_t> AtFar(std::uint64_t offset, std::size_t length);

    files::InputFile file_;
    std::span<const std::uint8_t> memory_;
    bool inMemory_ = false;
    std::optional<std::uint64_t> size_;
    std::size_t headLength_ = 0;
    std::uint64_t farOffset_ = 0;
    std::size_t farLength_ = 0;
    std::array<std::uint8_t, kStretch> head_;
    std::array<std::uint8_t, kStretch> far_;
};

}  // namespace kalmora
