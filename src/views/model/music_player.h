// The player of background music. Any thread.
#pragma once

#include <string>

namespace kalmora {

class MusicPlayer {
public:
    virtual ~MusicPlayer() = default;
    virtual std::string Current() const = 0;  // the path of the piece; empty for none
    virtual void Play(const std::string& path) = 0;
    virtual void Stop() = 0;
    virtual void Pause() = 0;
};

}  // namespace kalmora
