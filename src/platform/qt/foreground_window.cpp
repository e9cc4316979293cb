#include "platform/foreground_window.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QMargins>
#include <QRect>
#include <QString>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/qt/xcb_reply.h"

namespace kalmora {

namespace {

// Texts past this are cut: no window has a title of thousands of letters.
constexpr std::uint32_t kMostWords = 1024;

// Without the character at the end that a cut has left a part of.
std::string WithoutHalfCharacter(std::string utf8) {
    for (std::size_t back = 1; back <= 3 && back <= utf8.size(); ++back) {
        const auto byte = static_cast<unsigned char>(utf8[utf8.size() - back]);
        if ((byte & 0xC0u) == 0x80u) continue;  // not its first
        const std::size_t length = byte >= 0xF0u ? 4 : byte >= 0xE0u ? 3 : byte >= 0xC0u ? 2 : 1;
        if (length > back) utf8.resize(utf8.size() - back);
        break;
    }
    return utf8;
}

class XServer {
public:
    explicit XServer(xcb_connection_t* connection)
        : connection_(connection), root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root) {}

    xcb_window_t Root() const { return root_; }

    xcb_atom_t Atom(std::string_view name) const {
        const qt::Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 1, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
        return atom ? atom->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    struct Value {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::string bytes;
    };
    // Empty when the window has no such property.
    Value Property(xcb_window_t window, xcb_atom_t name) const {
        if (name == XCB_ATOM_NONE) return {};
        const qt::Reply<xcb_get_property_reply_t> answer(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords),
            nullptr));
        if (!answer) return {};
        return {answer->type,
                {static_cast<const char*>(xcb_get_property_value(answer.get())),
                 static_cast<std::size_t>(xcb_get_property_value_length(answer.get()))}};
    }

    // As UTF-8, of whole characters. Empty for a property that is no text, or one in an encoding of its own
    // (COMPOUND_TEXT): programs of today set another beside it.
    std::string Text(xcb_window_t window, xcb_atom_t name) const {
        const Value value = Property(window, name);
        if (value.type == XCB_ATOM_STRING)  // Latin-1
            return QString::fromLatin1(value.bytes.data(), static_cast<qsizetype>(value.bytes.size()))
                .toStdString();
        if (value.type == XCB_ATOM_NONE || value.type != Atom("UTF8_STRING")) return {};
        return WithoutHalfCharacter(value.bytes);
    }

    // The window without its frame, in the server's pixels.
    std::optional<QRect> Client(xcb_window_t window) const {
        const qt::Reply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
        const qt::Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
            connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), nullptr));
        if (!size || !place) return std::nullopt;
        return QRect(place->dst_x, place->dst_y, size->width, size->height);
    }

private:
    xcb_connection_t* const connection_;
    const xcb_window_t root_;
};

template <typename Value>
Value NumberAt(const std::string& bytes, std::size_t index) {
    Value value{};
    if (bytes.size() >= (index + 1) * sizeof value)
        std::memcpy(&value, bytes.data() + index * sizeof value, sizeof value);
    return value;
}

std::string TitleOf(const XServer& server, xcb_window_t window) {
    std::string title = server.Text(window, server.Atom("_NET_WM_NAME"));
    return title.empty() ? server.Text(window, XCB_ATOM_WM_NAME) : title;
}

// The property has two texts, each with a zero byte behind it: the program's and the class.
std::string ClassOf(const XServer& server, xcb_window_t window) {
    const std::string both = server.Text(window, XCB_ATOM_WM_CLASS);
    const std::size_t first = both.find('\0');
    if (first == std::string::npos) return both;
    return both.substr(first + 1, both.find('\0', first + 1) - first - 1);
}

// Left, right, top and bottom of the window manager's frame, in the server's pixels.
QMargins FrameOf(const XServer& server, xcb_window_t window) {
    const std::string sides = server.Property(window, server.Atom("_NET_FRAME_EXTENTS")).bytes;
    const auto side = [&](std::size_t index) {
        return static_cast<int>(NumberAt<std::uint32_t>(sides, index));
    };
    return {side(0), side(2), side(1), side(3)};
}

}  // namespace

std::optional<ForegroundWindow> FindForegroundWindow() {
    const auto* x11 =
        qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // The platform without a display answers too, and has no server.
    if (x11 == nullptr || x11->connection() == nullptr) return std::nullopt;
    const XServer server(x11->connection());
    const auto window =
        NumberAt<xcb_window_t>(server.Property(server.Root(), server.Atom("_NET_ACTIVE_WINDOW")).bytes, 0);
    if (window == XCB_WINDOW_NONE) return std::nullopt;
    const std::optional<QRect> client = server.Client(window);
    if (!client) return std::nullopt;  // it has gone since
    const QRect outer = client->marginsAdded(FrameOf(server, window));
    const double scale = qGuiApp->devicePixelRatio();
    const auto logical = [scale](int pixels) { return static_cast<int>(pixels / scale); };
    return ForegroundWindow{
        TitleOf(server, window), ClassOf(server, window),
        Rect{logical(outer.x()), logical(outer.y()), logical(outer.width()), logical(outer.height())}};
}

}  // namespace kalmora
