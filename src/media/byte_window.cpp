#include "media/byte_window.h"

#include <algorithm>

namespace kalmora {

bool ByteWindow::Open(const std::string& path) {
    inMemory_ = false;
    size_.reset();
    headLength_ = farLength_ = 0;
    if (!file_.Open(path)) return false;
    headLength_ = file_.ReadAt(0, head_);
    if (headLength_ > 0 && headLength_ < kStretch) size_ = headLength_;
    return true;
}

std::uint64_t ByteWindow::Size() {
    if (inMemory_) return memory_.size();
    if (!size_) size_ = file_.IsOpen() ? file_.Size() : 0;
    return *size_;
}

bool ByteWindow::Has(std::uint64_t offset, std::uint64_t length) {
    if (!inMemory_ && offset <= headLength_ && length <= headLength_ - offset) return true;
    const std::uint64_t size = Size();
    return offset <= size && length <= size - offset;
}

std::span<const std::uint8_t> ByteWindow::AtFar(std::uint64_t offset, std::size_t length) {
    if (length > kStretch || !Has(offset, length)) return {};
    if (inMemory_) return memory_.subspan(static_cast<std::size_t>(offset), length);
    if (farLength_ == 0 || offset < farOffset_ || offset - farOffset_ > farLength_ ||
        length > farLength_ - (offset - farOffset_)) {
        farOffset_ = offset;
        farLength_ = file_.ReadAt(offset, far_);
    }
    // The file may have been cut since its size was asked for.
    const std::size_t skip = static_cast<std::size_t>(offset - farOffset_);
    if (skip > farLength_ || length > farLength_ - skip) return {};
    return {far_.data() + skip, length};
}

std::optional<std::string> ByteWindow::Copy(std::uint64_t offset, std::uint64_t length, std::uint64_t limit) {
    if (length > limit || !Has(offset, length)) return std::nullopt;
    if (length <= kStretch) {
        const auto bytes = At(offset, static_cast<std::size_t>(length));
        if (bytes.size() != length) return std::nullopt;
        return std::string(bytes.begin(), bytes.end());
    }
    std::string copy(static_cast<std::size_t>(length), '\0');
    const std::span<std::uint8_t> into(reinterpret_cast<std::uint8_t*>(copy.data()), copy.size());
    if (inMemory_) {
        const auto from = memory_.subspan(static_cast<std::size_t>(offset), copy.size());
        std::copy(from.begin(), from.end(), into.begin());
    } else if (file_.ReadAt(offset, into) != copy.size()) {
        return std::nullopt;
    }
    return copy;
}

}  // namespace kalmora
