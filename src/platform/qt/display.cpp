#include "platform/qt/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>
#include <cstring>
#include <string>

#include "platform/files.h"

namespace kalmora::qt {

namespace {

constexpr char kPlatform[] = "QT_QPA_PLATFORM";

bool IsXServerReachable() {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isReachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isReachable;
}

bool IsWaylandReachable() {
    std::string socketPath = files::Environment("WAYLAND_DISPLAY");
    if (socketPath.empty()) return false;
    if (!socketPath.starts_with('/'))
        socketPath = files::Join(files::Environment("XDG_RUNTIME_DIR"), socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size());
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0) return false;
    const bool isReachable =
        connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(handle);
    // A separate package of the toolkit, which this machine need not have.
    const QDir plugins(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QLatin1String("/platforms"));
    return isReachable && !plugins.entryList({QLatin1String("*wayland*")}, QDir::Files).isEmpty();
}

}  // namespace

bool PreparePlatform(Application::Display display) {
    const std::string chosen = files::Environment(kPlatform);
    if (display == Application::Display::None) {
        if (chosen.empty()) qputenv(kPlatform, "offscreen");
        return true;
    }
    if (!chosen.empty()) {
        if (chosen.starts_with("xcb")) return IsXServerReachable();
        if (chosen.starts_with("wayland")) return IsWaylandReachable();
        return true;
    }
    // The X server first, also where it is the guest of another one: hot keys and the cursor's place over
    // other programs' windows are to be had there only.
    if (!files::Environment("DISPLAY").empty() && IsXServerReachable()) {
        qputenv(kPlatform, "xcb");
        return true;
    }
    if (!IsWaylandReachable()) return false;
    qputenv(kPlatform, "wayland");
    return true;
}

}  // namespace kalmora::qt
