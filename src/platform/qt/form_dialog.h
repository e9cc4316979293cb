// The toolkit's dialog behind a table of controls.
#pragma once

#include <QDialog>
#include <map>

#include "platform/dialog.h"

class QGridLayout;

namespace kalmora::qt {

// GUI thread. ShowDialog makes one, shows it and throws it away.
class FormDialog final : public QDialog, public Dialog {
public:
    FormDialog(QWidget* parent, const DialogForm& form);  // the form outlives it
    ~FormDialog() override;

    // Shows it until it is closed, and gives the result.
    int Run();

    std::string Text(int id) const override;
    void SetText(int id, const std::string& text) override;
    bool IsChecked(int id) const override;
    void SetChecked(int id, bool isChecked) override;
    void SetChoices(int id, const std::vector<std::string>& choices) override;
    int Chosen(int id) const override;
    void Choose(int id, int index) override;
    SystemTime Date(int id) const override;
    void SetDate(int id, const SystemTime& date) override;
    void SetEnabled(int id, bool isEnabled) override;
    void SetFocus(int id) override;
    void Close(int result) override { done(result); }

    void reject() override { Press(kDialogCancel); }

private:
    struct Box;  // a grid, and the rows of the table that lie in it
    QWidget* Make(const Control& control);
    void Place(QWidget* widget, const Control& control);
    void Press(int id);
    template <typename Widget>
    Widget* Find(int id) const;

    const DialogForm& form_;
    std::map<int, QWidget*> controls_;
    std::vector<Box> boxes_;  // the whole dialog first, then its groups
};

}  // namespace kalmora::qt
