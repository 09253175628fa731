#pragma once

#include "settings/views/DefaultedView.h"

class QHBoxLayout;

namespace varnel {

/// A text field, with a box for the default. Every keystroke reports the new text.
class TextView : public DefaultedView {
    Q_OBJECT

public:
    using DefaultedView::DefaultedView;

    [[nodiscard]] QString currentTextFieldValue() const { return reportedText; }

    void textFieldChangeValue();
    void controlTextDidChange();
    void setDefaultCheckBoxStat() override;
    virtual void updateWindowForControlTextChange();

    void readData(bool updateControls) override;
    void writeShownData() override;

protected:
    [[nodiscard]] SettingValue controlValue() const override { return {0, textField.value()}; }
    void buildControls(QBoxLayout *column) override;
    /// Puts the field, and what goes with it, into the line beside the title.
    virtual void buildFieldLine(QHBoxLayout *line);

    [[nodiscard]] QString shownText() const { return textField.value(); }
    void showText(const QString &text) { textField.show(text); }
    [[nodiscard]] bool fieldEnabled() const { return textField.isEnabled(); }

private:
    ControlState<QLineEdit, QString> textField {QStringLiteral("")};
    QString reportedText;
};

} // namespace varnel
