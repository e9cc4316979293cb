// Music, and movies inside a window. One player plays one file at a time.
//
// Made and destroyed on the GUI thread; all else may be called from any thread, takes effect in the order of
// the calls, and does not wait until a file has been opened.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/geometry.h"
#include "platform/window.h"

namespace kalmora {

enum class PlayerState {
    Closed,   // no file
    Opening,  // Open was called and it is not known yet whether the file can be played
    Playing,
    Paused,
    Stopped,  // at its beginning, or played to the end: a movie's last picture stays
    Failed,   // the file is missing, cannot be played, or has no picture (movie)
};

// Why a player changed its state without a call.
enum class PlayerEvent {
    Opened,
    Ended,  // the end of the file is reached
    Failed,
};

class Player {
public:
    // Runs on the GUI thread, never inside a call of the player; not after the player has gone.
    using Listener = std::function<void(PlayerEvent event, const std::string& path)>;

    // Sound alone: the picture of a file that has one is not shown. Null without an Application or the means
    // to play.
    static std::unique_ptr<Player> CreateMusic(Listener listener);
    // A movie with its sound over a part of the window, which must outlive the player; hidden until Play.
    static std::unique_ptr<Player> CreateMovie(Window& window, Listener listener);
    virtual ~Player() = default;  // closes

    // Closes what was open. Opened or Failed follows. The file starts to play once it is open.
    virtual void Play(const std::string& path) = 0;
    // Where the picture is drawn, in the window's logical pixels, its shape kept. Music: nothing.
    virtual void SetArea(const Rect& area) = 0;
    virtual void Pause() = 0;   // where it plays
    virtual void Resume() = 0;  // where it is paused; from the beginning where it is stopped
    virtual void Stop() = 0;    // back to the beginning; the picture stays. No Ended follows
    virtual void Rewind() = 0;  // plays from the beginning
    virtual void Close() = 0;   // the picture goes. No Ended follows
    virtual PlayerState State() const = 0;
    virtual std::string Path() const = 0;  // of the file that was asked for last; empty when closed
};

}  // namespace kalmora
