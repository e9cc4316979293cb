// Stand-ins for the parts that commands and events ask for something: they write down what they are asked
// for, and answer as the test wants.
#pragma once

#include "app/app_parts.h"
#include "input/keyboard.h"
#include "views/recording_partners.h"

namespace kalmora {

// All of them but those that the views know, behind one record.
class RecordingParts : public RatingPetals,
                       public NoteEditor,
                       public TextScraps,
                       public DragSource,
                       public Screenshots,
                       public Getters,
                       public Importer,
                       public SearchQuestion,
                       public IndexUpdates,
                       public PhotoRater {
public:
    explicit RecordingParts(CallRecord& calls) : calls_(calls) {}

    // ---- RatingPetals
    bool IsShown() const override { return petalsShown; }
    void Hide() override {
        petalsShown = false;
        calls_.Add("HidePetals");
    }
    std::optional<EstimateType> RatingAt(Point) const override { return rating; }
    // ---- NoteEditor
    bool IsOpen() const override { return editorOpen; }
    void OpenAndPaste() override { calls_.Add("OpenEditorAndPaste"); }
    void Close() override { calls_.Add("CloseEditor"); }
    void Edit(Command command) override { calls_.Add("Edit " + std::to_string(command)); }
    // ---- TextScraps
    void Scrap(ScrapSource source) override {
        calls_.Add(source == ScrapSource::Selection ? "ScrapSelection" : "ScrapClipboard");
    }
    void WatchClipboard(std::function<void()> onChange) override { clipboardChanges = std::move(onChange); }
    void KeepClipboard() override { calls_.Add("KeepClipboard"); }
    std::string MakeText(const CalendarDate& day, const std::string& content) override {
        calls_.Add("MakeText " + std::to_string(day.year) + "/" + std::to_string(day.month) + "/" +
                   std::to_string(day.day) + " " + content);
        return madeText;
    }
    // ---- DragSource
    bool Start(Window&, const std::string& path) override {
        calls_.Add("StartDragOut " + NameOfPath(path));
        return dragAnswer;
    }
    // ---- Screenshots and Getters
    void Take(ScreenshotArea area) override {
        calls_.Add(area == ScreenshotArea::Desktop ? "ShootDesktop" : "ShootWindow");
    }
    void Run(Getter getter) override {
        calls_.Add(getter == Getter::Amazon   ? "GetAmazon"
                   : getter == Getter::Travel ? "GetTravel"
                                              : "GetTwitter");
    }
    // ---- Importer
    void AskAndImport() override { calls_.Add("Import"); }
    bool ImportDropped(const DropEvent& drop) override {
        calls_.Add("ImportDropped " + std::to_string(drop.paths.size()));
        return importAnswer;
    }
    // ---- SearchQuestion
    bool Ask() override {
        calls_.Add("AskForSearch");
        return searchAnswer;
    }
    // ---- IndexUpdates
    void Start(int yearTimes100PlusMonth) override {
        calls_.Add("UpdateMonth " + std::to_string(yearTimes100PlusMonth));
    }
    double SecondsSinceUpdate(int, int) override { return monthAge; }
    void Preload() override { ++preloads; }
    // ---- PhotoRater
    bool Rate(const std::string& path, EstimateType type) override {
        calls_.Add("RateFile " + NameOfPath(path) + " " + std::to_string(static_cast<int>(type)));
        return true;
    }

    std::atomic<bool> petalsShown = false;
    bool editorOpen = false, searchAnswer = false, dragAnswer = true, importAnswer = false;
    std::optional<EstimateType> rating;
    std::string madeText;
    double monthAge = 360000;  // seconds
    std::atomic<int> preloads = 0;
    std::function<void()> clipboardChanges;

private:
    CallRecord& calls_;
};

// No window is open beside the calendar, and every hot key can be had.
class QuietKeyboard : public OpenWindows, public Keyboard {
public:
    bool IsEditorOpen() const override { return false; }
    bool IsSlideShowShown() const override { return false; }
    bool IsNeighborShown() const override { return false; }
    void Send(const KeyStroke&) override {}
    bool Register(const HotKey&) override { return true; }
    void Unregister(int) override {}
};

}  // namespace kalmora
