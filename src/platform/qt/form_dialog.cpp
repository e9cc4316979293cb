#include "platform/qt/form_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <climits>

#include "platform/qt/values.h"

namespace kalmora::qt {

namespace {
constexpr int kLongestText = 32767;
}

struct FormDialog::Box {
    QGridLayout* grid;
    int row, column;  // where the grid begins in the table
    int rows, columns;

    bool Holds(const Control& control) const {
        return control.row >= row && control.row < row + rows && control.column >= column &&
               control.column < column + columns;
    }
};

FormDialog::FormDialog(QWidget* parent, const DialogForm& form) : QDialog(parent), form_(form) {
    setWindowTitle(ToDisplayText(form.title));
    boxes_.push_back({new QGridLayout(this), 0, 0, INT_MAX, INT_MAX});
    QLabel* label = nullptr;
    for (const Control& control : form.controls) {
        QWidget* widget = Make(control);
        Place(widget, control);
        if (control.id != 0) controls_[control.id] = widget;
        if (label != nullptr && widget->focusPolicy() != Qt::NoFocus) label->setBuddy(widget);
        label = qobject_cast<QLabel*>(widget);
    }
    if (form_.onOpen) form_.onOpen(*this);
}

FormDialog::~FormDialog() = default;

QWidget* FormDialog::Make(const Control& control) {
    const QString text = ToDisplayText(control.text);
    switch (control.kind) {
        case ControlKind::Edit: {
            auto* edit = new QLineEdit(text);
            edit->setMaxLength(kLongestText);
            return edit;
        }
        case ControlKind::TextArea: {
            auto* area = new QPlainTextEdit(text);
            area->setTabChangesFocus(true);
            return area;
        }
        case ControlKind::CheckBox:
            return new QCheckBox(text);
        case ControlKind::Choice:
            return new QComboBox;
        case ControlKind::ChoiceEdit: {
            auto* box = new QComboBox;
            box->setEditable(true);
            box->setInsertPolicy(QComboBox::NoInsert);
            box->lineEdit()->setMaxLength(kLongestText);
            return box;
        }
        case ControlKind::Date: {
            auto* date = new QDateEdit;
            date->setCalendarPopup(true);
            date->setDisplayFormat(text.isEmpty() ? QStringLiteral("yyyy/MM/dd (ddd)") : text);
            return date;
        }
        case ControlKind::Group:
            return new QGroupBox(text);
        case ControlKind::Button: {
            auto* button = new QPushButton(text);
            button->setAutoDefault(control.id == kDialogOk);
            button->setDefault(control.id == kDialogOk);
            connect(button, &QPushButton::clicked, this, [this, id = control.id] { Press(id); });
            return button;
        }
        case ControlKind::Label:
            break;
    }
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(control.columns > 1);
    return label;
}

void FormDialog::Place(QWidget* widget, const Control& control) {
    const Box* box = &boxes_.front();
    // The last group that holds it is the innermost one.
    for (const Box& group : boxes_)
        if (group.Holds(control)) box = &group;
    box->grid->addWidget(widget, control.row - box->row, control.column - box->column, control.rows,
                         control.columns);
    if (control.kind == ControlKind::Group)
        boxes_.push_back(
            {new QGridLayout(widget), control.row, control.column, control.rows, control.columns});
}

int FormDialog::Run() {
    if (form_.place == DialogForm::Place::MiddleOfScreen) {
        adjustSize();
        move(screen()->availableGeometry().center() - rect().center());
    }
    exec();
    return result();
}

void FormDialog::Press(int id) {
    const bool isOpen = isVisible();
    if (form_.onButton) form_.onButton(*this, id);
    if (isOpen && isVisible() && (!form_.onButton || id == kDialogCancel)) done(id);
}

template <typename Widget>
Widget* FormDialog::Find(int id) const {
    const auto found = controls_.find(id);
    return found == controls_.end() ? nullptr : qobject_cast<Widget*>(found->second);
}

std::string FormDialog::Text(int id) const {
    if (const auto* edit = Find<QLineEdit>(id)) return FromQt(edit->text());
    if (const auto* area = Find<QPlainTextEdit>(id)) return FromQt(area->toPlainText());
    if (const auto* box = Find<QComboBox>(id)) return FromQt(box->currentText());
    if (const auto* date = Find<QDateEdit>(id)) return FromQt(date->text());
    if (const auto* button = Find<QAbstractButton>(id)) return FromQt(button->text());
    if (const auto* label = Find<QLabel>(id)) return FromQt(label->text());
    return {};
}

void FormDialog::SetText(int id, const std::string& text) {
    const QString shown = ToDisplayText(text);
    if (auto* edit = Find<QLineEdit>(id)) edit->setText(shown);
    if (auto* area = Find<QPlainTextEdit>(id)) area->setPlainText(shown);
    if (auto* box = Find<QComboBox>(id)) box->setCurrentText(shown);
    if (auto* button = Find<QAbstractButton>(id)) button->setText(shown);
    if (auto* label = Find<QLabel>(id)) label->setText(shown);
}

bool FormDialog::IsChecked(int id) const {
    const auto* box = Find<QCheckBox>(id);
    return box != nullptr && box->isChecked();
}

void FormDialog::SetChecked(int id, bool isChecked) {
    if (auto* box = Find<QCheckBox>(id)) box->setChecked(isChecked);
}

void FormDialog::SetChoices(int id, const std::vector<std::string>& choices) {
    auto* box = Find<QComboBox>(id);
    if (box == nullptr) return;
    box->clear();
    for (const std::string& choice : choices) box->addItem(ToDisplayText(choice));
}

int FormDialog::Chosen(int id) const {
    const auto* box = Find<QComboBox>(id);
    if (box == nullptr) return -1;
    // An editable one keeps its index while something else is typed over it.
    return box->isEditable() ? box->findText(box->currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive)
                             : box->currentIndex();
}

void FormDialog::Choose(int id, int index) {
    auto* box = Find<QComboBox>(id);
    if (box != nullptr && index >= -1 && index < box->count()) box->setCurrentIndex(index);
}

SystemTime FormDialog::Date(int id) const {
    SystemTime date;
    const auto* edit = Find<QDateEdit>(id);
    if (edit == nullptr) return date;
    const QDate day = edit->date();
    date.year = static_cast<std::uint16_t>(day.year());
    date.month = static_cast<std::uint16_t>(day.month());
    date.day = static_cast<std::uint16_t>(day.day());
    date.dayOfWeek = static_cast<std::uint16_t>(day.dayOfWeek() % 7);
    return date;
}

void FormDialog::SetDate(int id, const SystemTime& date) {
    auto* edit = Find<QDateEdit>(id);
    const QDate day(date.year, date.month, date.day);
    if (edit != nullptr && day.isValid()) edit->setDate(day);
}

void FormDialog::SetEnabled(int id, bool isEnabled) {
    if (auto* widget = Find<QWidget>(id)) widget->setEnabled(isEnabled);
}

void FormDialog::SetFocus(int id) {
    auto* widget = Find<QWidget>(id);
    if (widget == nullptr) return;
    widget->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) edit->selectAll();
    if (auto* area = qobject_cast<QPlainTextEdit*>(widget)) area->selectAll();
}

}  // namespace kalmora::qt
