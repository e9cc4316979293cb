// The program's own line to the X server for keys: grabs on the root window and made-up key strokes.
//
// A line of its own, because the toolkit listens to another extension on its line and hears neither of
// grabbed keys nor of a change of the keyboard in the plain way.
#pragma once

#include <QSocketNotifier>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/qt/window_qt.h"

struct xcb_connection_t;
struct xcb_key_press_event_t;
struct _XCBKeySymbols;

namespace kalmora::qt {

// GUI thread. Connects at the first use; closed by the Application before the toolkit goes.
class KeyServer {
public:
    static KeyServer& Instance();

    HotKeyResult Register(std::shared_ptr<QtWindow::Link> target, int id, const KeyCombination& combination);
    void Unregister(int id);
    bool Send(int key, KeyMotion motion);
    void Close();

private:
    struct Binding {
        int id;
        KeyCombination combination;
        std::shared_ptr<QtWindow::Link> target;
        std::uint8_t keyCode;  // of the X server, by the keyboard as it is now; 0 while there is no such key
    };

    bool Connect();
    void Disconnect();
    std::uint8_t KeyCodeOf(int key) const;
    bool Grab(const Binding& binding);
    void Ungrab(const Binding& binding);
    void Serve();
    void ServeLater();
    void OnPress(const xcb_key_press_event_t& press);
    void OnKeyboardChanged();

    xcb_connection_t* connection_ = nullptr;
    std::uint32_t root_ = 0;
    bool canSend_ = false;
    _XCBKeySymbols* symbols_ = nullptr;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::vector<Binding> bindings_;
    // The last key that went up, and when: a press at that very moment is the keyboard repeating.
    std::uint8_t releasedKey_ = 0;
    std::uint32_t releasedAt_ = 0;
};

}  // namespace kalmora::qt
