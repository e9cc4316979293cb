#include "store/resources.h"

#include "platform/files.h"
#include "state/app_state.h"

namespace kalmora {

std::string FindResource(std::string_view name) {
    const std::string& home = State().settings.ProgramFolder;
    std::string relative(name);
    if (files::IsAbsolute(name)) {
        const std::string head = home + files::kSeparator;
        if (home.empty() || head.size() >= name.size() || !name.starts_with(head)) return relative;
        relative = relative.substr(head.size());
    }
    relative = files::WithPlatformSeparators(relative);
    std::string inHome = files::Join(home, relative);
    if (files::Exists(inHome)) return inHome;
    std::string installed = files::Join(State().settings.InstallFolder, relative);
    return !State().settings.InstallFolder.empty() && files::Exists(installed) ? installed : inHome;
}

}  // namespace kalmora
