// What the shell asks of windows and workers that other rooms build: each is a named hook, set by its room at
// start; one that nobody set does nothing and says no. GUI thread unless told otherwise.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/window.h"

namespace kalmora {

struct AppHooks {
    // ---- made in this order while the program starts; the window is not shown before the music player
    std::function<void(Window&)> MakeFrameCapture = [](Window&) {};
    std::function<void(Window&)> MakeEstimateWindow = [](Window&) {};
    std::function<void(Window&)> MakeScrapAgent = [](Window&) {};
    std::function<void(Window&)> MakeMusicPlayer = [](Window&) {};
    std::function<void(Window&)> MakeSlideShow = [](Window&) {};
    std::function<void(Window&)> MakeNeighborWindow = [](Window&) {};
    std::function<void(Window&)> MakeFilterWindow = [](Window&) {};
    // ---- when it stops
    std::function<void()> CloseMusicPlayer = [] {};
    std::function<void()> CloseWindows = [] {};  // whatever else the rooms above have on the screen
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
    std::function<std::string()> SlidePath = [] { return std::string(); };
    std::function<void()> ReloadSlide = [] {};  // its file has become another
    std::function<void(const std::string& words, int ticks)> SayInSlideShow = [](const std::string&, int) {};
    std::function<bool(Point screen)> IsOnSlidePicture = [](Point) { return false; };
    std::function<void()> PasteIntoSlideShow = [] {};
    // ---- neighbor window
    std::function<bool()> IsNeighborShown = [] { return false; };  // any thread
    std::function<void(const std::string& path)> ShowNeighbor = [](const std::string&) {};
    std::function<void()> HideNeighbor = [] {};
    std::function<void()> NextNeighbor = [] {};
    std::function<void()> PreviousNeighbor = [] {};
    std::function<void(int type)> RateNeighbor = [](int) {};
    std::function<std::string()> NeighborPath = [] { return std::string(); };
    std::function<void()> ReloadNeighbor = [] {};  // its file has become another
    std::function<void(const std::string& words)> SayInNeighbor = [](const std::string&) {};
    // ---- rating rosette
    std::function<bool()> IsEstimateShown = [] { return false; };         // any thread
    std::function<void()> HideEstimate = [] {};                           // any thread
    std::function<int(Point screen)> RatingAt = [](Point) { return 0; };  // of the petal there; 0 for none
    // Rates the object of the file in the view, or one made for it. False when nothing could be written.
    std::function<bool(const std::string& path, int type)> RateFile = [](const std::string&, int) {
        return false;
    };
    // ---- filter window
    std::function<void()> HideFilterWindow = [] {};
    // ---- clipboard: joins those who are told of changes, for as long as the program runs
    std::function<void(std::function<void()> onChange)> WatchClipboard = [](std::function<void()>) {};
    std::function<void()> KeepClipboard = [] {};  // what was copied becomes a note
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
    // Files dropped on the main window; true when what it shows has changed.
    std::function<bool(const Event& drop)> ImportDropped = [](const Event&) { return false; };
    // ---- search, import, update, capture, getters, rotation
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
