#include "platform/qt/display.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/qt/xcb_reply.h"

namespace kalmora::qt {

namespace {

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
    const std::string chosen = files::Environment(kPlatformVariable);
    if (display == Application::Display::None) {
        if (chosen.empty()) qputenv(kPlatformVariable, "offscreen");
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
        qputenv(kPlatformVariable, "xcb");
        return true;
    }
    if (!IsWaylandReachable()) return false;
    qputenv(kPlatformVariable, "wayland");
    return true;
}

bool IsWindowManagerThere() {
    const auto* x11 =
        qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) return true;
    xcb_connection_t* connection = x11->connection();
    if (connection == nullptr) return false;  // the platform without a display answers too, and has no server
    // A window manager leaves this mark on the root window.
    constexpr std::string_view kMark = "_NET_SUPPORTING_WM_CHECK";
    const Reply<xcb_intern_atom_reply_t> mark(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(kMark.size()), kMark.data()),
        nullptr));
    if (!mark || mark->atom == XCB_ATOM_NONE) return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const Reply<xcb_get_property_reply_t> answer(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, root, mark->atom, XCB_ATOM_WINDOW, 0, 1), nullptr));
    if (!answer || xcb_get_property_value_length(answer.get()) < static_cast<int>(sizeof(xcb_window_t)))
        return false;
    // One that has gone leaves the mark behind, but not the window that it names.
    xcb_window_t named = XCB_WINDOW_NONE;
    std::memcpy(&named, xcb_get_property_value(answer.get()), sizeof named);
    const Reply<xcb_get_window_attributes_reply_t> window(
        xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, named), nullptr));
    return window != nullptr;
}

bool HasTrayOwner() {
    const auto* x11 =
        qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = x11 == nullptr ? nullptr : x11->connection();
    if (connection == nullptr) return false;
    constexpr std::string_view kTray = "_NET_SYSTEM_TRAY_S0";
    const Reply<xcb_intern_atom_reply_t> tray(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(kTray.size()), kTray.data()),
        nullptr));
    if (!tray || tray->atom == XCB_ATOM_NONE) return false;
    const Reply<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, tray->atom), nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

}  // namespace kalmora::qt
