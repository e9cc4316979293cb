#include "platform/qt/question.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

namespace kalmora::qt {

bool IsJapanese(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c >= u'\u3041' && c <= u'\u30FF'; });
}

void OfferYesAndNo(QMessageBox& box) {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    const bool japanese = IsJapanese(box.text());
    box.button(QMessageBox::Yes)->setText(japanese ? QStringLiteral("はい(&Y)") : QStringLiteral("&Yes"));
    box.button(QMessageBox::No)->setText(japanese ? QStringLiteral("いいえ(&N)") : QStringLiteral("&No"));
}

void NameButtons(QFileDialog& dialog) {
    const bool japanese = IsJapanese(dialog.windowTitle());
    dialog.setLabelText(QFileDialog::Accept, japanese ? QStringLiteral("選択") : QStringLiteral("Choose"));
    dialog.setLabelText(QFileDialog::Reject,
                        japanese ? QStringLiteral("キャンセル") : QStringLiteral("Cancel"));
}

}  // namespace kalmora::qt
