#include "platform/qt/jpeg_decoder.h"

// The library's header wants the C library's before it.
#include <csetjmp>
#include <cstdio>
// clang-format off
#include <jpeglib.h>
#include <jerror.h>
// clang-format on
#include <algorithm>
#include <array>
#include <memory>

#include "platform/qt/decode_limits.h"
#include "platform/qt/decoding_gate.h"

namespace kalmora::qt {

namespace {

constexpr std::size_t kReadSize = 64 * 1024;
// The scales that are decoded to, in eighths. Seven is left out: the codec takes longer for it than for the
// whole.
constexpr unsigned kScales[] = {1, 2, 3, 4, 5, 6, 8};
constexpr unsigned kWholeScale = 8;
constexpr std::int64_t kAlwaysPlausiblePixels = std::int64_t{16} << 20;
constexpr std::int64_t kMostPixelsOfAByte = 1024;
constexpr int kTopPart = 32;  // of DecodeJpegTop: as little as shows what an edge looks like
constexpr QRgb kMissing = 0xFF808080;

// One decode. The library reports an error by a jump out of its call, so every member function that calls it
// sets the jump's target, keeps no object with a destructor, and returns the outcome.
class JpegReader {
public:
    explicit JpegReader(const ByteSource& source) : bytes_(source) {}
    ~JpegReader() {
        if (isMade_) jpeg_destroy_decompress(&codec_);
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    bool ReadHeader();
    Size StoredSize() const {
        return Size{static_cast<int>(codec_.image_width), static_cast<int>(codec_.image_height)};
    }
    enum class Part { Whole, Top };
    QImage Decode(Size needed, Part part);

private:
    bool ChooseScale(Size needed);
    bool IsPlausible() const;
    bool Start();
    // Reads rows until the image is full or until nothing more comes. False when not one row came.
    bool ReadRows(QImage& image);
    void ConvertCmykRow(const std::uint8_t* from, std::uint8_t* to) const;

    static JpegReader& Of(j_common_ptr codec) { return *static_cast<JpegReader*>(codec->client_data); }
    static void Fail(j_common_ptr codec) { std::longjmp(Of(codec).jump_, 1); }
    static void Swallow(j_common_ptr) {}
    static void SwallowLevel(j_common_ptr, int) {}
    static void Progress(j_common_ptr codec);
    static boolean Fill(j_decompress_ptr codec);
    static void Skip(j_decompress_ptr codec, long count);
    static void Nothing(j_decompress_ptr) {}

    const ByteSource& bytes_;
    jpeg_decompress_struct codec_{};
    jpeg_error_mgr errors_{};
    jpeg_source_mgr input_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf jump_{};
    std::array<std::uint8_t, kReadSize> buffer_;
    std::array<std::uint8_t, 2> endMarker_ = {0xFF, JPEG_EOI};
    std::uint64_t nextOffset_ = 0;  // in the source, behind what the buffer holds
    bool isMade_ = false;
    bool hasEnded_ = false;  // the source had no more bytes when some were asked for
    int rowsRead_ = 0;
    int rowsAfterEnd_ = 0;
};

// Called at least once for each row of blocks of each scan.
void JpegReader::Progress(j_common_ptr codec) {
    const auto* reading = reinterpret_cast<const jpeg_decompress_struct*>(codec);
    if (reading->input_scan_number > kMostScans || DecodingGate::Instance().IsClosed()) Fail(codec);
}

boolean JpegReader::Fill(j_decompress_ptr codec) {
    JpegReader& reader = Of(reinterpret_cast<j_common_ptr>(codec));
    const std::size_t count = reader.bytes_.ReadAt(reader.nextOffset_, reader.buffer_);
    reader.nextOffset_ += count;
    if (count == 0) {
        // The end of the picture instead of an error: what came before is then still shown.
        reader.hasEnded_ = true;
        reader.input_.next_input_byte = reader.endMarker_.data();
        reader.input_.bytes_in_buffer = reader.endMarker_.size();
        return TRUE;
    }
    reader.input_.next_input_byte = reader.buffer_.data();
    reader.input_.bytes_in_buffer = count;
    return TRUE;
}

void JpegReader::Skip(j_decompress_ptr codec, long count) {
    if (count <= 0) return;
    JpegReader& reader = Of(reinterpret_cast<j_common_ptr>(codec));
    const auto wanted = static_cast<std::size_t>(count);
    if (wanted <= reader.input_.bytes_in_buffer) {
        reader.input_.next_input_byte += wanted;
        reader.input_.bytes_in_buffer -= wanted;
        return;
    }
    reader.nextOffset_ += wanted - reader.input_.bytes_in_buffer;
    reader.input_.bytes_in_buffer = 0;
}

bool JpegReader::ReadHeader() {
    codec_.err = jpeg_std_error(&errors_);
    errors_.error_exit = Fail;
    errors_.emit_message = SwallowLevel;
    errors_.output_message = Swallow;
    codec_.client_data = this;
    if (setjmp(jump_) != 0) return false;
    jpeg_create_decompress(&codec_);
    isMade_ = true;
    // The library clears the record when it makes it, but for the error table and this pointer.
    codec_.mem->max_memory_to_use = kMostCoefficientBytes;
    input_.init_source = Nothing;
    input_.fill_input_buffer = Fill;
    input_.skip_input_data = Skip;
    input_.resync_to_restart = jpeg_resync_to_restart;
    input_.term_source = Nothing;
    codec_.src = &input_;
    progress_.progress_monitor = Progress;
    codec_.progress = &progress_;
    if (jpeg_read_header(&codec_, TRUE) != JPEG_HEADER_OK) return false;
    return !StoredSize().IsEmpty();
}

bool JpegReader::ChooseScale(Size needed) {
    if (setjmp(jump_) != 0) return false;
    const Size stored = StoredSize();
    const Size wanted = needed.IsEmpty() ? stored : needed;
    codec_.scale_denom = kWholeScale;
    unsigned chosen = 0;
    for (const unsigned scale : kScales) {
        codec_.scale_num = scale;
        jpeg_calc_output_dimensions(&codec_);
        const Size size{static_cast<int>(codec_.output_width), static_cast<int>(codec_.output_height)};
        if (PixelCount(size) > kMostDecodedPixels) break;
        chosen = scale;
        if (Covers(size, wanted)) break;
    }
    if (chosen == 0) return false;
    codec_.scale_num = chosen;
    jpeg_calc_output_dimensions(&codec_);
    return true;
}

// A short file that claims a huge picture would take memory for nothing. Where a whole picture is of one
// colour a byte holds some three hundred pixels; files that were cut keep some room below that.
bool JpegReader::IsPlausible() const {
    const auto length = static_cast<std::int64_t>(std::min<std::uint64_t>(bytes_.Size(), 1u << 30));
    if (PixelCount(StoredSize()) > kAlwaysPlausiblePixels + length * kMostPixelsOfAByte) return false;
    if (!jpeg_has_multiple_scans(const_cast<j_decompress_ptr>(&codec_))) return true;
    // A picture in several scans is held whole, as coefficients, until the last one has been read.
    std::int64_t coefficientBytes = 0;
    for (int i = 0; i < codec_.num_components; ++i) {
        const jpeg_component_info& component = codec_.comp_info[i];
        coefficientBytes +=
            std::int64_t{component.width_in_blocks} * component.height_in_blocks * DCTSIZE2 * 2;
    }
    return coefficientBytes <= kMostCoefficientBytes;
}

bool JpegReader::Start() {
    if (setjmp(jump_) != 0) return false;
    const bool isCmyk = codec_.jpeg_color_space == JCS_CMYK || codec_.jpeg_color_space == JCS_YCCK;
    codec_.out_color_space = isCmyk ? JCS_CMYK : JCS_EXT_BGRA;  // the bytes of a 0xAARRGGBB word
    if (codec_.scale_num < kWholeScale) {
        // What these two save in quality is lost by the reduction anyhow.
        codec_.dct_method = JDCT_IFAST;
        codec_.do_fancy_upsampling = FALSE;
    }
    return jpeg_start_decompress(&codec_) == TRUE;
}

void JpegReader::ConvertCmykRow(const std::uint8_t* from, std::uint8_t* to) const {
    // Photo programs store the inks inverted and say so by their marker.
    const bool isInverted = codec_.saw_Adobe_marker == TRUE;
    for (unsigned x = 0; x < codec_.output_width; ++x, from += 4, to += 4) {
        const int cyan = from[0], magenta = from[1], yellow = from[2], black = from[3];  // from may be to
        const auto light = [isInverted](int ink) { return isInverted ? ink : 255 - ink; };
        to[2] = static_cast<std::uint8_t>(light(cyan) * light(black) / 255);
        to[1] = static_cast<std::uint8_t>(light(magenta) * light(black) / 255);
        to[0] = static_cast<std::uint8_t>(light(yellow) * light(black) / 255);
        to[3] = 0xFF;
    }
}

bool JpegReader::ReadRows(QImage& image) {
    std::uint8_t* const pixels = image.bits();
    const auto stride = static_cast<std::size_t>(image.bytesPerLine());
    const bool isCmyk = codec_.out_color_space == JCS_CMYK;
    // A picture in one scan is decoded as it is read: behind the end of the bytes come a few rows that were
    // under way, and then only made-up ones.
    const bool stopsAtEnd = !jpeg_has_multiple_scans(&codec_);
    const int rowsUnderWay = 2 * codec_.max_v_samp_factor * DCTSIZE;
    if (setjmp(jump_) != 0) return rowsRead_ > 0;
    const auto rows = static_cast<JDIMENSION>(image.height());
    while (codec_.output_scanline < rows) {
        JSAMPROW row = pixels + stride * codec_.output_scanline;
        if (jpeg_read_scanlines(&codec_, &row, 1) != 1) break;
        if (isCmyk) ConvertCmykRow(row, row);
        ++rowsRead_;
        if (hasEnded_ && stopsAtEnd && ++rowsAfterEnd_ > rowsUnderWay) break;
    }
    return rowsRead_ > 0;
}

QImage JpegReader::Decode(Size needed, Part part) {
    if (!ChooseScale(needed) || !IsPlausible() || !Start()) return QImage();
    const int rows = static_cast<int>(codec_.output_height);
    QImage image(static_cast<int>(codec_.output_width),
                 part == Part::Top ? (rows + kTopPart - 1) / kTopPart : rows, QImage::Format_RGB32);
    if (image.isNull() || codec_.output_components != 4 || !ReadRows(image)) return QImage();
    if (DecodingGate::Instance().IsClosed()) return QImage();
    if (part == Part::Top && rowsRead_ < image.height()) return QImage();
    for (int y = rowsRead_; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill(row, row + image.width(), kMissing);
    }
    return image;
}

}  // namespace

bool LooksLikeJpeg(const ByteSource& source) {
    std::array<std::uint8_t, 2> head{};
    return source.ReadAt(0, head) == head.size() && head[0] == 0xFF && head[1] == 0xD8;
}

Size MeasureJpeg(const ByteSource& source) {
    const auto reader = std::make_unique<JpegReader>(source);
    return reader->ReadHeader() ? reader->StoredSize() : Size{};
}

QImage DecodeJpeg(const ByteSource& source, Size needed) {
    const auto reader = std::make_unique<JpegReader>(source);
    return reader->ReadHeader() ? reader->Decode(needed, JpegReader::Part::Whole) : QImage();
}

QImage DecodeJpegTop(const ByteSource& source, Size needed) {
    const auto reader = std::make_unique<JpegReader>(source);
    return reader->ReadHeader() ? reader->Decode(needed, JpegReader::Part::Top) : QImage();
}

}  // namespace kalmora::qt
