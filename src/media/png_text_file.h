// PngTextFile: the text chunks of a PNG, where such a file keeps its comment, its date and its estimations.
// Source of the chunk layout and of tEXt: ISO/IEC 15948.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "media/byte_window.h"

namespace kalmora {

// The keywords that the program uses. "Software" is only looked for: it tells that another tool made the
// file.
inline constexpr std::string_view kPngComment = "Comment";
inline constexpr std::string_view kPngCreationTime = "Creation Time";
inline constexpr std::string_view kPngProperty = "Property";
inline constexpr std::string_view kPngSoftware = "Software";

// Lives for one operation. One thread.
class PngTextFile {
public:
    static constexpr std::size_t kLongestKeyword = 80;  // bytes; a longer keyword is cut there

    // Reads the text chunks in front of the picture's data. True when the signature is right and every chunk
    // up to there is whole; a file that ends between two chunks counts as whole. The checksums are not looked
    // at. False also for a file with more than 100,000 chunks or 16 MB of texts. A later chunk of the same
    // keyword takes the place of the earlier one.
    bool Parse(const std::string& path);
    bool Parse(ByteWindow& file);

    // The bytes stored under the keyword; null when there are none and for an empty keyword. Belongs to this
    // object.
    const std::string* GetText(std::string_view keyword) const;

    const std::string& Path() const { return path_; }
    const std::map<std::string, std::string, std::less<>>& Texts() const { return texts_; }

private:
    std::string path_;
    std::map<std::string, std::string, std::less<>> texts_;  // keyword to text, in byte order of the keyword
};

}  // namespace kalmora
