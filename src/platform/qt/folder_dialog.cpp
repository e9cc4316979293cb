#include "platform/qt/folder_dialog.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>

#include "platform/qt/display_loss.h"
#include "platform/qt/question.h"

namespace kalmora::qt {

FolderDialog::FolderDialog(QWidget* parent, const QString& title, const QString& start)
    : QFileDialog(parent, title, start), status_(new QLabel(this)) {
    setFileMode(QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly);
    // A desktop's own dialog has no place for the path and its own words.
    setOption(QFileDialog::DontUseNativeDialog);
    NameButtons(*this);
    status_->setTextFormat(Qt::PlainText);
    status_->setWordWrap(true);
    status_->setText(directory().absolutePath());
    if (auto* const grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(status_, grid->rowCount(), 0, 1, grid->columnCount());
    const auto show = [this](const QString& path) { status_->setText(path); };
    connect(this, &QFileDialog::currentChanged, this, show);
    connect(this, &QFileDialog::directoryEntered, this, show);
}

QString FolderDialog::Status() const { return status_->text(); }

void FolderDialog::accept() {
    const QStringList chosen = selectedFiles();
    if (!chosen.isEmpty() && QFileInfo(chosen.constFirst()).isDir()) return QFileDialog::accept();
    const ModalDialog<QMessageBox> box(new QMessageBox(this));
    box->setWindowTitle(QStringLiteral("Error"));
    box->setText(QStringLiteral("Cannot use this folder"));
    box->exec();
}

}  // namespace kalmora::qt
