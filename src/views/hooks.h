// What the views tell rooms above them, and what they ask of them. The rooms set these at start; a hook that
// nobody set does nothing. Set before threads run, never changed afterwards.
#pragma once

#include <functional>
#include <string>

#include "base/geometry.h"

namespace kalmora {

struct ViewHooks {
    // ---- slide show
    std::function<bool()> IsSlideShowOpen = [] { return false; };
    std::function<void()> HideSlideShow = [] {};
    std::function<void()> ClearSlides = [] {};
    std::function<void(const std::string& path)> AddSlide = [](const std::string&) {};
    std::function<void()> TakeNewSlides = [] {
    };  // the period's objects have changed under an open slide show
    std::function<void()> RestartSlideShow = [] {};
    // ---- music
    std::function<std::string()> CurrentMusic = [] { return std::string(); };
    std::function<void(const std::string& path)> PlayMusic = [](const std::string&) {};
    std::function<void()> StopMusic = [] {};
    std::function<void()> PauseMusic = [] {};
    // ---- navigation log: one line for what is looked at
    std::function<void(const std::string& line)> LogNavigation = [](const std::string&) {};
    // ---- buttons whose windows are built by higher rooms
    std::function<void(int id)> RunCommand = [](int) {};
    std::function<void()> ShowFilterWindow = [] {};
    std::function<void(const char* reason)> StopIndexing = [](const char*) {};
    // ---- observation, for `shot`, tests and benches: how many objects a run has drawn, and when
    std::function<void()> OnFirstPaint = [] {};
    std::function<void()> OnWholeView = [] {};
};

ViewHooks& Hooks();

}  // namespace kalmora
