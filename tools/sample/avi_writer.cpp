#include "avi_writer.h"

#include <algorithm>

#include "bytes.h"

namespace sample {

namespace {

// Opens a RIFF chunk and gives the place where its size will stand.
std::size_t Open(ByteWriter& file, const char* name, const char* kind = nullptr) {
    file.Text(name);
    const std::size_t place = file.Size();
    file.U32(0);
    if (kind) {
        file.Text(kind);
    }
    return place;
}

void Close(ByteWriter& file, std::size_t place) {
    file.PatchU32(place, static_cast<std::uint32_t>(file.Size() - place - 4));
    file.Zeros(file.Size() % 2);
}

}  // namespace

std::vector<std::uint8_t> AviBytes(const std::vector<std::vector<std::uint8_t>>& frames, int width,
                                   int height, int framesPerSecond) {
    const auto w = static_cast<std::uint32_t>(width);
    const auto h = static_cast<std::uint32_t>(height);
    const auto count = static_cast<std::uint32_t>(frames.size());
    const auto rate = static_cast<std::uint32_t>(framesPerSecond);
    std::size_t largest = 0;
    for (const auto& frame : frames) {
        largest = std::max(largest, frame.size());
    }
    ByteWriter file;
    const std::size_t riff = Open(file, "RIFF", "AVI ");
    const std::size_t headers = Open(file, "LIST", "hdrl");
    const std::size_t main = Open(file, "avih");
    file.U32(1000000 / rate);  // microseconds a frame
    file.U32(static_cast<std::uint32_t>(largest) * rate);
    file.U32(0);
    file.U32(0x10);  // has an index
    file.U32(count);
    file.U32(0);
    file.U32(1);  // streams
    file.U32(static_cast<std::uint32_t>(largest));
    file.U32(w);
    file.U32(h);
    file.Zeros(16);
    Close(file, main);
    const std::size_t stream = Open(file, "LIST", "strl");
    const std::size_t head = Open(file, "strh");
    file.Text("vidsMJPG");
    file.Zeros(12);  // flags, priority, language, first frame
    file.U32(1);
    file.U32(rate);
    file.U32(0);
    file.U32(count);
    file.U32(static_cast<std::uint32_t>(largest));
    file.U32(0xFFFFFFFF);  // quality: the codec's own
    file.U32(0);
    file.U16(0);
    file.U16(0);
    file.U16(w);
    file.U16(h);
    Close(file, head);
    const std::size_t format = Open(file, "strf");
    file.U32(40);
    file.U32(w);
    file.U32(h);
    file.U16(1);
    file.U16(24);
    file.Text("MJPG");
    file.U32(w * h * 3);
    file.Zeros(16);
    Close(file, format);
    Close(file, stream);
    Close(file, headers);

    const std::size_t movie = Open(file, "LIST", "movi");
    const std::size_t movieStart = movie + 4;  // index offsets count from the word "movi"
    ByteWriter index;
    for (const auto& frame : frames) {
        index.Text("00dc");
        index.U32(0x10);  // a key frame
        index.U32(static_cast<std::uint32_t>(file.Size() - movieStart));
        index.U32(static_cast<std::uint32_t>(frame.size()));
        const std::size_t chunk = Open(file, "00dc");
        file.Append(frame);
        Close(file, chunk);
    }
    Close(file, movie);
    const std::size_t list = Open(file, "idx1");
    file.Append(index.Bytes());
    Close(file, list);
    Close(file, riff);
    return file.Bytes();
}

}  // namespace sample
