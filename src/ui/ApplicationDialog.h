#pragma once

#include <QFileDialog>

#include <optional>

namespace varnel {

/// A file dialog in which a folder whose name ends in ".app" is one thing, not a place to enter.
class ApplicationDialog : public QFileDialog {
    Q_OBJECT

public:
    ApplicationDialog(QWidget *parent, const QString &startFolder);

    /// What the user chose; none when cancelled.
    [[nodiscard]] std::optional<QString> chosen() const { return path; }

    void accept() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void choose(const QString &application);
    /// Whether the event asks to open the bundle of that view; then it is chosen.
    bool opensBundle(QObject *watched, QEvent *event);

    std::optional<QString> path;
};

} // namespace varnel
