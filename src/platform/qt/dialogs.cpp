#include <QApplication>
#include <QDialog>
#include <QGuiApplication>
#include <QMessageBox>

#include "platform/dialog.h"
#include "platform/qt/display_loss.h"
#include "platform/qt/folder_dialog.h"
#include "platform/qt/form_dialog.h"
#include "platform/qt/question.h"
#include "platform/qt/values.h"
#include "platform/qt/window_qt.h"
#include "platform/window.h"

namespace kalmora {

namespace {

// On a display without a screen a question would wait for ever.
bool CanAsk() { return qGuiApp != nullptr && QGuiApplication::platformName() != QLatin1String("offscreen"); }

QWidget* ShownOwner(Window* owner) {
    if (owner != nullptr) static_cast<qt::QtWindow*>(owner)->ComeBack();
    return qt::WidgetOf(owner);
}

// Only the window that it belongs to waits: blocked as well, the icon in the tray could not call back a
// window that has been minimised together with its dialog.
void WaitForOwnerOnly(QDialog& dialog) {
    if (dialog.parentWidget() != nullptr) dialog.setWindowModality(Qt::WindowModal);
}

}  // namespace

bool IsDialogOpen() { return qGuiApp != nullptr && QApplication::activeModalWidget() != nullptr; }

MessageAnswer ShowMessage(Window* owner, const std::string& title, const std::string& message,
                          MessageButtons buttons) {
    const bool isQuestion = buttons == MessageButtons::YesNo;
    if (!CanAsk()) return isQuestion ? MessageAnswer::No : MessageAnswer::Ok;
    const qt::ModalDialog<QMessageBox> held(new QMessageBox(ShownOwner(owner)));
    QMessageBox& box = *held;
    box.setWindowTitle(qt::ToDisplayText(title));
    box.setTextFormat(Qt::PlainText);  // a file name may look like mark-up
    box.setText(qt::ToDisplayText(message));
    WaitForOwnerOnly(box);
    box.setIcon(isQuestion ? QMessageBox::Question : QMessageBox::NoIcon);
    if (isQuestion)
        qt::OfferYesAndNo(box);
    else
        box.setStandardButtons(QMessageBox::Ok);
    const int answer = box.exec();
    if (!isQuestion) return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

int ShowDialog(Window* owner, const DialogForm& form) {
    if (!CanAsk()) return kDialogCancel;
    const qt::ModalDialog<qt::FormDialog> dialog(new qt::FormDialog(ShownOwner(owner), form));
    WaitForOwnerOnly(*dialog);
    return dialog->Run();
}

std::optional<std::string> ChooseFolder(Window* owner, const std::string& title, const std::string& start) {
    if (!CanAsk()) return std::nullopt;
    const qt::ModalDialog<qt::FolderDialog> dialog(
        new qt::FolderDialog(ShownOwner(owner), qt::ToDisplayText(title), qt::ToQt(start)));
    WaitForOwnerOnly(*dialog);
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return std::nullopt;
    return qt::FromQt(dialog->selectedFiles().constFirst());
}

}  // namespace kalmora
