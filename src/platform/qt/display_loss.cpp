#include "platform/qt/display_loss.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdio>

#include "base/log.h"
#include "platform/qt/values.h"

namespace kalmora::qt {

namespace {

// Only the GUI thread runs a message loop, so only there can it be set.
thread_local bool isLoopRunning = false;

bool IsDisplayBroken() {
    const auto* x11 =
        qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr && x11->connection() != nullptr && xcb_connection_has_error(x11->connection()) != 0;
}

void OnMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    const std::string text = FromQt(message);
    Log("[Toolkit] %s", text.c_str());
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", text.c_str());
    if (isLoopRunning && IsDisplayBroken()) {
        isLoopRunning = false;
        throw DisplayLost{};
    }
}

}  // namespace

DisplayLossScope::DisplayLossScope() { isLoopRunning = true; }

DisplayLossScope::~DisplayLossScope() { isLoopRunning = false; }

void WatchMessages() { qInstallMessageHandler(OnMessage); }

}  // namespace kalmora::qt
