#include "platform/tray.h"

#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <utility>

#include "platform/qt/display.h"
#include "platform/qt/values.h"

namespace kalmora {

namespace {

constexpr int kLookMs = 1000;  // the toolkit does not report that a tray goes

// The menu belongs to no window; the toolkit wants it to outlive the icon.
class QtTrayIcon final : public TrayIcon {
public:
    explicit QtTrayIcon(const TrayOptions& options)
        : onPress_(options.onPress),
          onChosen_(options.onChosen),
          onGone_(options.onGone),
          icon_(QIcon(qt::ToQt(options.iconPath))) {
        for (const TrayMenuItem& item : options.menu) AddToMenu(item);
        icon_.setContextMenu(&menu_);
        QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger && onPress_) onPress_();
                         });
        SetTip(options.tip);
        icon_.show();
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] { LookForTray(); });
        look_.start(kLookMs);
    }

    bool IsShown() const override {
        return !isGone_ && QSystemTrayIcon::isSystemTrayAvailable() && icon_.isVisible();
    }
    void SetTip(const std::string& tip) override { icon_.setToolTip(qt::ToDisplayText(tip)); }

private:
    void LookForTray() {
        const bool hadOwner = std::exchange(hasOwner_, qt::HasTrayOwner());
        if (hasOwner_) isGone_ = false;
        if (!hadOwner || hasOwner_) return;
        isGone_ = true;
        if (onGone_) onGone_();
    }

    void AddToMenu(const TrayMenuItem& item) {
        if (item.kind == TrayMenuItem::Kind::Separator) {
            menu_.addSeparator();
            return;
        }
        QAction* action = menu_.addAction(qt::ToDisplayText(item.text));
        action->setEnabled(item.kind == TrayMenuItem::Kind::Command);
        if (item.isDefault) menu_.setDefaultAction(action);
        const int command = item.command;
        QObject::connect(action, &QAction::triggered, action, [this, command] {
            if (onChosen_) onChosen_(command);
        });
    }

    const std::function<void()> onPress_;
    const std::function<void(int)> onChosen_;
    const std::function<void()> onGone_;
    bool hasOwner_ = qt::HasTrayOwner();
    bool isGone_ = false;  // it was there and is no more
    QMenu menu_;
    QSystemTrayIcon icon_;
    QTimer look_;
};

}  // namespace

std::unique_ptr<TrayIcon> TrayIcon::Create(const TrayOptions& options) {
    if (qGuiApp == nullptr) return nullptr;
    return std::make_unique<QtTrayIcon>(options);
}

}  // namespace kalmora
