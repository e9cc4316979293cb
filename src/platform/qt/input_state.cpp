#include "platform/qt/input_state.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/qt/xcb_reply.h"

namespace kalmora::qt {

// A screen as the server sees it (device pixels) and as the program does.
struct ScreenPlace {
    QRect native;
    double scale = 1;
};

namespace {

Point ToLogical(const std::vector<ScreenPlace>& screens, QPoint native) {
    // A screen keeps its origin when it is scaled; the cursor is on one of them, at the edges on the nearest.
    for (const ScreenPlace& screen : screens) {
        if (!screen.native.contains(native)) continue;
        const QPointF inside = QPointF(native - screen.native.topLeft()) / screen.scale;
        return Point{screen.native.x() + static_cast<int>(std::floor(inside.x())),
                     screen.native.y() + static_cast<int>(std::floor(inside.y()))};
    }
    return Point{native.x(), native.y()};
}

}  // namespace

struct InputState::Members {
    std::mutex mutex;
    xcb_connection_t* connection = nullptr;  // guarded by mutex
    xcb_window_t root = 0;                   // guarded by mutex
    std::vector<ScreenPlace> screens;        // guarded by mutex
    Pointer lastSeen;                        // guarded by mutex
};

InputState::InputState() : members_(new Members) {}

InputState& InputState::Instance() {
    static auto* state = new InputState;
    return *state;
}

void InputState::Connect() {
    int screen = 0;
    xcb_connection_t* connection = xcb_connect(nullptr, &screen);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return;
    }
    xcb_screen_iterator_t found = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (screen-- > 0 && found.rem > 1) xcb_screen_next(&found);
    std::lock_guard lock(members_->mutex);
    members_->connection = connection;
    members_->root = found.data->root;
}

void InputState::ReadScreens() {
    std::vector<ScreenPlace> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const double scale = screen->devicePixelRatio();
        const QRect logical = screen->geometry();
        const QSize native(static_cast<int>(std::ceil(logical.width() * scale)),
                           static_cast<int>(std::ceil(logical.height() * scale)));
        screens.push_back(ScreenPlace{QRect(logical.topLeft(), native), scale});
    }
    std::lock_guard lock(members_->mutex);
    members_->screens = std::move(screens);
}

void InputState::Note(const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseMove:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: {
            const auto& mouse = static_cast<const QMouseEvent&>(event);
            const QPointF at = mouse.globalPosition();
            std::lock_guard lock(members_->mutex);
            members_->lastSeen.position =
                Point{static_cast<int>(std::floor(at.x())), static_cast<int>(std::floor(at.y()))};
            members_->lastSeen.leftButton = mouse.buttons().testFlag(Qt::LeftButton);
            members_->lastSeen.control = mouse.modifiers().testFlag(Qt::ControlModifier);
            break;
        }
        case QEvent::KeyPress:
        case QEvent::KeyRelease: {
            const auto& key = static_cast<const QKeyEvent&>(event);
            std::lock_guard lock(members_->mutex);
            // The modifiers of the Control key's own event are those from before it.
            members_->lastSeen.control = key.key() == Qt::Key_Control
                                             ? event.type() == QEvent::KeyPress
                                             : key.modifiers().testFlag(Qt::ControlModifier);
            break;
        }
        default:
            break;
    }
}

InputState::Pointer InputState::Now() {
    std::lock_guard lock(members_->mutex);
    Members& m = *members_;
    if (m.connection == nullptr || xcb_connection_has_error(m.connection)) return m.lastSeen;
    const std::unique_ptr<xcb_query_pointer_reply_t, FreeReply> reply(
        xcb_query_pointer_reply(m.connection, xcb_query_pointer(m.connection, m.root), nullptr));
    if (!reply) return m.lastSeen;
    m.lastSeen.position = ToLogical(m.screens, QPoint(reply->root_x, reply->root_y));
    m.lastSeen.leftButton = (reply->mask & XCB_BUTTON_MASK_1) != 0;
    m.lastSeen.control = (reply->mask & XCB_MOD_MASK_CONTROL) != 0;
    return m.lastSeen;
}

}  // namespace kalmora::qt
