// What is looked at in every window's events before the window itself gets them.
#pragma once

#include <QObject>
#include <memory>

#include "platform/qt/window_qt.h"

namespace kalmora::qt {

// Installed on the toolkit's application object; GUI thread.
class EventWatch final : public QObject {
public:
    void SetAccelerators(std::shared_ptr<QtWindow::Link> target, AcceleratorHook hook);
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Accelerate(const QKeyEvent& press);

    std::shared_ptr<QtWindow::Link> target_;
    AcceleratorHook hook_;
};

}  // namespace kalmora::qt
