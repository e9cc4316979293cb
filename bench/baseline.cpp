#include "baseline.h"

#include <fcntl.h>
#include <unistd.h>

// The library's header wants the C library's before it.
#include <cstdio>
// clang-format off
#include <jpeglib.h>
// clang-format on
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <ctime>
#include <fstream>
#include <thread>

namespace bench {

namespace {

constexpr std::size_t kFirstRead = 4096;
constexpr std::size_t kLongRead = 64 * 1024;

std::size_t ReadHead(const char* path, std::uint8_t* into, std::size_t length) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) return 0;
    const ssize_t count = pread(file, into, length, 0);
    close(file);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

// The block of one photo. Positions are checked against what was read and against nothing else.
class Block {
public:
    Block(const std::uint8_t* bytes, std::size_t length, std::size_t start)
        : bytes_(bytes + start), length_(length - start), start_(start), bigEndian_(bytes[start] == 'M') {}

    // The main directory, the one of the camera's values, and the thumbnail's where that is wanted. False
    // when one lies beyond what was read.
    bool Walk(Read what, Basics& basics) {
        std::uint32_t next = 0, ignored = 0;
        if (!Directory(U32(4), basics, next)) return false;
        if (exif_ != 0 && !Directory(exif_, basics, ignored)) return false;
        return what == Read::BasicsOnly || next == 0 || Directory(next, basics, ignored);
    }

private:
    std::uint32_t U16(std::size_t at) const {
        return bigEndian_ ? static_cast<std::uint32_t>(bytes_[at] << 8 | bytes_[at + 1])
                          : static_cast<std::uint32_t>(bytes_[at + 1] << 8 | bytes_[at]);
    }
    std::uint32_t U32(std::size_t at) const {
        return bigEndian_ ? U16(at) << 16 | U16(at + 2) : U16(at + 2) << 16 | U16(at);
    }
    std::uint32_t Numerator(std::size_t at) const { return at + 8 <= length_ ? U32(at) : 0; }

    bool Directory(std::uint32_t at, Basics& basics, std::uint32_t& next) {
        if (at + std::size_t{2} > length_) return false;
        const std::uint32_t count = U16(at);
        const std::size_t end = std::size_t{at} + 2 + std::size_t{12} * count;
        if (end + 4 > length_) return false;
        for (std::size_t entry = at + std::size_t{2}; entry < end; entry += 12) Take(entry, basics);
        next = U32(end);
        return true;
    }

    void Take(std::size_t entry, Basics& basics) {
        const std::uint32_t value = U32(entry + 8);
        switch (U16(entry)) {
            case 0x0132:
            case 0x9003:
                if (value + sizeof basics.date <= length_) std::memcpy(basics.date, bytes_ + value, 19);
                break;
            case 0x0201:
                basics.thumbnailOffset = start_ + value;
                break;
            case 0x0202:
                basics.thumbnailLength = value;
                break;
            case 0x8769:
                exif_ = value;
                break;
            case 0x829A:
                basics.exposureTime = Numerator(value);
                break;
            case 0x8822:
                basics.exposureProgram = U16(entry + 8);
                break;
            case 0x8827:
                basics.iso = U16(entry + 8);
                break;
            case 0x9201:
                basics.shutter = Numerator(value);
                break;
            case 0x9202:
                basics.aperture = Numerator(value);
                break;
            case 0x9203:
                basics.brightness = Numerator(value);
                break;
            case 0x9204:
                basics.exposureBias = Numerator(value);
                break;
            case 0x9209:
                basics.flash = U16(entry + 8);
                break;
            default:
                break;
        }
    }

    const std::uint8_t* bytes_;
    std::size_t length_, start_;
    bool bigEndian_;
    std::uint32_t exif_ = 0;
};

bool Parse(const std::uint8_t* bytes, std::size_t length, Read what, Basics& basics) {
    constexpr std::size_t kBlock = 12;  // start of image, the segment's head, "Exif" and two zero bytes
    std::memset(&basics, 0, sizeof basics);
    if (length < kBlock + 8 || std::memcmp(bytes, "\xFF\xD8\xFF\xE1", 4) != 0 ||
        std::memcmp(bytes + 6, "Exif", 5) != 0)
        return false;
    return Block(bytes, length, kBlock).Walk(what, basics) && basics.date[0] != '\0';
}

struct Decoder {
    Decoder() {
        codec.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&codec);
    }
    ~Decoder() { jpeg_destroy_decompress(&codec); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    std::size_t Rows() {
        jpeg_start_decompress(&codec);
        std::vector<std::uint8_t> row(std::size_t{codec.output_width} * 3);
        JSAMPROW rows = row.data();
        while (codec.output_scanline < codec.output_height) jpeg_read_scanlines(&codec, &rows, 1);
        const std::size_t pixels = std::size_t{codec.output_width} * codec.output_height;
        jpeg_finish_decompress(&codec);
        return pixels;
    }

    jpeg_decompress_struct codec{};
    jpeg_error_mgr errors{};
};

}  // namespace

bool ReadBasics(const char* path, Read what, Basics& basics) {
    std::uint8_t bytes[kFirstRead];
    if (Parse(bytes, ReadHead(path, bytes, sizeof bytes), what, basics)) return true;
    thread_local std::vector<std::uint8_t> more(kLongRead);
    return Parse(more.data(), ReadHead(path, more.data(), more.size()), what, basics);
}

std::size_t DecodeThumbnail(const char* path) {
    thread_local std::vector<std::uint8_t> bytes(kLongRead);
    const std::size_t length = ReadHead(path, bytes.data(), bytes.size());
    Basics basics;
    if (!Parse(bytes.data(), length, Read::ThumbnailToo, basics)) return 0;
    if (basics.thumbnailLength == 0 || basics.thumbnailOffset + basics.thumbnailLength > length) return 0;
    Decoder decoder;
    jpeg_mem_src(&decoder.codec, bytes.data() + basics.thumbnailOffset, basics.thumbnailLength);
    jpeg_read_header(&decoder.codec, TRUE);
    return decoder.Rows();
}

std::size_t DecodeEighth(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    if (!file) return 0;
    std::size_t pixels = 0;
    {
        Decoder decoder;
        jpeg_stdio_src(&decoder.codec, file);
        jpeg_read_header(&decoder.codec, TRUE);
        decoder.codec.scale_num = 1;
        decoder.codec.scale_denom = 8;
        decoder.codec.dct_method = JDCT_IFAST;
        decoder.codec.do_fancy_upsampling = FALSE;
        pixels = decoder.Rows();
    }
    std::fclose(file);
    return pixels;
}

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double WallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::vector<std::string> ReadList(const char* path) {
    std::ifstream list(path);
    std::vector<std::string> paths;
    for (std::string line; std::getline(list, line);)
        if (!line.empty()) paths.push_back(line);
    return paths;
}

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::size_t ForEach(const std::vector<std::string>& paths, int threads,
                    const std::function<std::size_t(const char* path)>& job) {
    std::atomic<std::size_t> next = 0, sum = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < paths.size(); i = next++) sum += job(paths[i].c_str());
    };
    std::vector<std::thread> others;
    for (int i = 1; i < threads; ++i) others.emplace_back(work);
    work();
    for (std::thread& other : others) other.join();
    return sum;
}

}  // namespace bench
