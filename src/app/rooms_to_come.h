// The rooms that are not built yet, as null objects: they show nothing, do nothing and say no. Each goes when
// its room comes.
#pragma once

#include "app/rooms_above.h"
#include "base/commands.h"
#include "views/model/view_partners.h"

namespace kalmora {

class NoSlideShow : public SlideShow {
public:
    bool IsShown() const override { return false; }
    void Show(const std::string&) override {}
    void Hide() override {}
    std::string Path() const override { return {}; }
    void Next() override {}
    void Previous() override {}
    void Rate(EstimateType) override {}
    void Say(const std::string&, int) override {}
    void Reload() override {}
    void ClearSlides() override {}
    void AddSlide(const std::string&) override {}
    void TakeNewSlides() override {}
    void Restart() override {}
    void Open() override {}
    void FitToWindow() override {}
    void SetDirection(SlideDirection) override {}
    void FlipView() override {}
    void DeleteSlide() override {}
    void PasteComment() override {}
    bool IsOnPicture(Point) const override { return false; }
};

class NoNeighborWindow : public PictureWindow {
public:
    bool IsShown() const override { return false; }
    void Show(const std::string&) override {}
    void Hide() override {}
    std::string Path() const override { return {}; }
    void Next() override {}
    void Previous() override {}
    void Rate(EstimateType) override {}
    void Say(const std::string&, int) override {}
    void Reload() override {}
};

class NoMusicPlayer : public MusicPlayer {
public:
    std::string Current() const override { return {}; }
    void Play(const std::string&) override {}
    void Stop() override {}
    void Pause() override {}
};

class NoFilterWindow : public FilterWindow {
public:
    void Show() override {}
    void Hide() override {}
};

class NoRatingPetals : public RatingPetals {
public:
    bool IsShown() const override { return false; }
    void Hide() override {}
    std::optional<EstimateType> RatingAt(Point) const override { return std::nullopt; }
};

class NoNoteEditor : public NoteEditor {
public:
    bool IsOpen() const override { return false; }
    void OpenAndPaste() override {}
    void Close() override {}
    void Edit(Command) override {}
};

class NoTextScraps : public TextScraps {
public:
    void Scrap(ScrapSource) override {}
    void WatchClipboard(std::function<void()>) override {}
    void KeepClipboard() override {}
    std::string MakeText(const CalendarDate&, const std::string&) override { return {}; }
};

class NoDragSource : public DragSource {
public:
    bool Start(Window&, const std::string&) override { return false; }
};

class NoScreenshots : public Screenshots {
public:
    void Take(ScreenshotArea) override {}
};

class NoGetters : public Getters {
public:
    void Run(Getter) override {}
};

// Of the commands with a hot key.
constexpr bool IsOfRoomToCome(int command) {
    return command == kCommandScreenshot || command == kCommandScreenshotOfWindow ||
           command == kCommandScrapSelection || command == kCommandScrapClipboard;
}

// In the order in which the start makes their rooms.
struct RoomsToCome {
    NoRatingPetals petals;
    NoTextScraps scraps;
    NoDragSource dragSource;
    NoMusicPlayer music;
    NoSlideShow slideShow;
    NoNoteEditor editor;
    NoNeighborWindow neighbor;
    NoFilterWindow filter;
    NoScreenshots screenshots;
    NoGetters getters;
};

}  // namespace kalmora
