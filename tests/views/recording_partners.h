// Stand-ins for the rooms above the views: they write down what they are asked for, and answer as the test
// wants.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "views/model/view_partners.h"

namespace kalmora {

// The calls in their order. Any thread.
class CallRecord {
public:
    void Add(std::string call) {
        std::lock_guard lock(mutex_);
        calls_.push_back(std::move(call));
    }
    std::vector<std::string> Take() {
        std::lock_guard lock(mutex_);
        return std::exchange(calls_, {});
    }
    void Clear() { Take(); }

private:
    std::mutex mutex_;
    std::vector<std::string> calls_;  // guarded by mutex_
};

inline std::string NameOfPath(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

// A window of pictures whose calls are named after it: "NextSlide", "RateNeighbor 3".
template <typename Base>
class RecordingPictures : public Base {
public:
    RecordingPictures(CallRecord& calls, std::string name) : calls_(calls), name_(std::move(name)) {}
    bool IsShown() const override { return shown; }
    void Show(const std::string& picture) override { Add("Show", NameOfPath(picture)); }
    void Hide() override { Add("Hide"); }
    std::string Path() const override { return path; }
    void Next() override { Add("Next"); }
    void Previous() override { Add("Previous"); }
    void Rate(EstimateType type) override { Add("Rate", std::to_string(static_cast<int>(type))); }
    void Say(const std::string& words, int ticks) override {
        Add("Say", "\"" + words + "\" " + std::to_string(ticks));
    }
    void Reload() override { Add("Reload"); }

    std::atomic<bool> shown = false;
    std::string path;

protected:
    void Add(const std::string& verb, const std::string& what = {}) {
        calls_.Add(verb + name_ + (what.empty() ? "" : " " + what));
    }

private:
    CallRecord& calls_;
    const std::string name_;
};

class RecordingSlideShow : public RecordingPictures<SlideShow> {
public:
    explicit RecordingSlideShow(CallRecord& calls) : RecordingPictures(calls, "Slide") {}
    void ClearSlides() override {}
    void AddSlide(const std::string& slide) override { slides.Add(slide); }
    void TakeNewSlides() override {}
    void Restart() override {}
    void Open() override { Add("Open"); }
    void FitToWindow() override { Add("Fit"); }
    void SetDirection(SlideDirection direction) override {
        Add(direction == SlideDirection::Forward ? "Forward" : "Backward");
    }
    void FlipView() override { Add("FlipViewOf"); }
    void DeleteSlide() override { Add("Delete"); }
    void PasteComment() override { Add("PasteInto"); }
    bool IsOnPicture(Point) const override { return onPicture; }

    CallRecord slides;  // all that were added
    bool onPicture = false;
};

class RecordingMusicPlayer : public MusicPlayer {
public:
    explicit RecordingMusicPlayer(CallRecord& calls) : calls_(calls) {}
    std::string Current() const override { return {}; }
    void Play(const std::string& path) override { calls_.Add("PlayMusic " + NameOfPath(path)); }
    void Stop() override { calls_.Add("StopMusic"); }
    void Pause() override { calls_.Add("PauseMusic"); }

private:
    CallRecord& calls_;
};

class RecordingNavigation : public NavigationListener {
public:
    void OnNavigation(const std::string& line) override { lines.Add(line); }
    CallRecord lines;
};

class RecordingCommands : public CommandRunner {
public:
    explicit RecordingCommands(CallRecord& calls) : calls_(calls) {}
    void RunCommand(int command) override { calls_.Add("RunCommand " + std::to_string(command)); }

private:
    CallRecord& calls_;
};

class RecordingFilterWindow : public FilterWindow {
public:
    explicit RecordingFilterWindow(CallRecord& calls) : calls_(calls) {}
    void Show() override { calls_.Add("ShowFilterWindow"); }
    void Hide() override { calls_.Add("HideFilterWindow"); }

private:
    CallRecord& calls_;
};

class NoObserver : public ViewObserver {
public:
    void OnFirstPaint() override {}
    void OnWholeView() override {}
};

}  // namespace kalmora
