#include "app/environment.h"

#include <algorithm>

#include "app/app_state.h"
#include "base/log.h"
#include "media/preview_reader.h"
#include "platform/files.h"
#include "platform/image.h"
#include "store/data_folder.h"
#include "store/dates.h"
#include "store/extension_table.h"
#include "store/settings.h"

namespace kalmora {

namespace {

constexpr int kLargestThumbnail = 10000;  // pixels

std::string WithoutTrailingSeparator(std::string path) {
    while (path.size() > 1 && path.back() == files::kSeparator) path.pop_back();
    return path;
}

std::string Absolute(const std::string& path) {
    return WithoutTrailingSeparator(files::IsAbsolute(path) ? path
                                                            : files::Join(files::CurrentFolder(), path));
}

// A settings file can name any period and size; the views know only those that make sense.
void BringIntoRange() {
    AppState& state = State();
    state.TargetYear = std::clamp(state.TargetYear.load(), 1, 9999);
    state.TargetMonth = std::clamp(state.TargetMonth.load(), 1, 12);
    state.TargetDay = std::clamp(state.TargetDay.load(), 1, DaysInMonth(state.TargetYear, state.TargetMonth));
    state.ThumbnailMaxSize = std::clamp(state.ThumbnailMaxSize.load(), 0, kLargestThumbnail);
    if (state.ViewType != kYearly && state.ViewType != kMonthly && state.ViewType != kDaily)
        state.ViewType = kMonthly;
}

}  // namespace

std::string HomeFolder(const StartOptions& options) {
    if (!options.home.empty()) return Absolute(options.home);
    if (const std::string home = files::Environment("KALMORA_HOME"); !home.empty()) return Absolute(home);
    const std::string own = files::ExecutableFolder();
    return files::IsFolderWritable(own) ? own : files::UserDataFolder();
}

std::string InstalledFolder() {
    const std::string own = files::ExecutableFolder();
    if (files::IsFolder(files::Join(own, "Res"))) return own;
    return files::Join(files::Join(own.substr(0, own.find_last_of(files::kSeparator)), "share"), "kalmora");
}

void PrepareFolders(const StartOptions& options) {
    AppState& state = State();
    const std::string log = options.log.empty() ? files::Environment("KALMORA_LOG") : options.log;
    if (!log.empty()) OpenLog(log);
    state.ProgramFolder = HomeFolder(options);
    state.InstallFolder = InstalledFolder();
    MakeDirectories(state.ProgramFolder);
    const auto inHome = [&](const char* name) { return files::Join(state.ProgramFolder, name); };
    state.SettingsPath = inHome("kalmora.ini");
    state.ExtensionListPath = inHome("extension.dat");
    state.KeyConfigPath = inHome("KeyConfig.dat");
    state.KeyConfigSlideShowPath = inHome("KeyConfig4SS.dat");
    state.KeyConfigEditorPath = inHome("KeyConfig4Editor.dat");
    state.TempFolder = inHome("Temp");
    state.LogDataPath = inHome("log.dat");
}

bool LoadEnvironment(const StartOptions& options) {
    AppState& state = State();
    const bool existed = LoadSettings(state.SettingsPath) != 0;
    if (!options.data.empty()) state.RunDataDirectory = Absolute(options.data);
    BringIntoRange();
    state.DataDirectoryText = MainRoot();
    if (state.UseOtherFolder) state.OtherDirectoryText = state.OtherDirectory;
    LoadExtensionTable(state.ExtensionListPath);
    return existed;
}

void ConnectRooms() { images::SetPreviewReader(&ReadEmbeddedPreview); }

}  // namespace kalmora
