// What the shell asks of windows and workers that other rooms build: each is a named hook, set by its room at
// start; one that nobody set does nothing and says no. GUI thread unless told otherwise.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/window.h"

namespace kalmora {

struct AppHooks {
    // ---- slide show
    std::function<void()> OpenSlideShow = [] {};
    std::function<void(const std::string& path)> OpenSlideShowAt = [](const std::string&) {};
    std::function<void()> CloseSlideShow = [] {};
    std::function<void()> FitSlideShow = [] {};
    std::function<void(int flag)> SetSlideShowState = [](int) {};
    std::function<void()> FlipSlideShowView = [] {};
    std::function<void()> NextSlide = [] {};
    std::function<void()> PreviousSlide = [] {};
    std::function<void()> DeleteSlide = [] {};
    std::function<void(int type)> RateSlide = [](int) {};
    std::function<void()> PasteIntoSlideShow = [] {};
    // ---- neighbor window
    std::function<bool()> IsNeighborShown = [] { return false; };  // any thread
    std::function<void(const std::string& path)> ShowNeighbor = [](const std::string&) {};
    std::function<void()> HideNeighbor = [] {};
    std::function<void()> NextNeighbor = [] {};
    std::function<void()> PreviousNeighbor = [] {};
    std::function<void(int type)> RateNeighbor = [](int) {};
    // ---- rating rosette
    std::function<bool()> IsEstimateShown = [] { return false; };  // any thread
    std::function<void()> HideEstimate = [] {};                    // any thread
    // ---- editor
    std::function<void()> OpenEditorAndPaste = [] {};
    std::function<void()> CloseEditor = [] {};
    std::function<bool()> IsEditorOpen = [] { return false; };
    std::function<void(int id)> SendToEditor = [](int) {};
    // ---- notes: makes a text of the day, gives its path, empty when it could not be made
    std::function<std::string(int year, int month, int day, const std::string& content)> MakeText =
        [](int, int, int, const std::string&) { return std::string(); };
    // ---- drag and drop
    std::function<bool(Window&, const std::string& path)> StartDragOut = [](Window&, const std::string&) {
        return false;
    };
    std::function<bool(const std::vector<std::string>& paths)> ImportDropped =
        [](const std::vector<std::string>&) { return false; };
    // ---- search, import, update, capture, getters, rotation
    std::function<void()> ShowJumpDialog = [] {};
    std::function<bool()> ShowSearchDialog = [] { return false; };  // true when a result is to be shown
    std::function<void()> Import = [] {};
    std::function<void(int yearTimes100PlusMonth)> UpdateMonthInBackground = [](int) {};
    std::function<void()> PreloadIndexes = [] {};                         // on its own thread
    std::function<double(int year, int month)> SecondsSinceMonthUpdate =  // 360000: never
        [](int, int) { return 0.0; };
    std::function<void(int id)> RunGetter = [](int) {};
    std::function<void(int id)> Rotate = [](int) {};
    std::function<void(bool wholeDesktop)> TakeScreenshot = [](bool) {};
    std::function<void(int id)> ScrapSelection = [](int) {};
    // ---- keys: the command for an accelerator id, 0 for none
    std::function<int(int id)> TranslateKey = [](int) { return 0; };
    std::function<void()> LoadKeys = [] {};
    std::function<void()> SaveKeys = [] {};
    std::function<void()> ReleaseHotKeys = [] {};
};

AppHooks& Shell();

}  // namespace kalmora
