// The dialog in which the user chooses a folder.
#pragma once

#include <QFileDialog>

class QLabel;

namespace kalmora::qt {

// Shows the selected folder's path in a line of its own while the selection changes. A typed name that is no
// folder is refused with a message, and the dialog stays. GUI thread.
class FolderDialog final : public QFileDialog {
public:
    FolderDialog(QWidget* parent, const QString& title, const QString& start);

    void accept() override;
    QString Status() const;

private:
    QLabel* const status_;  // owned by the dialog
};

}  // namespace kalmora::qt
