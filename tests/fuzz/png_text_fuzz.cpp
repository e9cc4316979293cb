// Any bytes as a PNG: its text chunks are read without a fault, and no text is longer than the file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "media/byte_window.h"
#include "media/date_text.h"
#include "media/estimation.h"
#include "media/png_text_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kalmora;
    ByteWindow file({data, size});
    PngTextFile png;
    png.Parse(file);
    for (const auto& [keyword, text] : png.Texts())
        if (keyword.size() > PngTextFile::kLongestKeyword || keyword.size() + text.size() > size)
            std::abort();
    if (const std::string* text = png.GetText(kPngProperty)) ParseEstimations(*text);
    SystemTime date;
    if (const std::string* text = png.GetText(kPngCreationTime)) ParseStampDate(*text, date);
    return 0;
}
