#include "platform/qt/window_qt.h"

#include <QApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QWindow>
#include <algorithm>
#include <vector>

#include "platform/qt/display.h"
#include "platform/qt/gui_queue.h"
#include "platform/qt/pixels.h"
#include "platform/qt/values.h"

namespace kalmora::qt {

namespace {

constexpr int kSettlingPeriodMs = 30;
constexpr int kMostSettlingTries = 20;
constexpr int kLargestFrame = 32767;

std::vector<QtWindow*>& Windows() {
    static std::vector<QtWindow*> windows;
    return windows;
}

QRect ToQtRect(const Rect& area) {
    return QRect(area.x, area.y, std::clamp(area.width, 1, kLargestFrame),
                 std::clamp(area.height, 1, kLargestFrame));
}

// What is left for drawing inside the frame: something, however small the frame. An empty window the toolkit
// would not show at all.
QRect ClientOf(const QRect& frame, const QMargins& margins) {
    const QRect client = frame.marginsRemoved(margins);
    return QRect(client.topLeft(), client.size().expandedTo(QSize(1, 1)));
}

Rect FromQtRect(const QRect& area) { return Rect{area.x(), area.y(), area.width(), area.height()}; }

std::uint64_t Pack(QPoint point) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(point.x())) << 32 |
           static_cast<std::uint32_t>(point.y());
}

Qt::WindowFlags FlagsOf(const WindowOptions& options) {
    Qt::WindowFlags flags = Qt::Window;
    if (options.style == WindowStyle::FramelessTool) flags = Qt::Tool | Qt::FramelessWindowHint;
    if (options.style == WindowStyle::ResizableTool) flags = Qt::Tool;
    if (options.focus == WindowFocus::Refuses) flags |= Qt::WindowDoesNotAcceptFocus;
    return flags;
}

Point Unpack(std::uint64_t packed) {
    return Point{static_cast<int>(static_cast<std::uint32_t>(packed >> 32)),
                 static_cast<int>(static_cast<std::uint32_t>(packed))};
}

}  // namespace

const std::vector<QtWindow*>& OpenWindows() { return Windows(); }

QWidget* WidgetOf(Window* window) {
    return window == nullptr ? nullptr : static_cast<QtWindow*>(window)->Widget();
}

QtWindow::QtWindow(std::shared_ptr<Link> link, QWidget* widget, const WindowOptions& options,
                   WindowProcedure procedure)
    : link_(std::move(link)),
      widget_(widget),
      procedure_(std::make_shared<WindowProcedure>(std::move(procedure))),
      buffer_(std::make_shared<BackBuffer>([link = link_] {
          GuiQueue::Instance().Post([link] {
              if (link->window != nullptr) link->window->Present();
          });
      })),
      title_(options.title) {
    link_->window = this;
    Windows().push_back(this);
    SetStyle(options);
    widget_->setWindowTitle(ToDisplayText(options.title));
    if (!options.iconPath.empty()) widget_->setWindowIcon(QIcon(ToQt(options.iconPath)));
    if (options.acceptDrops) widget_->setAcceptDrops(true);
    widget_->setMinimumSize(std::max(0, options.leastClient.width), std::max(0, options.leastClient.height));
    SetFrame(options.frame);
    FitBuffer();
}

QtWindow::~QtWindow() {
    link_->window = nullptr;
    std::erase(Windows(), this);
    buffer_->Drop();
    widget_->hide();
    widget_->deleteLater();
}

void QtWindow::SetStyle(const WindowOptions& options) {
    const Qt::WindowFlags flags = FlagsOf(options);
    if (flags != Qt::Window) widget_->setWindowFlags(flags);
    if (options.focus == WindowFocus::Refuses) widget_->setAttribute(Qt::WA_ShowWithoutActivating);
    if (options.owner == nullptr) return;
    const auto* owner = static_cast<const QtWindow*>(options.owner);
    if (options.ownerMoves == OwnerMoves::Followed) owner_ = owner->GetLink();
    // An owner in the toolkit's sense would destroy the widget with its own; the native windows know each
    // other instead.
    widget_->winId();
    owner->Widget()->winId();
    widget_->windowHandle()->setTransientParent(owner->Widget()->windowHandle());
}

void QtWindow::PostToSelf(void (QtWindow::*work)()) {
    GuiQueue::Instance().Post([link = link_, work] {
        if (link->window != nullptr) (link->window->*work)();
    });
}

bool QtWindow::Deliver(const Event& event) {
    if (stage_ == Stage::Closed || !*procedure_) return false;
    const std::shared_ptr<WindowProcedure> procedure = procedure_;  // it may end the window
    return (*procedure)(*this, event);
}

// ---- the buffer and what is seen of it

void QtWindow::FitBuffer() {
    const Size size{widget_->width(), widget_->height()};
    switch (buffer_->Resize(size, widget_->devicePixelRatioF())) {
        case BackBuffer::ResizeResult::Same:
            break;
        case BackBuffer::ResizeResult::New:
            Invalidate();
            break;
        case BackBuffer::ResizeResult::Busy:
            PostToSelf(&QtWindow::FitBuffer);
            break;
    }
}

void QtWindow::Present() {
    const QRect dirty = buffer_->TakeDirty();
    if (!dirty.isEmpty()) widget_->update(dirty);
}

void QtWindow::OnPaint(const QRect& part) {
    // A move to a screen of another scale shows first here.
    if (widget_->devicePixelRatioF() != buffer_->Scale()) FitBuffer();
    OnMoved();  // the window manager's frame may have shifted the client area without a word
    QPainter painter(widget_);
    buffer_->Paint(painter, part);
}

std::unique_ptr<Surface> QtWindow::Snapshot() const { return MakeSurface(buffer_->Copy()); }

void QtWindow::Invalidate() {
    if (!isPaintPosted_.exchange(true)) PostToSelf(&QtWindow::ServePaint);
}

void QtWindow::ServePaint() {
    isPaintPosted_ = false;
    if (isVisible_) Deliver(Event{EventType::Paint});  // a hidden one gets its Paint when it is shown
}

// ---- what the widget reports

void QtWindow::OnShown() {
    isVisible_ = true;
    FitBuffer();
    OnMoved();
    Invalidate();
    if (wantedOuter_.isValid() && !settling_.isActive()) {
        settlingTries_ = 0;
        settling_.start(kSettlingPeriodMs, widget_);
    }
}

void QtWindow::OnMoved() {
    const QPoint origin = widget_->mapToGlobal(QPoint(0, 0));
    const Point before = Unpack(clientOrigin_.exchange(Pack(origin)));
    const QPoint by = origin - QPoint(before.x, before.y);
    if (isOriginKnown_ && !by.isNull())
        for (QtWindow* window : Windows()) window->FollowOwner(*this, by);
    isOriginKnown_ = isVisible_;
}

void QtWindow::FollowOwner(const QtWindow& moved, QPoint by) {
    if (!owner_ || owner_->window != &moved || stage_ != Stage::Open) return;
    if (wantedOuter_.isValid()) wantedOuter_.translate(by);
    widget_->setGeometry(widget_->geometry().translated(by));
}

void QtWindow::OnResized() {
    FitBuffer();
    OnMoved();
    Deliver(Event{EventType::Resize});
}

void QtWindow::OnMinimized() { PostToSelf(&QtWindow::ServeMinimize); }

void QtWindow::OnRestored() { PostToSelf(&QtWindow::ServeRestore); }

void QtWindow::ServeRestore() {
    if (!widget_->isMinimized()) Deliver(Event{EventType::Restore});
}

void QtWindow::ServeMinimize() {
    if (!widget_->isMinimized()) return;
    const std::shared_ptr<Link> link = link_;
    const bool isDealtWith = Deliver(Event{EventType::Minimize});
    // A window that was hidden instead forgets the state when it is shown; to change it now would show it.
    if (isDealtWith && link->window != nullptr && isVisible_)
        widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
}

void QtWindow::OnTimer(int toolkitId) {
    if (toolkitId == settling_.timerId()) {
        SettleFrame();
        return;
    }
    for (const auto& [id, timer] : timers_) {
        if (timer.timerId() != toolkitId) continue;
        Event event{EventType::Timer};
        event.timer = id;
        Deliver(event);
        return;  // the procedure may have changed the list
    }
}

// ---- title, place, appearance

void QtWindow::SetTitle(const std::string& title) {
    {
        std::lock_guard lock(titleMutex_);
        title_ = title;
    }
    GuiQueue::Instance().Post([link = link_, title] {
        if (link->window != nullptr) link->window->widget_->setWindowTitle(ToDisplayText(title));
    });
}

std::string QtWindow::Title() const {
    std::lock_guard lock(titleMutex_);
    return title_;
}

void QtWindow::Show() {
    if (stage_ == Stage::Closed) return;
    widget_->setWindowState(widget_->windowState() & ~Qt::WindowMinimized);
    widget_->show();
    if (!isVisible_) OnShown();
}

void QtWindow::ShowWithoutFocus() {
    if (stage_ == Stage::Closed) return;
    // What the toolkit asks when it shows the native window.
    constexpr char kProperty[] = "_q_showWithoutActivating";
    widget_->winId();
    const QVariant before = widget_->windowHandle()->property(kProperty);
    widget_->windowHandle()->setProperty(kProperty, true);
    Show();
    widget_->windowHandle()->setProperty(kProperty, before);
}

void QtWindow::Hide() {
    widget_->hide();
    isOriginKnown_ = false;
    isVisible_ = false;  // the toolkit does not report it when the window was minimised
}

void QtWindow::Minimize() {
    if (stage_ != Stage::Open || !isVisible_ || !IsWindowManagerThere()) return;
    widget_->showMinimized();
}

void QtWindow::Activate() {
    if (stage_ == Stage::Closed) return;
    Show();
    widget_->raise();
    widget_->activateWindow();
    // A dialog that was minimised with it stands in front of it again.
    QWidget* const dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || dialog->parentWidget() != widget_) return;
    dialog->setWindowState(dialog->windowState() & ~Qt::WindowMinimized);
    dialog->raise();
    dialog->activateWindow();
}

void QtWindow::ComeBack() {
    if (stage_ != Stage::Open || (isVisible_ && !widget_->isMinimized())) return;
    Show();
    Deliver(Event{EventType::Restore});
}

void QtWindow::SetOpacity(double opacity) {
    GuiQueue::Instance().Post([link = link_, opacity] {
        if (link->window != nullptr) link->window->widget_->setWindowOpacity(std::clamp(opacity, 0.0, 1.0));
    });
}

void QtWindow::SetLayer(WindowLayer layer) {
    Qt::WindowFlags flags = widget_->windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, layer == WindowLayer::Topmost);
    widget_->winId();
    widget_->overrideWindowFlags(flags);  // setWindowFlags would hide the window
    widget_->windowHandle()->setFlags(flags);
}

QMargins QtWindow::FrameMargins() const {
    // Where no window manager is, the toolkit makes a frame up; there the window is all that was asked for.
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return QMargins();
    // A hidden window has no frame; when it is shown again it gets the one that it had.
    const QWindow* native = widget_->windowHandle();
    if (isVisible_ && native != nullptr && !native->frameMargins().isNull())
        lastMargins_ = native->frameMargins();
    // A maximised window may lose its borders.
    if (lastMargins_.left() + lastMargins_.right() >= normalMargins_.left() + normalMargins_.right())
        normalMargins_ = lastMargins_;
    return lastMargins_;
}

Rect QtWindow::NormalFrame() const {
    if (wantedOuter_.isValid()) return FromQtRect(wantedOuter_);
    const bool isNormal = (widget_->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) == 0;
    const QRect client = isNormal ? widget_->geometry() : widget_->normalGeometry();
    const QMargins margins = FrameMargins();
    return FromQtRect(client.marginsAdded(isNormal ? margins : normalMargins_));
}

void QtWindow::SetFrame(const Rect& outer) {
    const QRect frame = ToQtRect(outer);
    const QMargins margins = FrameMargins();
    settling_.stop();
    if (isVisible_ && !margins.isNull()) {
        wantedOuter_ = QRect();
        widget_->setGeometry(ClientOf(frame, margins));
        return;
    }
    // How wide the frame is will be known some time after the window is shown.
    wantedOuter_ = frame;
    widget_->resize(frame.size());
    widget_->move(frame.topLeft());
    if (isVisible_) {
        settlingTries_ = 0;
        settling_.start(kSettlingPeriodMs, widget_);
    }
}

void QtWindow::SettleFrame() {
    const QMargins margins = FrameMargins();
    if (margins.isNull() && ++settlingTries_ < kMostSettlingTries) return;
    settling_.stop();
    const QRect frame = wantedOuter_;
    wantedOuter_ = QRect();
    // Not against the user, who may have been quicker.
    const bool isUntouched = widget_->size() == frame.size().expandedTo(widget_->minimumSize()) &&
                             (widget_->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) == 0;
    if (!margins.isNull() && isUntouched) widget_->setGeometry(ClientOf(frame, margins));
}

Point QtWindow::ToClient(Point screen) const {
    const Point origin = Unpack(clientOrigin_);
    return Point{screen.x - origin.x, screen.y - origin.y};
}

Point QtWindow::ToScreen(Point client) const {
    const Point origin = Unpack(clientOrigin_);
    return Point{client.x + origin.x, client.y + origin.y};
}

// ---- end, timers, commands

bool QtWindow::RequestClose() {
    if (stage_ != Stage::Open) return true;
    const std::shared_ptr<Link> link = link_;
    if (Deliver(Event{EventType::Close})) return false;
    if (link->window != nullptr) Close();
    return true;
}

void QtWindow::Close() {
    if (stage_ != Stage::Open) return;
    stage_ = Stage::Closing;
    const std::shared_ptr<Link> link = link_;
    Deliver(Event{EventType::Destroy});
    if (link->window == nullptr) return;
    stage_ = Stage::Closed;
    timers_.clear();
    settling_.stop();
    buffer_->Drop();
    widget_->hide();
}

void QtWindow::StartTimer(int id, int periodMs) {
    if (stage_ == Stage::Open) timers_[id].start(std::max(periodMs, 1), Qt::PreciseTimer, widget_);
}

void QtWindow::StopTimer(int id) { timers_.erase(id); }

void QtWindow::SendCommand(int command) {
    GuiQueue::Instance().Post([link = link_, command] {
        if (link->window == nullptr) return;
        Event event{EventType::Command};
        event.command = command;
        link->window->Deliver(event);
    });
}

}  // namespace kalmora::qt
