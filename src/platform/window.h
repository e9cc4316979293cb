// Windows, their events, timers and the message loop.
//
// The GUI thread is the one that made the Application. Windows are made, shown and closed on it; Draw, Post
// and the read-only questions may be asked from any thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "platform/canvas.h"

namespace kalmora {

enum class EventType {
    Create,   // the window exists, nothing is shown yet
    Destroy,  // the window is about to go
    Close,    // the user or the session wants it closed; answer true to keep it open
    Paint,    // the back buffer has a new size or was invalidated: draw everything
    Resize,
    Minimize,  // the user minimises it; answer true when that was dealt with (it then stays as it is)
    Restore,   // the user brings it back after it has been minimised
    MouseMove,
    LeftDown,
    LeftUp,
    LeftDoubleClick,
    RightDown,
    RightUp,
    RightDoubleClick,
    Wheel,
    Key,        // a key press that no accelerator took
    Character,  // text of a key press or an input method; empty when an input method begins to compose
    Command,    // an accelerator or SendCommand: `command`
    Timer,      // `timer`
    Drop,       // files dropped: `paths`, at `point`
};

struct Event {
    EventType type;
    Point point = {};  // client coordinates
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    bool leftButton = false;  // held down while the event happened
    int wheel = 0;            // steps; above 0 is away from the user
    int key = 0;              // Key: one of the codes of keys.h
    int command = 0;
    int timer = 0;
    std::string text = {};                // Character
    std::vector<std::string> paths = {};  // Drop
};

class Window;
// True when the event was used up; false lets the platform do its usual.
using WindowProcedure = std::function<bool(Window&, const Event&)>;

// What is said about the place on which the cursor rests, and the area for which that holds (client
// coordinates).
struct Tip {
    std::string text;  // empty: nothing
    Rect area;
};

enum class WindowStyle {
    Ordinary,       // framed, in the task bar, may be minimised and maximised
    FramelessTool,  // nothing but its drawing area, in no task bar
    ResizableTool,  // framed, in no task bar
};

// Whether a click on the window or showing it gives it the keys.
enum class WindowFocus { Takes, Refuses };

enum class OwnerMoves {
    Ignored,
    Followed,  // the window moves with its owner, as far as that moves
};

struct WindowOptions {
    std::string title;
    Rect frame;  // outer rectangle on the screen, logical pixels
    bool acceptDrops = false;
    std::string iconPath;
    WindowStyle style = WindowStyle::Ordinary;
    WindowFocus focus = WindowFocus::Takes;
    // The window stays in front of its owner and is minimised with it. It must not be shown any more once its
    // owner has gone, but may be destroyed later. Null for none.
    Window* owner = nullptr;
    OwnerMoves ownerMoves = OwnerMoves::Ignored;
    // The user cannot make the drawing area smaller, nor does a frame.
    Size leastClient = {};
};

enum class WindowLayer {
    Ordinary,
    Topmost,  // in front of all ordinary windows of all programs
};

class Window {
public:
    static std::unique_ptr<Window> Create(const WindowOptions& options, WindowProcedure procedure);
    virtual ~Window() = default;

    // A canvas on the back buffer, under the window's lock; presented when it goes. Null once the window is
    // closed. Any thread.
    virtual std::unique_ptr<Canvas> Draw() = 0;
    virtual Size ClientSize() const = 0;  // of the back buffer; any thread
    virtual double Scale() const = 0;     // any thread
    // A copy of the back buffer. Any thread.
    virtual std::unique_ptr<Surface> Snapshot() const = 0;

    virtual void SetTitle(const std::string& title) = 0;  // any thread
    virtual std::string Title() const = 0;                // any thread
    virtual void Show() = 0;
    // As Show; the window that has the focus keeps it.
    virtual void ShowWithoutFocus() = 0;
    virtual void Hide() = 0;
    // As the user would (a Minimize event follows); nothing where no window manager could bring it back. GUI
    // thread.
    virtual void Minimize() = 0;
    virtual void Activate() = 0;           // to the front, with the focus
    virtual bool IsVisible() const = 0;    // any thread
    virtual Rect NormalFrame() const = 0;  // the outer rectangle when neither minimised nor maximised
    virtual void SetFrame(const Rect& outer) = 0;
    // From 0, not to be seen, to 1, the opacity at the start. Where the desktop does not mix windows it stays
    // 1 for the eye. Soon; any thread.
    virtual void SetOpacity(double opacity) = 0;
    virtual void SetLayer(WindowLayer layer) = 0;  // at once, shown or hidden
    // Between the screen and the window's drawing area. Any thread.
    virtual Point ToClient(Point screen) const = 0;
    virtual Point ToScreen(Point client) const = 0;
    // A Paint event follows, once; for a hidden window as soon as it is shown. Any thread.
    virtual void Invalidate() = 0;
    // Asked whenever the cursor rests over the window. GUI thread.
    virtual void SetTips(std::function<Tip(Point client)> tipAt) = 0;
    virtual void Close() = 0;                           // Destroy follows, then the window is gone
    virtual void StartTimer(int id, int periodMs) = 0;  // again restarts it
    virtual void StopTimer(int id) = 0;
    virtual void SendCommand(int command) = 0;  // a Command event, soon, on the GUI thread; any thread
};

// The connection to the desktop and the one message loop.
class Application {
public:
    enum class Display {
        Desktop,  // the user's display
        None,     // drawing works, nothing is shown: for the command line and for servers
    };
    // Empty when there is no display to be had.
    static std::unique_ptr<Application> Create(const std::string& name, Display display, double scale = 0);
    virtual ~Application() = default;
    // Runs until Quit; gives Quit's code. The display going away ends it as if the window had been closed.
    virtual int Run() = 0;
    virtual void Quit(int code) = 0;  // any thread
    // Runs the function on the GUI thread, soon, in the order of the calls. Any thread.
    virtual void Post(std::function<void()> work) = 0;
    virtual bool IsGuiThread() const = 0;
    // Serves waiting events for at most the time; for tests and for `shot`.
    virtual void ProcessEvents(int milliseconds) = 0;
};
Application* TheApplication();

// Looks at a key press (a Key event) in whichever of the program's windows has the focus, before that window
// does, and answers with the command that it means or 0. Not asked while a modal question or a menu is
// open.
using AcceleratorHook = std::function<int(const Event&)>;
// A command goes to `target` at once, as a Command event; where that answers false, the key is passed on to
// the window that has the focus. An empty hook or a null target ends it, as does the end of the target. GUI
// thread.
void SetAccelerators(Window* target, AcceleratorHook hook);

Point CursorPosition();  // on the screen; GUI thread or any other
bool IsLeftButtonDown();
bool IsControlDown();

enum class MessageButtons { Ok, YesNo };
enum class MessageAnswer { Ok, Yes, No };
// A modal question in front of the window (may be null). GUI thread.
MessageAnswer ShowMessage(Window* owner, const std::string& title, const std::string& message,
                          MessageButtons buttons);
// A folder chosen by the user; empty when none was.
std::optional<std::string> ChooseFolder(Window* owner, const std::string& title, const std::string& start);

}  // namespace kalmora
