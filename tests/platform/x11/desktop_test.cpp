#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foreground_window.h"
#include "platform/screens.h"
#include "platform/window.h"

namespace kalmora {
namespace {

constexpr Color kRed{255, 0, 0}, kBlue{0, 0, 255}, kBlack{0, 0, 0};

// Serves events until the condition holds; false when it does not within twenty seconds.
bool ServeUntil(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        TheApplication()->ProcessEvents(10);
    }
    return true;
}

// A window of one colour.
std::unique_ptr<Window> CreateColored(Color color, WindowOptions options) {
    return Window::Create(options, [color](Window& window, const Event& event) {
        if (event.type != EventType::Paint) return false;
        const Size size = window.ClientSize();
        window.Draw()->FillRect(Rect{0, 0, size.width, size.height}, color);
        return true;
    });
}

WindowOptions Tool(Rect frame) {
    WindowOptions options;
    options.frame = frame;
    options.style = WindowStyle::FramelessTool;
    return options;
}

Color SeenAt(Point at) { return GrabScreen(Rect{at.x, at.y, 1, 1}).PixelAt(0, 0); }

bool IsInFront(const std::string& title) {
    const auto window = FindForegroundWindow();
    return window && window->title == title;
}

class DesktopTest : public testing::Test {
protected:
    DesktopTest() {
        WindowOptions options;
        options.title = "Main 写真";
        options.frame = Rect{200, 150, 400, 300};
        main_ = CreateColored(kRed, options);
        main_->Show();
        main_->Activate();
        // Until its frame is where it was wanted, the window manager still moves it.
        EXPECT_TRUE(ServeUntil([this] {
            const auto window = FindForegroundWindow();
            return window && window->title == "Main 写真" && window->frame == main_->NormalFrame();
        }));
        EXPECT_TRUE(ServeUntil([this] { return SeenAt(main_->ToScreen({200, 200})) == kRed; }));
    }

    std::unique_ptr<Window> main_;
};

TEST_F(DesktopTest, ForegroundWindowHasItsTitleItsClassAndItsFrame) {
    EXPECT_TRUE(ServeUntil([this] {
        const auto window = FindForegroundWindow();
        return window && window->frame == main_->NormalFrame();
    }));
    EXPECT_EQ(FindForegroundWindow()->windowClass, "Kalmora");
    EXPECT_GT(FindForegroundWindow()->frame.height, main_->ClientSize().height) << "the frame counts";
}

// A window of a program that knows the server alone, and sets the oldest of the properties for its title.
class PlainWindow {
public:
    PlainWindow(const char* typeOfTitle, std::string_view title) {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        window_ = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 600, 400, 120, 90, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        Set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string_view("plain\0Caf\xE9\0", 11));
        Set(XCB_ATOM_WM_NAME, Atom(typeOfTitle), title);
        xcb_map_window(connection_, window_);
        // As a program does that is asked for by the user.
        xcb_client_message_event_t wish{};
        wish.response_type = XCB_CLIENT_MESSAGE;
        wish.format = 32;
        wish.window = window_;
        wish.type = Atom("_NET_ACTIVE_WINDOW");
        wish.data.data32[0] = 2;
        xcb_send_event(connection_, 0, screen->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&wish));
        xcb_flush(connection_);
    }
    ~PlainWindow() { xcb_disconnect(connection_); }
    PlainWindow(const PlainWindow&) = delete;
    PlainWindow& operator=(const PlainWindow&) = delete;

private:
    xcb_atom_t Atom(std::string_view name) const {
        xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
            connection_,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr);
        const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return atom;
    }
    void Set(xcb_atom_t property, xcb_atom_t type, std::string_view bytes) const {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.data());
    }

    xcb_connection_t* const connection_ = xcb_connect(nullptr, nullptr);
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

TEST_F(DesktopTest, TitleOfAnOldProgramIsLatin1) {
    const PlainWindow old("STRING", "caf\xE9");
    EXPECT_TRUE(ServeUntil([] { return IsInFront("café"); }));
    EXPECT_EQ(FindForegroundWindow()->windowClass, "Café");
}

TEST_F(DesktopTest, TitleInAnEncodingOfItsOwnIsEmpty) {
    const PlainWindow old("COMPOUND_TEXT", "\x1B$(B<L\x1B(B");
    EXPECT_TRUE(ServeUntil([] { return IsInFront(""); }));
}

TEST_F(DesktopTest, LongTitleIsCutAtAWholeCharacter) {
    std::string title = "ab";
    for (int i = 0; i < 2000; ++i) title += "写";
    main_->SetTitle(title);
    EXPECT_TRUE(ServeUntil([&] {
        const auto window = FindForegroundWindow();
        return window && window->title.starts_with("ab") && window->title == title.substr(0, 2 + 3 * 1364);
    }));
}

TEST_F(DesktopTest, GrabbedIsWhatTheScreenShows) {
    const auto cover = CreateColored(kBlue, Tool(Rect{300, 250, 50, 40}));
    cover->ShowWithoutFocus();
    ASSERT_TRUE(ServeUntil([] { return SeenAt({320, 270}) == kBlue; }));
    const Image image = GrabScreen(Rect{290, 240, 70, 60});
    EXPECT_EQ(image.GetSize(), (Size{70, 60}));
    EXPECT_EQ(image.PixelAt(0, 0), kRed);
    EXPECT_EQ(image.PixelAt(10, 10), kBlue);
    EXPECT_EQ(image.PixelAt(59, 49), kBlue);
    EXPECT_EQ(image.PixelAt(60, 50), kRed);
}

TEST_F(DesktopTest, BesideTheScreenIsBlack) {
    const Rect desktop = DesktopArea();
    const Image image = GrabScreen(Rect{desktop.Right() - 10, 100, 30, 20});
    EXPECT_EQ(image.GetSize(), (Size{30, 20}));
    EXPECT_EQ(image.PixelAt(29, 19), kBlack);
}

TEST_F(DesktopTest, AWindowThatIsShownWithoutFocusLeavesItWhereItWas) {
    WindowOptions options;
    options.title = "Other";
    options.frame = Rect{650, 500, 200, 100};
    const auto other = CreateColored(kBlue, options);
    other->ShowWithoutFocus();
    ASSERT_TRUE(ServeUntil([&] { return SeenAt(other->ToScreen({100, 40})) == kBlue; }));
    EXPECT_TRUE(IsInFront("Main 写真"));
    other->Activate();
    EXPECT_TRUE(ServeUntil([] { return IsInFront("Other"); }));
}

TEST_F(DesktopTest, ATopmostWindowStaysInFront) {
    WindowOptions options;
    options.title = "Top";
    options.frame = Rect{300, 250, 150, 100};
    const auto top = CreateColored(kBlue, options);
    top->Show();
    top->SetLayer(WindowLayer::Topmost);
    ASSERT_TRUE(ServeUntil([&] { return SeenAt(top->ToScreen({75, 50})) == kBlue; }));
    main_->Activate();
    ASSERT_TRUE(ServeUntil([] { return IsInFront("Main 写真"); }));
    EXPECT_EQ(SeenAt(top->ToScreen({75, 50})), kBlue);
    top->SetLayer(WindowLayer::Ordinary);
    main_->Activate();
    EXPECT_TRUE(ServeUntil([&] {
        main_->Activate();
        return SeenAt(top->ToScreen({75, 50})) == kRed;
    }));
}

TEST_F(DesktopTest, AnOwnedToolStaysInFrontOfItsOwnerAndMovesWithIt) {
    WindowOptions options = Tool(Rect{300, 250, 50, 40});
    options.owner = main_.get();
    options.ownerMoves = OwnerMoves::Followed;
    options.focus = WindowFocus::Refuses;
    const auto tool = CreateColored(kBlue, options);
    tool->Show();
    main_->Activate();
    ASSERT_TRUE(ServeUntil([] { return SeenAt({320, 270}) == kBlue && IsInFront("Main 写真"); }));
    const Rect frame = main_->NormalFrame();
    main_->SetFrame(Rect{frame.x + 100, frame.y + 60, frame.width, frame.height});
    EXPECT_TRUE(ServeUntil([] { return SeenAt({420, 330}) == kBlue && SeenAt({320, 270}) == kRed; }));
}

}  // namespace
}  // namespace kalmora
