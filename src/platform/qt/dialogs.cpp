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

}  // namespace

MessageAnswer ShowMessage(Window* owner, const std::string& title, const std::string& message,
                          MessageButtons buttons) {
    const bool isQuestion = buttons == MessageButtons::YesNo;
    if (!CanAsk()) return isQuestion ? MessageAnswer::No : MessageAnswer::Ok;
    const qt::ModalDialog<QMessageBox> held(new QMessageBox(qt::WidgetOf(owner)));
    QMessageBox& box = *held;
    box.setWindowTitle(qt::ToDisplayText(title));
    box.setTextFormat(Qt::PlainText);  // a file name may look like mark-up
    box.setText(qt::ToDisplayText(message));
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
    const qt::ModalDialog<qt::FormDialog> dialog(new qt::FormDialog(qt::WidgetOf(owner), form));
    return dialog->Run();
}

std::optional<std::string> ChooseFolder(Window* owner, const std::string& title, const std::string& start) {
    if (!CanAsk()) return std::nullopt;
    const qt::ModalDialog<qt::FolderDialog> dialog(
        new qt::FolderDialog(qt::WidgetOf(owner), qt::ToDisplayText(title), qt::ToQt(start)));
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return std::nullopt;
    return qt::FromQt(dialog->selectedFiles().constFirst());
}

}  // namespace kalmora
