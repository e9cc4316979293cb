// The answers to the questions that the toolkit's dialogs ask, in the language of the question. The toolkit's
// own translations are a package that need not be there, and follow the desktop's language. GUI thread.
#pragma once

#include <QString>

class QMessageBox;
class QFileDialog;

namespace kalmora::qt {

// True for a text with kana, which no other language has.
bool IsJapanese(const QString& text);

// Yes and No, No for Escape; the box has its text already.
void OfferYesAndNo(QMessageBox& box);
// The buttons of a dialog that has its title already.
void NameButtons(QFileDialog& dialog);

}  // namespace kalmora::qt
