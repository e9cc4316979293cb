#include "wav_writer.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <string>

#include "bytes.h"

namespace sample {

namespace {

constexpr int samplesPerSecond = 22050;

// Half tones above C of octave 0, or -1 for a rest.
int PitchOf(const std::string& name) {
    constexpr std::string_view steps = "C D EF G A B";
    const std::size_t step = steps.find(name[0]);
    if (step == std::string_view::npos) {
        return -1;
    }
    std::size_t at = 1;
    int pitch = static_cast<int>(step);
    if (name.size() > 2 && name[1] == '#') {
        ++pitch;
        ++at;
    }
    return pitch + 12 * (name[at] - '0');
}

void PlayLine(std::vector<float>& sound, std::string_view line, float beatsPerMinute, float loudness,
              float decay) {
    std::istringstream notes{std::string(line)};
    std::string note;
    float seconds = 0;
    while (notes >> note) {
        const std::size_t colon = note.find(':');
        const float length = std::stof(note.substr(colon + 1)) * 60.0f / beatsPerMinute;
        const int pitch = PitchOf(note.substr(0, colon));
        if (pitch >= 0) {
            const float frequency = 440.0f * std::exp2(static_cast<float>(pitch - 57) / 12.0f);
            const auto start = static_cast<std::size_t>(seconds * samplesPerSecond);
            const auto count = static_cast<std::size_t>((length + 0.9f) * samplesPerSecond);  // it rings on
            if (sound.size() < start + count) {
                sound.resize(start + count, 0.0f);
            }
            for (std::size_t i = 0; i < count; ++i) {
                const float t = static_cast<float>(i) / samplesPerSecond;
                const float rest = static_cast<float>(count - i) / (0.3f * samplesPerSecond);
                const float envelope =
                    std::min(1.0f, t / 0.008f) * std::exp(-t * decay) * std::min(1.0f, rest);
                const float phase = 2.0f * std::numbers::pi_v<float> * frequency * t;
                const float voice = std::sin(phase) + 0.32f * std::sin(2.0f * phase) * std::exp(-t * 4.0f) +
                                    0.14f * std::sin(3.0f * phase) * std::exp(-t * 7.0f);
                sound[start + i] += loudness * envelope * voice;
            }
        }
        seconds += length;
    }
}

}  // namespace

std::vector<std::uint8_t> WavBytes(const Tune& tune) {
    std::vector<float> sound;
    PlayLine(sound, tune.melody, tune.beatsPerMinute, 0.30f, 2.2f);
    PlayLine(sound, tune.bass, tune.beatsPerMinute, 0.22f, 1.5f);
    // A light echo gives the voice a room.
    const std::size_t delay = samplesPerSecond * 23 / 100;
    for (std::size_t i = delay; i < sound.size(); ++i) {
        sound[i] += 0.22f * sound[i - delay];
    }
    float peak = 0.1f;
    for (const float value : sound) {
        peak = std::max(peak, std::fabs(value));
    }
    const auto bytes = static_cast<std::uint32_t>(sound.size() * 2);
    ByteWriter file;
    file.Text("RIFF");
    file.U32(36 + bytes);
    file.Text("WAVEfmt ");
    file.U32(16);
    file.U16(1);  // PCM
    file.U16(1);  // mono
    file.U32(samplesPerSecond);
    file.U32(samplesPerSecond * 2);
    file.U16(2);
    file.U16(16);
    file.Text("data");
    file.U32(bytes);
    for (const float value : sound) {
        file.U16(static_cast<std::uint32_t>(std::lround(value / peak * 26000.0f)) & 0xFFFF);
    }
    return file.Bytes();
}

}  // namespace sample
