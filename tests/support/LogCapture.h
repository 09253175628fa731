#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <qlogging.h>

namespace varnel::test {

/// Catches the program's log lines while it lives, in place of standard error. One at a time.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    /// The texts of one category ("varnel.shell") in order, as they were logged.
    [[nodiscard]] QStringList texts(const QString &category) const;
    /// The texts of all the program's categories.
    [[nodiscard]] QStringList texts() const;

private:
    struct Line {
        QString category;
        QString text;
    };
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCapture *active;
    QtMessageHandler previous;
    QList<Line> lines;
};

} // namespace varnel::test
