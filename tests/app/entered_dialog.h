// A dialog without a window: keeps what a test enters.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "platform/dialog.h"

namespace kalmora {

class EnteredDialog : public Dialog {
public:
    std::string Text(int id) const override { return texts.contains(id) ? texts.at(id) : std::string(); }
    void SetText(int id, const std::string& text) override { texts[id] = text; }
    bool IsChecked(int id) const override { return checked.contains(id); }
    void SetChecked(int id, bool isChecked) override {
        isChecked ? (void)checked.insert(id) : (void)checked.erase(id);
    }
    void SetChoices(int id, const std::vector<std::string>& given) override {
        choices[id] = given;
        Choose(id, 0);
    }
    int Chosen(int id) const override { return chosen.contains(id) ? chosen.at(id) : -1; }
    void Choose(int id, int index) override {
        chosen[id] = index;
        texts[id] = index < 0 ? "" : choices[id][static_cast<std::size_t>(index)];
    }
    SystemTime Date(int) const override { return {}; }
    void SetDate(int, const SystemTime&) override {}
    void SetEnabled(int id, bool isEnabled) override { enabled[id] = isEnabled; }
    void SetFocus(int id) override { focus = id; }
    void Close(int with) override { result = with; }

    std::map<int, std::string> texts;
    std::map<int, std::vector<std::string>> choices;
    std::map<int, int> chosen;
    std::map<int, bool> enabled;
    std::set<int> checked;
    int focus = 0, result = 0;
};

struct ControlFacts {
    int id;
    ControlKind kind;
    const char* text;
};

inline void ExpectControls(const DialogForm& form, std::span<const ControlFacts> wanted) {
    for (const ControlFacts& one : wanted) {
        const auto found = std::find_if(form.controls.begin(), form.controls.end(),
                                        [&](const Control& control) { return control.id == one.id; });
        ASSERT_NE(found, form.controls.end()) << one.id;
        EXPECT_EQ(found->kind, one.kind) << one.id;
        EXPECT_STREQ(found->text, one.text) << one.id;
    }
}

}  // namespace kalmora
