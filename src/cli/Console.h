#pragma once

#include "cli/ExitStatus.h"

#include <QByteArray>
#include <QString>

namespace varnel::cli {

/// How text for people may look where it goes.
struct Style {
    int columns = 0; ///< what a line may take; 0: any number
    bool colour = false;
    bool terminal = false; ///< a terminal shows it: no control characters
    QString ellipsis = QStringLiteral("...");
};

/// Standard output for data, kept back until the end; standard error for messages, at once.
class Console {
public:
    /// Looks at the terminal and at NO_COLOR, TERM and the locale's names.
    Console();

    [[nodiscard]] const Style &style() const { return textStyle; }

    void print(const QString &text);
    void print(const QByteArray &bytes);

    /// One line on standard error, after the program's name.
    static void message(const QString &text);
    /// One line on standard error, as it is.
    static void note(const QString &text);

    /// From here on a failure leaves work that is partly done.
    void noteWrite() { wrote = true; }

    /// Puts the data out. The status to end with: the one given, or, when the output could not be
    /// written, that of the failure.
    [[nodiscard]] ExitStatus finish(ExitStatus status);

private:
    Style textStyle;
    QByteArray output;
    bool wrote = false;
};

} // namespace varnel::cli
