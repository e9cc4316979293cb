// A file seen through a small window: its first bytes stay, one further stretch is kept, the rest is never
// read.
//
// Metadata lie in the first few hundred bytes of nearly every photo, so one read serves most questions, and
// what lies further costs one read more. No heap: a window lives on the stack of its caller. One
// thread.
#pragma once

#include <algorithm>
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
    static constexpr std::size_t kHead = 4096;      // the first read
    static constexpr std::size_t kHop = 1024;       // one further on, of which nothing is known
    static constexpr std::size_t kStretch = 16384;  // the longest read, and the longest that At hands out

    ByteWindow() {}  // the arrays are filled by reading, never cleared
    // Bytes that are in memory already; they outlive the window.
    explicit ByteWindow(std::span<const std::uint8_t> memory) : memory_(memory), inMemory_(true) {}
    ByteWindow(const ByteWindow&) = delete;
    ByteWindow& operator=(const ByteWindow&) = delete;

    // Opens the file and reads its head. False when it cannot be opened or is no regular file.
    bool Open(const std::string& path);

    // Says that everything wanted soon lies before `end`: a read in front of it takes along what it can, one
    // behind it stays short. Only a matter of speed.
    void Expect(std::uint64_t end) { expectedEnd_ = end; }

    // `length` bytes from `offset` on; empty when they do not all lie in the file, or for more than kStretch
    // of them. Good until the next call.
    std::span<const std::uint8_t> At(std::uint64_t offset, std::size_t length) {
        if (!inMemory_ && offset <= headLength_ && length <= headLength_ - offset)
            return {head_.data() + offset, length};
        return AtFar(offset, length);
    }
    // The bytes in memory from `offset` on, after at most one read: at least one byte and at most `length`;
    // empty past the end of the file. For walks that need no fixed length. Good until the next call.
    std::span<const std::uint8_t> Some(std::uint64_t offset, std::size_t length);
    // True when all those bytes lie in the file. Nothing is read.
    bool Has(std::uint64_t offset, std::uint64_t length) {
        if (offset <= seenEnd_ && length <= seenEnd_ - offset) return true;
        const std::uint64_t size = Size();
        return offset <= size && length <= size - offset;
    }
    // Fills `into` with the bytes from `offset` on. False when they do not all lie in the file.
    bool Fill(std::uint64_t offset, std::span<std::uint8_t> into);
    // A copy of `length` bytes. Empty optional when they do not all lie in the file or are more than `limit`.
    std::optional<std::string> Copy(std::uint64_t offset, std::uint64_t length, std::uint64_t limit);
    std::uint64_t Size();
    // The file's last-write time as it is at this moment; zero for bytes in memory.
    FileTime Written() const;

private:
    std::span<const std::uint8_t> AtFar(std::uint64_t offset, std::size_t length);
    void ReadFar(std::uint64_t offset, std::size_t length);
    bool IsInFar(std::uint64_t offset, std::size_t length) const {
        return offset >= farOffset_ && offset - farOffset_ <= farLength_ &&
               length <= farLength_ - (offset - farOffset_);
    }

    files::InputFile file_;
    std::span<const std::uint8_t> memory_;
    bool inMemory_ = false;
    std::optional<std::uint64_t> size_;
    std::uint64_t seenEnd_ = 0;      // so many bytes the file has at least
    std::uint64_t expectedEnd_ = 0;  // 0: nothing is expected
    std::size_t headLength_ = 0;
    std::uint64_t farOffset_ = 0;
    std::size_t farLength_ = 0;
    std::array<std::uint8_t, kHead> head_;
    std::array<std::uint8_t, kStretch> far_;
};

}  // namespace kalmora
