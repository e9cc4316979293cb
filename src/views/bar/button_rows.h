// The picture buttons: which there are, what shows them, what they look like and what a press does.
#pragma once

#include <array>
#include <cstddef>

#include "base/commands.h"
#include "state/app_state.h"

namespace kalmora {

// From the right edge of the window to the left.
enum ImageButton : std::size_t {
    kHelp,
    kFilter,
    kImport,
    kTwitter,
    kGoogleCalendar,
    kAmazon,
    kIndexing,
    kSearch,
    kSlideShow,
    kSound,
    kAll,
    kPause,
    kNext2,
    kNext,
    kAuto,
    kPrev,
    kPrev2,
    kImageButtonCount
};

struct ButtonRow {
    const char* name;
    const char* japanese;     // the name with UseJapanese
    bool Settings::*setting;  // null: always shown
    const char* image;        // when on, or at all
    const char* imageOff;     // null: one picture for both states
    bool (*isOn)(const AppState&);
    int command;  // 0: see ButtonAction
};

constexpr std::array<ButtonRow, kImageButtonCount> kButtonRows{{
    {"Help", "ヘルプ", &Settings::ShowButtonHelp, "Res/help.png", nullptr, nullptr, 0},
    {"Filter", "フィルタ", &Settings::ShowButtonFilter, "Res/show_filter.png", nullptr, nullptr, 0},
    {"Import", "取り込み", &Settings::ShowButtonImport, "Res/import.png", nullptr, nullptr, kCommandImport},
    {"Twitter", "Twitter", &Settings::ShowButtonTwitter, "Res/twitter.png", nullptr, nullptr,
     kCommandTwitter},
    {"Google Calendar", "Google カレンダー", &Settings::ShowButtonGoogleCalendar, "Res/google_calendar.png",
     nullptr, nullptr, kCommandGoogleCalendar},
    {"Amazon", "Amazon", &Settings::ShowButtonAmazon, "Res/amazon.png", nullptr, nullptr, kCommandAmazon},
    {"Indexing", "索引作成", &Settings::ShowButtonIndexing, "Res/indexing_on.png", "Res/indexing_off.png",
     [](const AppState& s) { return s.run.IndexingEnabled != 0; }, 0},
    {"Search", "検索", &Settings::ShowButtonSearch, "Res/search.png", nullptr, nullptr, kCommandSearch},
    {"Slide show", "スライドショー", &Settings::ShowButtonSlideShow, "Res/show_slide.png", nullptr, nullptr,
     kCommandOpenSlideShow},
    {"Sound", "音楽", &Settings::ShowButtonSound, "Res/sound_on.png", "Res/sound_off.png",
     [](const AppState& s) { return s.settings.SoundMode != 0; }, kCommandSound},
    {"All", "すべて表示", &Settings::ShowButtonParapara, "Res/all_on.png", "Res/all_off.png",
     [](const AppState& s) { return s.view.Now().scatter; }, kCommandAllView},
    {"Pause", "一時停止", &Settings::ShowButtonStop, "Res/pause_on.png", "Res/pause_off.png",
     [](const AppState& s) { return s.run.Paused == 0; }, kCommandPause},
    // A clear ShowButtonNext hides Next 2 and leaves Next shown: kept, and held by a test.
    {"Next 2", "大きく進む", &Settings::ShowButtonNext, "Res/last.png", nullptr, nullptr, kCommandOuterNext},
    {"Next", "次へ", nullptr, "Res/next.png", nullptr, nullptr, kCommandNext},
    {"Auto", "自動移動", &Settings::ShowButtonAuto, "Res/auto_on.png", "Res/auto_off.png",
     [](const AppState& s) { return s.settings.AutoNavigate != 0; }, kCommandAutoNavigate},
    {"Prev", "前へ", &Settings::ShowButtonPrev, "Res/prev.png", nullptr, nullptr, kCommandPrevious},
    {"Prev 2", "大きく戻る", &Settings::ShowButtonPrev2, "Res/first.png", nullptr, nullptr,
     kCommandOuterPrevious},
}};

// The label that leads to the next level up.
struct LevelRow {
    Level level;
    const char* name;  // empty: no label
    const char* japanese;
    int command;
};

constexpr std::array<LevelRow, 3> kLevelRows{{
    {Level::Year, "", "", 0},
    {Level::Month, "Yearly", "年表示", kCommandToYearly},
    {Level::Day, "Monthly", "月表示", kCommandLevelUp},
}};
constexpr const LevelRow& LevelRowOf(Level level) {
    for (const LevelRow& row : kLevelRows)
        if (row.level == level) return row;
    return kLevelRows[0];
}

}  // namespace kalmora
