#include "app/environment.h"

#include <algorithm>
#include <cstdio>

#include "base/dates.h"
#include "base/log.h"
#include "media/preview_reader.h"
#include "pictures/picture_cache.h"
#include "platform/files.h"
#include "platform/image.h"
#include "state/app_state.h"
#include "state/view_settings.h"
#include "store/data_folder.h"
#include "store/extension_table.h"
#include "store/own_text.h"
#include "store/settings_file.h"
#include "text/text.h"

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

constexpr char kSettingsName[] = "kalmora.ini";
constexpr char kExtensionsName[] = "extension.dat";
constexpr std::size_t kMostRead = 4u << 20;

bool IsBelowAFolder(const std::string& path) { return files::IsFolder(FolderOfPath(path)); }

// Nothing when the option was not given or names a folder that the program may use.
std::string FaultOfOptions(const StartOptions& options) {
    if (!options.data.empty() && !files::IsFolder(Absolute(options.data)))
        return "--data " + options.data + ": no such folder";
    if (options.home.empty()) return {};
    // A new home is made, but only where there is a place for it: a disk that is away is no place.
    const std::string home = Absolute(options.home);
    if (files::IsFolder(home) || (!files::Exists(home) && IsBelowAFolder(home))) return {};
    return "--home " + options.home + ": no such folder";
}

// One that names none, such as an empty one, means the folder "files" in the home.
bool NamesDataFolder(const std::string& settingsPath) {
    const OwnText settings = ReadOwnText(settingsPath, kMostRead);
    return text::FindNoCase(settings.bytes, "DataDirectory=") != std::string_view::npos;
}

// A settings file can name any period and size; the views know only those that make sense.
void BringIntoRange() {
    AppState& state = State();
    Settings& settings = state.settings;
    settings.TargetYear = std::clamp(settings.TargetYear, 1, 9999);
    settings.TargetMonth = std::clamp(settings.TargetMonth, 1, 12);
    settings.TargetDay =
        std::clamp(settings.TargetDay, 1, DaysInMonth(settings.TargetYear, settings.TargetMonth));
    TakeViewFromSettings();
    state.settings.ThumbnailMaxSize =
        std::clamp(state.settings.ThumbnailMaxSize.load(), 0, kLargestThumbnail);
}

}  // namespace

std::string HomeFolder(const StartOptions& options) {
    if (!options.home.empty()) return Absolute(options.home);
    if (const std::string home = files::Environment("KALMORA_HOME"); !home.empty()) return Absolute(home);
    const std::string own = files::ExecutableFolder();
    return files::Exists(files::Join(own, kSettingsName)) ? own : files::UserDataFolder();
}

Obstacle FindObstacle(const StartOptions& options) {
    if (std::string fault = FaultOfOptions(options); !fault.empty())
        return {Obstacle::Kind::Option, std::move(fault)};
    const std::string home = HomeFolder(options);
    for (const char* const name : {kSettingsName, kExtensionsName}) {
        const std::string path = files::Join(home, name);
        if (ReadOwnText(path, kMostRead).result == FileRead::Unreadable)
            return {Obstacle::Kind::File, path + ": cannot be read; it stays as it is"};
    }
    return {};
}

std::string InstalledFolder() {
    const std::string own = files::ExecutableFolder();
    if (files::IsFolder(files::Join(own, "Res"))) return own;
    return files::Join(files::Join(FolderOfPath(own), "share"), "kalmora");
}

void PrepareFolders(const StartOptions& options) {
    AppState& state = State();
    const std::string log = options.log.empty() ? files::Environment("KALMORA_LOG") : options.log;
    if (!log.empty()) OpenLog(log);
    state.settings.ProgramFolder = HomeFolder(options);
    state.settings.InstallFolder = InstalledFolder();
    MakeDirectories(state.settings.ProgramFolder);
    const auto inHome = [&](const char* name) { return files::Join(state.settings.ProgramFolder, name); };
    state.settings.SettingsPath = inHome(kSettingsName);
    state.settings.ExtensionListPath = inHome(kExtensionsName);
    state.settings.KeyConfigPath = inHome("KeyConfig.dat");
    state.settings.KeyConfigSlideShowPath = inHome("KeyConfig4SS.dat");
    state.settings.KeyConfigEditorPath = inHome("KeyConfig4Editor.dat");
    state.settings.TempFolder = inHome("Temp");
    state.settings.LogDataPath = inHome("log.dat");
}

bool LoadEnvironment(const StartOptions& options) {
    AppState& state = State();
    if (!options.data.empty()) state.settings.RunDataDirectory = Absolute(options.data);
    const bool hadDataFolder = files::IsFolder(files::Join(state.settings.ProgramFolder, "files"));
    const bool existed = LoadSettings(state.settings.SettingsPath) != FileRead::Missing;
    if (existed && !hadDataFolder && options.data.empty() && !NamesDataFolder(state.settings.SettingsPath))
        MakeDirectories(MainRoot());
    if (!existed && !hadDataFolder && files::IsFolder(MainRoot()) && options.data.empty())
        std::fprintf(stderr, "kalmora: first start; the data folder is %s\n", MainRoot().c_str());
    BringIntoRange();
    state.settings.DataDirectoryText = MainRoot();
    if (state.settings.UseOtherFolder) state.settings.OtherDirectoryText = state.settings.OtherDirectory;
    LoadExtensionTable(state.settings.ExtensionListPath);
    return existed;
}

void ConnectRooms() { Pictures().UsePreviews(&ExifPreviews()); }

}  // namespace kalmora
