#include "platform/tray.h"

#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <utility>

#include "platform/qt/values.h"

namespace kalmora {

namespace {

// The menu belongs to no window; the toolkit wants it to outlive the icon.
class QtTrayIcon final : public TrayIcon {
public:
    explicit QtTrayIcon(const TrayOptions& options)
        : onPress_(options.onPress), onChosen_(options.onChosen), icon_(QIcon(qt::ToQt(options.iconPath))) {
        for (const TrayMenuItem& item : options.menu) AddToMenu(item);
        icon_.setContextMenu(&menu_);
        QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger && onPress_) onPress_();
                         });
        SetTip(options.tip);
        icon_.show();
    }

    bool IsShown() const override { return QSystemTrayIcon::isSystemTrayAvailable() && icon_.isVisible(); }
    void SetTip(const std::string& tip) override { icon_.setToolTip(qt::ToDisplayText(tip)); }

private:
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
    QMenu menu_;
    QSystemTrayIcon icon_;
};

}  // namespace

std::unique_ptr<TrayIcon> TrayIcon::Create(const TrayOptions& options) {
    if (qGuiApp == nullptr) return nullptr;
    return std::make_unique<QtTrayIcon>(options);
}

}  // namespace kalmora
