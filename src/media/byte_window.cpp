#include "media/byte_window.h"

namespace kalmora {

bool ByteWindow::Open(const std::string& path) {
    inMemory_ = false;
    size_.reset();
    seenEnd_ = expectedEnd_ = 0;
    headLength_ = farLength_ = 0;
    const auto length = file_.OpenAndRead(path, head_);
    if (!length) return false;
    headLength_ = *length;
    seenEnd_ = headLength_;
    if (headLength_ > 0 && headLength_ < kHead) size_ = headLength_;
    return true;
}

std::uint64_t ByteWindow::Size() {
    if (inMemory_) return memory_.size();
    if (!size_) size_ = file_.IsOpen() ? file_.Size() : 0;
    return *size_;
}

FileTime ByteWindow::Written() const {
    const auto status = file_.Status();
    return status ? status->written : FileTime{};
}

std::span<const std::uint8_t> ByteWindow::AtFar(std::uint64_t offset, std::size_t length) {
    if (length > kStretch || (size_ && offset > *size_)) return {};
    if (inMemory_)
        return Has(offset, length) ? memory_.subspan(static_cast<std::size_t>(offset), length)
                                   : std::span<const std::uint8_t>{};
    if (!IsInFar(offset, length)) ReadFar(offset, length);
    if (!IsInFar(offset, length)) return {};
    return {far_.data() + (offset - farOffset_), length};
}

void ByteWindow::ReadFar(std::uint64_t offset, std::size_t length) {
    std::uint64_t begin = offset;
    std::size_t count = std::max(length, kHop);
    if (offset < expectedEnd_) {
        // From the end of the head on where that reaches far enough: what lies between is asked for next, and
        // so is what lies across that end.
        constexpr std::uint64_t kHeadEnd = kHead - 64;
        if (offset >= kHeadEnd && offset + length <= kHeadEnd + kStretch) begin = kHeadEnd;
        count = std::max<std::size_t>(
            offset - begin + length,
            static_cast<std::size_t>(std::min<std::uint64_t>(kStretch, expectedEnd_ - begin)));
    }
    farOffset_ = begin;
    farLength_ = file_.ReadAt(begin, {far_.data(), count});
    seenEnd_ = std::max(seenEnd_, farOffset_ + farLength_);
}

std::span<const std::uint8_t> ByteWindow::Some(std::uint64_t offset, std::size_t length) {
    if (length == 0) return {};
    if (inMemory_) {
        if (offset >= memory_.size()) return {};
        return memory_.subspan(static_cast<std::size_t>(offset))
            .first(std::min(length, memory_.size() - offset));
    }
    if (offset < headLength_) return At(offset, std::min<std::size_t>(length, headLength_ - offset));
    if (AtFar(offset, 1).empty()) return {};
    return {far_.data() + (offset - farOffset_),
            std::min<std::size_t>(length, farOffset_ + farLength_ - offset)};
}

bool ByteWindow::Fill(std::uint64_t offset, std::span<std::uint8_t> into) {
    if (!Has(offset, into.size())) return false;
    if (inMemory_ || into.size() <= kHead) {
        const auto from = inMemory_ ? memory_.subspan(static_cast<std::size_t>(offset), into.size())
                                    : At(offset, into.size());
        if (from.size() != into.size()) return false;
        std::copy(from.begin(), from.end(), into.begin());
        return true;
    }
    return file_.ReadAt(offset, into) == into.size();
}

std::optional<std::string> ByteWindow::Copy(std::uint64_t offset, std::uint64_t length, std::uint64_t limit) {
    if (length > limit || !Has(offset, length)) return std::nullopt;
    std::string copy(static_cast<std::size_t>(length), '\0');
    if (!Fill(offset, {reinterpret_cast<std::uint8_t*>(copy.data()), copy.size()})) return std::nullopt;
    return copy;
}

}  // namespace kalmora
