// The writing half of PngTextFile.
#include <algorithm>
#include <cstdio>
#include <optional>

#include "base/byte_reader.h"
#include "base/crc32.h"
#include "media/png_text_file.h"
#include "platform/clock.h"
#include "text/encoding.h"
#include "text/text.h"

namespace kalmora {

namespace {

constexpr std::uint64_t kSignatureLength = 8, kHeadLength = 8;
constexpr std::uint64_t kMostChunk = kMostPngTextBytes + kHeadLength + kPngChecksumLength;
constexpr std::uint64_t kMostPalette = 1024;  // a palette has 768 bytes
constexpr std::size_t kLongestWrittenKeyword = 79;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string BigEndian32(std::uint64_t value) {
    return {static_cast<char>(value >> 24 & 0xFF), static_cast<char>(value >> 16 & 0xFF),
            static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
}

std::string TextChunk(std::string_view keyword, std::string_view text) {
    std::string body = "tEXt";
    body += keyword;
    body += '\0';
    body += text;
    return BigEndian32(body.size() - 4) + body + BigEndian32(Crc32(body));
}

std::string CopyName() {
    const SystemTime now = LocalTime();
    char name[80];
    std::snprintf(name, sizeof name, "$%04d%02d%02d%02d%02d%02d%d.png", now.year, now.month, now.day,
                  now.hour, now.minute, now.second, now.milliseconds);
    return name;
}

// The stretch of the file that the texts and what lies between them take.
class RewriteWalk {
public:
    RewriteWalk(ByteWindow& file, std::string texts) : file_(file), texts_(std::move(texts)) {}

    // False when the file cannot be walked to its picture, or there is no place for texts.
    bool Run() {
        for (int chunk = 0; chunk < kMostPngChunks; ++chunk) {
            const ByteReader head(file_.At(position_, kHeadLength), ByteOrder::Big);
            const auto length = head.U32(0);
            if (!length) return false;
            if (head.StartsWith(4, "IDAT")) {
                if (!begin_) Begin();
                return true;
            }
            if (head.StartsWith(4, "IEND")) return begin_.has_value();
            const std::uint64_t whole = kHeadLength + *length + kPngChecksumLength;
            if (!file_.Has(position_, whole)) return false;
            if (head.StartsWith(4, "tEXt")) {
                if (!begin_) Begin();
                if (!KeepIfNoText(*length)) return false;
            } else if (head.StartsWith(4, "IHDR") || head.StartsWith(4, "PLTE")) {
                if (begin_ && !Keep(whole, kMostPalette)) return false;
            } else if (begin_) {
                return true;
            }
            position_ += whole;
        }
        return false;
    }

    void Fill(FileChange& change) {
        change.offset = *begin_;
        change.oldLength = position_ - *begin_;
        change.content = std::move(content_);
    }

private:
    void Begin() {
        begin_ = position_;
        content_ = std::move(texts_);
    }
    // What could not be built again stays. False when it cannot be read.
    bool KeepIfNoText(std::uint64_t length) {
        const auto data = file_.Copy(position_ + kHeadLength, length, kMostPngTextBytes);
        if (!data) return false;
        return IsWholePngText(*data) || Keep(kHeadLength + length + kPngChecksumLength, kMostChunk);
    }
    bool Keep(std::uint64_t length, std::uint64_t limit) {
        const auto chunk = file_.Copy(position_, length, limit);
        if (!chunk) return false;
        content_ += *chunk;
        return content_.size() <= 2 * kMostPngTextBytes;
    }

    ByteWindow& file_;
    std::string texts_;
    std::uint64_t position_ = kSignatureLength;
    std::optional<std::uint64_t> begin_;
    std::string content_;
};

}  // namespace

void PngTextFile::SetText(std::string_view keyword, std::string_view text) {
    keyword = keyword.substr(0, std::min(keyword.find('\0'), kLongestWrittenKeyword));
    if (keyword.empty()) return;
    if (const auto found = notWritten_.find(keyword); found != notWritten_.end()) notWritten_.erase(found);
    texts_.insert_or_assign(std::string(keyword), std::string(text.substr(0, text.find('\0'))));
}

RewriteResult PngTextFile::PlanRewrite(FileChange& change) const {
    ByteWindow file;
    return file.Open(path_) ? PlanRewrite(file, change) : RewriteResult::Unreadable;
}

RewriteResult PngTextFile::PlanRewrite(ByteWindow& file, FileChange& change) const {
    std::string texts;
    std::uint64_t length = 0;
    for (const auto& [keyword, text] : texts_) {
        if (notWritten_.contains(keyword)) continue;
        length += keyword.size() + 1 + text.size();
        if (length > kMostPngTextBytes) return RewriteResult::TooLarge;
        texts += TextChunk(keyword, text);
    }
    RewriteWalk walk(file, std::move(texts));
    if (!walk.Run()) return RewriteResult::Unsupported;
    walk.Fill(change);
    change.copyName = CopyName();
    change.stamp = Stamp::Now;
    return RewriteResult::Written;
}

RewriteResult PngTextFile::Rewrite() const {
    return SafeRewrite(path_, [this](FileChange& change) { return PlanRewrite(change); });
}

std::string PngCommentText(std::string_view bytes) {
    if (bytes.starts_with(kByteOrderMark)) return std::string(bytes.substr(kByteOrderMark.size()));
    if (text::IsValidUtf8(bytes) && DetectEncoding(bytes) == kEncodingUtf8) return std::string(bytes);
    return text::FromCp932(bytes);
}

std::string PngCommentBytes(std::string_view utf8) {
    if (text::FitsCp932(utf8)) {
        std::string bytes = text::ToCp932(utf8);
        if (PngCommentText(bytes) == utf8) return bytes;
    }
    if (!utf8.starts_with(kByteOrderMark) && PngCommentText(utf8) == utf8) return std::string(utf8);
    return std::string(kByteOrderMark) + std::string(utf8);
}

}  // namespace kalmora
