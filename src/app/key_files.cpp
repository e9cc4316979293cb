#include "app/key_files.h"

#include <string>

#include "platform/window.h"
#include "state/app_state.h"
#include "views/model/calendar_store.h"

namespace kalmora {

namespace {

struct KeyFile {
    KeyContext context;
    std::string Settings::*path;
};

// In the order in which they are read and written.
constexpr KeyFile kKeyFiles[] = {
    {KeyContext::Main, &Settings::KeyConfigPath},
    {KeyContext::SlideShow, &Settings::KeyConfigSlideShowPath},
    {KeyContext::Editor, &Settings::KeyConfigEditorPath},
};

// Inside the loop, as soon as it runs: the start does not wait for an answer.
void ReportUnreadable(const std::string& path) {
    const std::string words =
        path + "\n" +
        (State().settings.UseJapanese
             ? "このファイルを読み込めないため，既定のキーを使います．ファイルは変更しません．"
             : "This file cannot be read. The default keys are in force, and it stays as it is.");
    if (Application* const application = TheApplication())
        application->Post([words] { ShowMessage(MainWindow(), "Kalmora", words, MessageButtons::Ok); });
}

}  // namespace

void LoadKeyFiles(KeyConfig& keys) {
    for (const KeyFile& file : kKeyFiles)
        if (keys.LoadKeyConfig(State().settings.*file.path, file.context) == FileRead::Unreadable)
            ReportUnreadable(State().settings.*file.path);
}

void SaveKeyFiles(const KeyConfig& keys) {
    for (const KeyFile& file : kKeyFiles) keys.SaveKeyConfig(State().settings.*file.path, file.context);
}

}  // namespace kalmora
