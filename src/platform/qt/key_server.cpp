#include "platform/qt/key_server.h"

// The keyboard library's header uses a C++ keyword as a name.
#define explicit explicit_
#include <xcb/xcb_keysyms.h>
#undef explicit
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "base/log.h"
#include "platform/keys.h"
#include "platform/qt/gui_queue.h"
#include "platform/qt/key_codes.h"
#include "platform/qt/xcb_reply.h"

namespace kalmora::qt {

namespace {

constexpr std::uint16_t kNumLock = XCB_MOD_MASK_2;
constexpr std::uint16_t kAltMask = XCB_MOD_MASK_1;
// A grab names the state of every modifier, the locks among them.
constexpr std::array<std::uint16_t, 4> kLockStates = {0, XCB_MOD_MASK_LOCK, kNumLock,
                                                      XCB_MOD_MASK_LOCK | kNumLock};
constexpr std::uint16_t kChosen = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | kAltMask;

constexpr xcb_keysym_t kRightOf = 1;  // the right one of two modifier keys follows the left one
struct NamedSymbol {
    int key;
    xcb_keysym_t symbol;
};
// The symbols of the X protocol.
constexpr NamedSymbol kSymbols[] = {
    {keys::kShift, 0xFFE1},  {keys::kControl, 0xFFE3},   {keys::kAlt, 0xFFE9},     {keys::kPause, 0xFF13},
    {keys::kEscape, 0xFF1B}, {keys::kSpace, 0x0020},     {keys::kEnd, 0xFF57},     {keys::kHome, 0xFF50},
    {keys::kLeft, 0xFF51},   {keys::kUp, 0xFF52},        {keys::kRight, 0xFF53},   {keys::kDown, 0xFF54},
    {keys::kEnter, 0xFF0D},  {keys::kTab, 0xFF09},       {keys::kInsert, 0xFF63},  {keys::kDelete, 0xFFFF},
    {keys::kPageUp, 0xFF55}, {keys::kBackspace, 0xFF08}, {keys::kPageDown, 0xFF56}};
constexpr xcb_keysym_t kSymbolF1 = 0xFFBE;

bool IsModifier(int key) { return key == keys::kShift || key == keys::kControl || key == keys::kAlt; }

xcb_keysym_t SymbolOf(int key) {
    if (key >= 'A' && key <= 'Z') return static_cast<xcb_keysym_t>(key - 'A' + 'a');
    if (key >= '0' && key <= '9') return static_cast<xcb_keysym_t>(key);
    if (key >= keys::kF1 && key < keys::kF1 + 12)
        return kSymbolF1 + static_cast<xcb_keysym_t>(key - keys::kF1);
    for (const NamedSymbol& named : kSymbols)
        if (named.key == key) return named.symbol;
    return XCB_NO_SYMBOL;
}

std::uint16_t ModifiersOf(const KeyCombination& combination) {
    return static_cast<std::uint16_t>((combination.ctrl ? XCB_MOD_MASK_CONTROL : 0) |
                                      (combination.alt ? kAltMask : 0) |
                                      (combination.shift ? XCB_MOD_MASK_SHIFT : 0));
}

}  // namespace

KeyServer& KeyServer::Instance() {
    static auto* server = new KeyServer;
    return *server;
}

bool KeyServer::Connect() {
    if (connection_ != nullptr) return xcb_connection_has_error(connection_) == 0;
    if (qGuiApp == nullptr || QGuiApplication::platformName() != QLatin1String("xcb")) return false;
    int screen = 0;
    connection_ = xcb_connect(nullptr, &screen);
    if (xcb_connection_has_error(connection_) != 0) {
        Disconnect();
        return false;
    }
    xcb_screen_iterator_t found = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    while (screen-- > 0 && found.rem > 1) xcb_screen_next(&found);
    root_ = found.data->root;
    symbols_ = xcb_key_symbols_alloc(connection_);
    const xcb_query_extension_reply_t* test = xcb_get_extension_data(connection_, &xcb_test_id);
    canSend_ = test != nullptr && test->present != 0;
    notifier_ =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { Serve(); });
    return true;
}

void KeyServer::Disconnect() {
    notifier_.reset();
    if (symbols_ != nullptr) xcb_key_symbols_free(symbols_);
    if (connection_ != nullptr) xcb_disconnect(connection_);
    symbols_ = nullptr;
    connection_ = nullptr;
}

void KeyServer::Close() {
    bindings_.clear();
    Disconnect();
}

// The key whose plain symbol it is; where the keyboard writes with other letters, the key at that place.
std::uint8_t KeyServer::KeyCodeOf(int key) const {
    const xcb_keysym_t symbol = SymbolOf(key);
    if (symbol == XCB_NO_SYMBOL || symbols_ == nullptr) return 0;
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    constexpr std::array<int, 2> kPlainColumns = {0, 2};  // of the first and of the second group
    for (const int column : kPlainColumns)
        for (int code = setup->min_keycode; code <= setup->max_keycode; ++code)
            if (xcb_key_symbols_get_keysym(symbols_, static_cast<xcb_keycode_t>(code), column) == symbol)
                return static_cast<std::uint8_t>(code);
    return static_cast<std::uint8_t>(ScanCodeOf(key));
}

bool KeyServer::Grab(const Binding& binding) {
    bool isOurs = true;
    for (const std::uint16_t locks : kLockStates) {
        const auto cookie =
            xcb_grab_key_checked(connection_, 1, root_, ModifiersOf(binding.combination) | locks,
                                 binding.keyCode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Reply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
        isOurs = isOurs && !error && xcb_connection_has_error(connection_) == 0;
    }
    if (!isOurs) Ungrab(binding);
    // While an answer was waited for, presses may have been read off the line.
    ServeLater();
    return isOurs;
}

void KeyServer::Ungrab(const Binding& binding) {
    if (connection_ == nullptr || binding.keyCode == 0) return;
    for (const std::uint16_t locks : kLockStates)
        xcb_ungrab_key(connection_, binding.keyCode, root_, ModifiersOf(binding.combination) | locks);
    xcb_flush(connection_);
}

HotKeyResult KeyServer::Register(std::shared_ptr<QtWindow::Link> target, int id,
                                 const KeyCombination& combination) {
    Unregister(id);
    if (!Connect()) return HotKeyResult::NoDisplay;
    const Binding binding{id, combination, std::move(target), KeyCodeOf(combination.key)};
    if (binding.keyCode == 0) return HotKeyResult::NoSuchKey;
    // The server would hand a second grab of the same line over in silence.
    for (const Binding& other : bindings_)
        if (other.combination == combination) return HotKeyResult::Own;
    if (!Grab(binding)) return HotKeyResult::Taken;
    bindings_.push_back(binding);
    return HotKeyResult::Registered;
}

void KeyServer::Unregister(int id) {
    const auto found = std::find_if(bindings_.begin(), bindings_.end(),
                                    [id](const Binding& binding) { return binding.id == id; });
    if (found == bindings_.end()) return;
    Ungrab(*found);
    bindings_.erase(found);
}

bool KeyServer::Send(int key, KeyMotion motion) {
    if (!Connect() || !canSend_) return false;
    const auto send = [&](xcb_keycode_t code) {
        xcb_test_fake_input(connection_, motion == KeyMotion::Down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code,
                            XCB_CURRENT_TIME, root_, 0, 0, 0);
    };
    const std::uint8_t code = KeyCodeOf(key);
    if (code == 0) return false;
    send(code);
    if (IsModifier(key) && motion == KeyMotion::Up) {
        // It is not known which of the two is held: both go up.
        Reply<xcb_keycode_t> others(xcb_key_symbols_get_keycode(symbols_, SymbolOf(key) + kRightOf));
        for (const xcb_keycode_t* other = others.get(); other != nullptr && *other != 0; ++other)
            send(*other);
    }
    xcb_flush(connection_);
    return true;
}

void KeyServer::ServeLater() {
    GuiQueue::Instance().Post([this] { Serve(); });
}

void KeyServer::Serve() {
    while (connection_ != nullptr) {
        const Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
        if (!event) break;
        switch (event->response_type & 0x7F) {
            case XCB_KEY_PRESS:
                OnPress(reinterpret_cast<const xcb_key_press_event_t&>(*event));
                break;
            case XCB_KEY_RELEASE: {
                const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(*event);
                releasedKey_ = release.detail;
                releasedAt_ = release.time;
                break;
            }
            case XCB_MAPPING_NOTIFY:
                xcb_refresh_keyboard_mapping(symbols_,
                                             reinterpret_cast<xcb_mapping_notify_event_t*>(event.get()));
                OnKeyboardChanged();
                break;
            default:
                break;
        }
    }
    // A broken line is always readable: it would be looked at for ever.
    if (notifier_ && xcb_connection_has_error(connection_) != 0) notifier_->setEnabled(false);
}

void KeyServer::OnPress(const xcb_key_press_event_t& press) {
    if (press.detail == releasedKey_ && press.time == releasedAt_) return;
    const auto found = std::find_if(bindings_.begin(), bindings_.end(), [&press](const Binding& binding) {
        return binding.keyCode == press.detail && ModifiersOf(binding.combination) == (press.state & kChosen);
    });
    if (found == bindings_.end()) return;
    Event command{EventType::Command};
    command.command = found->id;
    const std::shared_ptr<QtWindow::Link> target = found->target;  // the command may change the list
    if (target->window != nullptr) target->window->Deliver(command);
}

void KeyServer::OnKeyboardChanged() {
    for (Binding& binding : bindings_) {
        const std::uint8_t now = KeyCodeOf(binding.combination.key);
        if (now == binding.keyCode) continue;
        Ungrab(binding);
        binding.keyCode = now;
        if (now != 0 && !Grab(binding))
            Log("[HotKey] %d is lost with the change of the keyboard", binding.id);
    }
}

}  // namespace kalmora::qt
