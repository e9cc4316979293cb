// A Window as a top-level widget of the toolkit, for the other files of this folder.
#pragma once

#include <QBasicTimer>
#include <QRect>
#include <QWidget>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/qt/back_buffer.h"
#include "platform/window.h"

namespace kalmora::qt {

class WindowWidget;

class QtWindow final : public Window {
public:
    // What posted work and the widget hold instead of the window, which may go before them. `window` is null
    // from then on; read and written on the GUI thread only.
    struct Link {
        QtWindow* window = nullptr;
    };

    // The widget hands its events to the window by way of the link, and deletes itself once it is released.
    QtWindow(std::shared_ptr<Link> link, QWidget* widget, const WindowOptions& options,
             WindowProcedure procedure);
    ~QtWindow() override;

    std::unique_ptr<Canvas> Draw() override { return buffer_->Draw(); }
    Size ClientSize() const override { return buffer_->GetSize(); }
    double Scale() const override { return buffer_->Scale(); }
    std::unique_ptr<Surface> Snapshot() const override;
    void SetTitle(const std::string& title) override;
    std::string Title() const override;
    void Show() override;
    void ShowWithoutFocus() override;
    void Hide() override;
    void Minimize() override;
    void Activate() override;
    bool IsVisible() const override { return isVisible_; }
    Rect NormalFrame() const override;
    void SetFrame(const Rect& outer) override;
    void SetOpacity(double opacity) override;
    void SetLayer(WindowLayer layer) override;
    Point ToClient(Point screen) const override;
    Point ToScreen(Point client) const override;
    void Invalidate() override;
    void SetTips(std::function<Tip(Point client)> tipAt) override { tipAt_ = std::move(tipAt); }
    void Close() override;
    void StartTimer(int id, int periodMs) override;
    void StopTimer(int id) override;
    void SendCommand(int command) override;

    QWidget* Widget() const { return widget_; }
    const std::shared_ptr<Link>& GetLink() const { return link_; }
    // Hands the event to the procedure; false once the window is closed. The window may be gone afterwards.
    bool Deliver(const Event& event);
    // Shows it where it is hidden or minimised, with a Restore event.
    void ComeBack();
    // As when the user closes it: the procedure may refuse. True when the window is closed now.
    bool RequestClose();

private:
    friend class WindowWidget;
    enum class Stage { Open, Closing, Closed };

    // What the widget reports.
    void OnShown();
    void OnHidden() { isVisible_ = false; }
    void OnMoved();
    void OnResized();
    void OnMinimized();
    void OnRestored();
    Tip TipAt(Point client) const { return tipAt_ ? tipAt_(client) : Tip{}; }
    void OnTimer(int toolkitId);
    void OnPaint(const QRect& part);

    // Posts work that is done only if the window still exists then.
    void PostToSelf(void (QtWindow::*work)());
    void FitBuffer();
    void Present();
    void ServePaint();
    void ServeMinimize();
    void ServeRestore();
    void SettleFrame();
    void SetStyle(const WindowOptions& options);
    void FollowOwner(const QtWindow& moved, QPoint by);
    QMargins FrameMargins() const;

    const std::shared_ptr<Link> link_;
    QWidget* const widget_;  // deletes itself once it handles no event any more; holds link_
    const std::shared_ptr<WindowProcedure> procedure_;
    std::function<Tip(Point client)> tipAt_;
    const std::shared_ptr<BackBuffer> buffer_;
    std::shared_ptr<Link> owner_;  // whose moves are followed; null for none
    Stage stage_ = Stage::Open;
    std::map<int, QBasicTimer> timers_;
    // The outer rectangle that was asked for before the window manager's frame was known; null once it is
    // applied.
    QRect wantedOuter_;
    mutable QMargins normalMargins_;  // the same while it was not maximised
    mutable QMargins lastMargins_;    // of the window manager's frame, as they were seen last
    QBasicTimer settling_;
    int settlingTries_ = 0;
    std::atomic<bool> isVisible_ = false;
    std::atomic<bool> isPaintPosted_ = false;
    std::atomic<std::uint64_t> clientOrigin_ = 0;  // on the screen; x in the high half
    bool isOriginKnown_ = false;                   // since it was shown
    mutable std::mutex titleMutex_;
    std::string title_;  // guarded by titleMutex_
};

// All windows that exist, in the order in which they were made. GUI thread.
const std::vector<QtWindow*>& OpenWindows();

// The toolkit's widget of a window, null for none: for dialogs, drags and native calls. GUI thread.
QWidget* WidgetOf(Window* window);

}  // namespace kalmora::qt
