// The widget behind a window: turns the toolkit's events into the seam's. GUI thread.
#pragma once

#include <QHelpEvent>
#include <QWidget>

#include "platform/qt/window_qt.h"

namespace kalmora::qt {

class WindowWidget final : public QWidget {
public:
    explicit WindowWidget(std::shared_ptr<QtWindow::Link> link);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool Send(const Event& event);
    void ShowTip(const QHelpEvent& event);

    const std::shared_ptr<QtWindow::Link> link_;
    int wheelRest_ = 0;  // eighths of a degree that make no whole step yet
    bool isComposing_ = false;
};

// The Key event of a toolkit's key press.
Event KeyEventOf(const QKeyEvent& press);

}  // namespace kalmora::qt
