#include "png_writer.h"

#include <zlib.h>

#include "bytes.h"

namespace sample {

namespace {

void AddChunk(ByteWriter& file, const char* type, const std::vector<std::uint8_t>& content) {
    ByteWriter body(ByteOrder::Big);
    body.Text(type);
    body.Append(content);
    file.U32(static_cast<std::uint32_t>(content.size()));
    file.Append(body.Bytes());
    file.U32(static_cast<std::uint32_t>(crc32(0, body.Bytes().data(), static_cast<uInt>(body.Size()))));
}

// Each row as the difference from the one above (filter 2), which suits flat drawings.
std::vector<std::uint8_t> FilteredRows(const Image& image) {
    const std::size_t stride = static_cast<std::size_t>(image.width) * 3;
    std::vector<std::uint8_t> rows;
    rows.reserve((stride + 1) * static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        const std::size_t at = static_cast<std::size_t>(y) * stride;
        rows.push_back(2);
        for (std::size_t i = 0; i < stride; ++i) {
            const int above = y > 0 ? image.rgb[at - stride + i] : 0;
            rows.push_back(static_cast<std::uint8_t>(image.rgb[at + i] - above));
        }
    }
    return rows;
}

}  // namespace

std::vector<std::uint8_t> PngBytes(const Image& image,
                                   const std::vector<std::pair<std::string, std::string>>& texts) {
    ByteWriter file(ByteOrder::Big);
    file.Text("\x89PNG\r\n\x1A\n");
    ByteWriter head(ByteOrder::Big);
    head.U32(static_cast<std::uint32_t>(image.width));
    head.U32(static_cast<std::uint32_t>(image.height));
    head.U8(8);  // bits a channel
    head.U8(2);  // RGB
    head.Zeros(3);
    AddChunk(file, "IHDR", head.Bytes());
    for (const auto& [keyword, text] : texts) {
        ByteWriter chunk(ByteOrder::Big);
        chunk.Text(keyword);
        chunk.U8(0);
        chunk.Text(text);
        AddChunk(file, "tEXt", chunk.Bytes());
    }
    const std::vector<std::uint8_t> rows = FilteredRows(image);
    uLongf size = compressBound(static_cast<uLong>(rows.size()));
    std::vector<std::uint8_t> packed(size);
    compress2(packed.data(), &size, rows.data(), static_cast<uLong>(rows.size()), 6);
    packed.resize(size);
    AddChunk(file, "IDAT", packed);
    AddChunk(file, "IEND", {});
    return file.Bytes();
}

}  // namespace sample
