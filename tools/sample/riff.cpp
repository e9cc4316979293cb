#include "riff.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <sstream>
#include <string>

namespace sample {

namespace {

constexpr int samplesPerSecond = 22050;

Bytes Longs(std::initializer_list<std::uint32_t> numbers) {
    exif::Writer bytes;
    for (const std::uint32_t number : numbers) bytes.Put(number, 4);
    return bytes.Get();
}

// A chunk: its name, its length, its parts and a byte to make the length even.
Bytes Chunk(std::string_view name, std::initializer_list<Bytes> parts) {
    exif::Writer content;
    for (const Bytes& part : parts) content.Put(part);
    exif::Writer chunk;
    chunk.Put(name);
    chunk.Put(content.Length(), 4);
    chunk.Put(content.Get());
    chunk.PadTo((chunk.Length() + 1) / 2 * 2);
    return chunk.Get();
}

Bytes Word(std::string_view word) { return Bytes(word.begin(), word.end()); }

// Half tones above C of octave 0 of a name like "F#3".
int PitchOf(const std::string& name) {
    constexpr std::string_view steps = "C D EF G A B";
    const bool sharp = name[1] == '#';
    return static_cast<int>(steps.find(name[0])) + sharp + 12 * (name[sharp ? 2 : 1] - '0');
}

void PlayLine(std::vector<float>& sound, std::string_view line, float beatsPerMinute, float loudness,
              float decay) {
    std::istringstream notes{std::string(line)};
    float seconds = 0;
    for (std::string note; notes >> note;) {
        const float length = std::stof(note.substr(note.find(':') + 1)) * 60.0f / beatsPerMinute;
        const float frequency = 440.0f * std::exp2(static_cast<float>(PitchOf(note) - 57) / 12.0f);
        const auto start = static_cast<std::size_t>(seconds * samplesPerSecond);
        const auto count = static_cast<std::size_t>((length + 0.9f) * samplesPerSecond);  // it rings on
        sound.resize(std::max(sound.size(), start + count), 0.0f);
        for (std::size_t i = 0; i < count; ++i) {
            const float t = static_cast<float>(i) / samplesPerSecond;
            const float rest = static_cast<float>(count - i) / (0.3f * samplesPerSecond);
            const float envelope = std::min(1.0f, t / 0.008f) * std::exp(-t * decay) * std::min(1.0f, rest);
            const float phase = 2.0f * std::numbers::pi_v<float> * frequency * t;
            sound[start + i] += loudness * envelope *
                                (std::sin(phase) + 0.32f * std::sin(2.0f * phase) * std::exp(-t * 4.0f) +
                                 0.14f * std::sin(3.0f * phase) * std::exp(-t * 7.0f));
        }
        seconds += length;
    }
}

}  // namespace

Bytes AviBytes(const std::vector<Bytes>& frames, std::uint32_t width, std::uint32_t height,
               std::uint32_t framesPerSecond) {
    const auto count = static_cast<std::uint32_t>(frames.size());
    exif::Writer images, index;
    images.Put("movi");
    std::size_t largest = 0;
    for (const Bytes& frame : frames) {
        index.Put("00dc");
        // A key frame; offsets count from the word "movi".
        index.Put(Longs({0x10, images.Length(), static_cast<std::uint32_t>(frame.size())}));
        images.Put(Chunk("00dc", {frame}));
        largest = std::max(largest, frame.size());
    }
    const auto buffer = static_cast<std::uint32_t>(largest);
    constexpr std::uint32_t hasIndex = 0x10;
    const Bytes main = Chunk("avih", {Longs({1000000 / framesPerSecond, buffer * framesPerSecond, 0, hasIndex,
                                             count, 0, 1, buffer, width, height, 0, 0, 0, 0})});
    const Bytes stream =
        Chunk("strh", {Word("vidsMJPG"), Longs({0, 0, 0, 1, framesPerSecond, 0, count, buffer, 0xFFFFFFFF, 0,
                                                0, height << 16 | width})});
    const Bytes format = Chunk("strf", {Longs({40, width, height, 24 << 16 | 1}), Word("MJPG"),
                                        Longs({width * height * 3, 0, 0, 0, 0})});
    const Bytes headers = Chunk("LIST", {Word("hdrl"), main, Chunk("LIST", {Word("strl"), stream, format})});
    return Chunk("RIFF",
                 {Word("AVI "), headers, Chunk("LIST", {images.Get()}), Chunk("idx1", {index.Get()})});
}

Bytes WavBytes(const Tune& tune) {
    std::vector<float> sound;
    PlayLine(sound, tune.melody, tune.beatsPerMinute, 0.30f, 2.2f);
    PlayLine(sound, tune.bass, tune.beatsPerMinute, 0.22f, 1.5f);
    // A light echo gives the voice a room.
    const std::size_t delay = samplesPerSecond * 23 / 100;
    for (std::size_t i = delay; i < sound.size(); ++i) sound[i] += 0.22f * sound[i - delay];
    float peak = 0.1f;
    for (const float value : sound) peak = std::max(peak, std::fabs(value));
    exif::Writer data;
    for (const float value : sound) {
        data.Put(static_cast<std::uint32_t>(std::lround(value / peak * 26000.0f)), 2);
    }
    // PCM, mono, 16 bit.
    const Bytes format = Longs({1 << 16 | 1, samplesPerSecond, samplesPerSecond * 2, 16 << 16 | 2});
    return Chunk("RIFF", {Word("WAVE"), Chunk("fmt ", {format}), Chunk("data", {data.Get()})});
}

}  // namespace sample
