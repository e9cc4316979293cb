// Any bytes as a PNG that gets a text: what comes out is a PNG with that text, and what was in front of the
// texts and behind them is still there.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/byte_window.h"
#include "media/png_text_file.h"

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kalmora;
    if (size < 1) return 0;
    const std::string_view photo(reinterpret_cast<const char*>(data + 1), size - 1);
    ByteWindow file({data + 1, size - 1});
    PngTextFile png;
    if (!png.Parse(file)) return 0;
    const std::string words(data[0], 'w');
    png.SetText(kPngComment, words);
    FileChange change;
    if (png.PlanRewrite(file, change) != RewriteResult::Written) return 0;
    Require(change.offset <= photo.size() && change.oldLength <= photo.size() - change.offset);
    std::string written(photo);
    written.replace(change.offset, change.oldLength, change.content);
    ByteWindow after({reinterpret_cast<const std::uint8_t*>(written.data()), written.size()});
    PngTextFile again;
    Require(again.Parse(after));
    const std::string* found = again.GetText(kPngComment);
    Require(found != nullptr);
    // An old text behind another chunk stays and is read in its place.
    Require(*found == words ||
            written.find("tEXtComment", change.offset + change.content.size()) != std::string::npos);
    for (const auto& [keyword, text] : png.Texts())
        Require(keyword.empty() || again.GetText(keyword) != nullptr);
    return 0;
}
