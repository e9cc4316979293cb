// PngTextFile: the text chunks of a PNG, where such a file keeps its comment, its date and its estimations.
// Source of the chunk layout and of tEXt: ISO/IEC 15948.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "media/byte_window.h"
#include "rewrite/safe_rewrite.h"

namespace kalmora {

// The keywords that the program uses. "Software" is only looked for: it says that another tool made the
// file.
inline constexpr std::string_view kPngComment = "Comment";
inline constexpr std::string_view kPngCreationTime = "Creation Time";
inline constexpr std::string_view kPngProperty = "Property";
inline constexpr std::string_view kPngSoftware = "Software";

// A file with more is not read and not written.
inline constexpr int kMostPngChunks = 100'000;
inline constexpr std::uint64_t kMostPngTextBytes = 16u << 20;

inline constexpr std::uint64_t kPngChecksumLength = 4;  // behind each chunk

// True for the data of a text chunk that can be built again from its keyword and its text: it has a zero
// byte, behind a keyword that is not cut.
bool IsWholePngText(std::string_view data);

// Lives for one operation. One thread.
class PngTextFile {
public:
    static constexpr std::size_t kLongestKeyword = 80;  // bytes; a longer keyword is cut there

    // Reads the text chunks in front of the picture's data. True when the signature is right and every chunk
    // up to there is whole; a file that ends between two chunks counts as whole. The checksums are not looked
    // at. False also for a file with more than 100,000 chunks or 16 MB of texts. A later chunk of the same
    // keyword takes the place of the earlier one. A chunk that is no whole text (IsWholePngText) counts as a
    // keyword that is cut, or that has an empty text, unless there is a whole one.
    bool Parse(const std::string& path);
    bool Parse(ByteWindow& file);

    // The bytes stored under the keyword; null when there are none and for an empty keyword. Belongs to this
    // object.
    const std::string* GetText(std::string_view keyword) const;

    // Replaces or adds the text of a keyword in memory; nothing for an empty keyword. What follows a
    // zero byte is left out, and so is what makes a keyword longer than 79 bytes.
    void SetText(std::string_view keyword, std::string_view text);

    // Writes the texts into the file, by SafeRewrite: all of them where the first text chunk
    // was, in the order of their keywords, or else in front of the picture's data. From the first other
    // chunk behind a text on everything is left as it is, texts too: such an old text stays beside the
    // new one (meant, and held by PngRewrite.TextBehindAnotherChunkStays). A chunk that is no whole text is
    // never built again: it stays byte for byte behind the texts. Unsupported for a file that has neither a
    // text nor a picture, or that ends without its last chunk.
    RewriteResult Rewrite() const;
    // The change that Rewrite would make, for SafeRewriteAll.
    RewriteResult PlanRewrite(FileChange& change) const;
    RewriteResult PlanRewrite(ByteWindow& file, FileChange& change) const;

    const std::string& Path() const { return path_; }
    const std::map<std::string, std::string, std::less<>>& Texts() const { return texts_; }

private:
    void Take(std::string_view data);  // of a text chunk

    std::string path_;
    std::map<std::string, std::string, std::less<>> texts_;  // keyword to text, in byte order of the keyword
    std::set<std::string, std::less<>> notWritten_;  // those of them that only a chunk that is no text has
};

// A comment as bytes of a chunk: code page 932 where the text fits, otherwise UTF-8, with a byte-order mark
// where without one it would be read as code page 932. Reading takes all three.
std::string PngCommentBytes(std::string_view utf8);
std::string PngCommentText(std::string_view bytes);

}  // namespace kalmora
