#pragma once

#include "cli/Completes.h"
#include "cli/ExitStatus.h"
#include "cli/Request.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel::cli {

class Console;

/// One positional argument of a command.
struct ParameterInfo {
    enum class Count { One, Optional, OneOrMore, Any };
    QString name; ///< as the usage line shows it, "SETTING"
    QString help;
    Count count = Count::One;
    Completes completes = Completes::Nothing;
    QStringList words {}; ///< for Completes::Words
};

/// One option, "--name" or "--name VALUE".
struct OptionInfo {
    QString name; ///< without the dashes
    QString valueName; ///< null for a switch
    QString help;
    bool many = false; ///< one or more values, up to the next option
    Completes completes = Completes::Nothing; ///< its value
    QStringList words {}; ///< for Completes::Words
};

/// What a command does and takes.
struct CommandDescription {
    QString summary; ///< one line, no full stop
    QString details; ///< paragraphs below the usage line; may be null
    QList<ParameterInfo> parameters;
    QList<OptionInfo> options; ///< beside the ones that every command has
    QStringList examples; ///< command lines without the program's name
};

/// One command of the terminal program.
class Command {
public:
    virtual ~Command() = default;
    [[nodiscard]] virtual CommandDescription description() const = 0;

    /// Data goes to the console's output, everything else to its messages.
    virtual ExitStatus run(const Request &request, Console &console) const = 0;
};

} // namespace varnel::cli
