// What the views ask of rooms above them, and what they report to them.
#pragma once

#include <string>

#include "views/model/music_player.h"
#include "views/model/slide_show.h"

namespace kalmora {

// Gets one line for each period that is looked at, "(Month)<tab>2008/11". Any thread.
class NavigationListener {
public:
    virtual ~NavigationListener() = default;
    virtual void OnNavigation(const std::string& line) = 0;
};

// Runs a command (base/commands.h) that a button means. GUI thread.
class CommandRunner {
public:
    virtual ~CommandRunner() = default;
    virtual void RunCommand(int command) = 0;
};

// The window that chooses which objects are shown. GUI thread.
class FilterWindow {
public:
    virtual ~FilterWindow() = default;
    virtual void Show() = 0;
    virtual void Hide() = 0;
};

// Watches the painting: for the log, `shot` and tests. Any thread.
class ViewObserver {
public:
    virtual ~ViewObserver() = default;
    virtual void OnFirstPaint() = 0;  // of the run
    virtual void OnWholeView() = 0;   // all that the view holds has been drawn
};

// Handed over when the CalendarStore is made; they outlive it.
struct ViewPartners {
    SlideShow& slideShow;
    MusicPlayer& music;
    NavigationListener& navigation;
    CommandRunner& commands;
    FilterWindow& filter;
    ViewObserver& observer;
};

}  // namespace kalmora
