#include "platform/qt/question.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "platform/qt/folder_dialog.h"

namespace kalmora::qt {
namespace {

// ---- answers in the language of the question

TEST(Question, InJapaneseHasJapaneseAnswers) {
    QMessageBox box;
    box.setText(QStringLiteral("読み込みますか？\n/home/me"));
    OfferYesAndNo(box);
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), QStringLiteral("はい(&Y)"));
    EXPECT_EQ(box.button(QMessageBox::No)->text(), QStringLiteral("いいえ(&N)"));
    EXPECT_EQ(box.escapeButton(), box.button(QMessageBox::No));
}

TEST(Question, InEnglishHasEnglishAnswers) {
    QMessageBox box;
    box.setText(QStringLiteral("Shall it?\n/home/me/写真"));
    OfferYesAndNo(box);
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), QStringLiteral("&Yes"));
    EXPECT_EQ(box.button(QMessageBox::No)->text(), QStringLiteral("&No"));
}

// ---- the folder

class FolderDialogTest : public testing::Test {
protected:
    void Type(const QString& name) { dialog_.findChild<QLineEdit*>()->setText(name); }

    const QTemporaryDir folder_;
    FolderDialog dialog_{nullptr, QStringLiteral("取り込みフォルダの設定"), folder_.path()};
};

TEST_F(FolderDialogTest, ShowsThePathOfTheSelection) {
    EXPECT_EQ(dialog_.Status(), folder_.path());
    emit dialog_.currentChanged(QStringLiteral("/somewhere/else"));
    EXPECT_EQ(dialog_.Status(), QStringLiteral("/somewhere/else"));
    emit dialog_.directoryEntered(QStringLiteral("/"));
    EXPECT_EQ(dialog_.Status(), QStringLiteral("/"));
}

TEST_F(FolderDialogTest, RefusesATypedNameThatIsNoFolderAndStays) {
    dialog_.show();
    Type(QStringLiteral("no such folder"));
    QString title, text;
    QTimer::singleShot(0, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        title = box->windowTitle();
        text = box->text();
        box->accept();
    });
    dialog_.accept();
    EXPECT_EQ(title, QStringLiteral("Error"));
    EXPECT_EQ(text, QStringLiteral("Cannot use this folder"));
    EXPECT_TRUE(dialog_.isVisible());
    Type(folder_.path());
    dialog_.accept();
    EXPECT_FALSE(dialog_.isVisible());
    EXPECT_EQ(dialog_.result(), QDialog::Accepted);
}

TEST_F(FolderDialogTest, SpeaksTheLanguageOfItsTitle) {
    EXPECT_EQ(dialog_.labelText(QFileDialog::Reject), QStringLiteral("キャンセル"));
    const FolderDialog english(nullptr, QStringLiteral("Import"), folder_.path());
    EXPECT_EQ(english.labelText(QFileDialog::Reject), QStringLiteral("Cancel"));
}

}  // namespace
}  // namespace kalmora::qt
