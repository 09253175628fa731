#pragma once

#include <QWidget>

#include <array>

class QLabel;
class QPushButton;

namespace varnel {

class MessageLine;

/// Save, Cancel and View below the column of settings, each over its caption.
class SettingsFooter : public QWidget {
    Q_OBJECT

public:
    explicit SettingsFooter(QWidget *parent = nullptr);

    /// Lays the buttons out, the first caption at that distance from the footer's left edge, and
    /// takes the height that this needs.
    void place(int left);

    /// All three together.
    void setButtonsEnabled(bool enabled);
    /// Says on the Save button how many changes it would save.
    void showChangeCount(qsizetype count);
    /// From left to right.
    [[nodiscard]] std::array<QPushButton *, 3> buttons() const;

    /// At their right.
    [[nodiscard]] MessageLine &messageLine() const { return *message; }

signals:
    void saveClicked();
    void cancelClicked();
    void viewClicked();

private:
    struct Column {
        QPushButton *button;
        QLabel *label; ///< the same words as the button's
        QLabel *changesLabel; ///< what they are about
    };
    Column makeColumn(const QString &word, int place);

    Column save, cancel, view;
    MessageLine *message;
};

} // namespace varnel
