#pragma once

#include "cli/Registry.h"

#include <QByteArrayList>
#include <QString>

namespace varnel::cli {

/// What a command line asks for.
struct CommandLine {
    enum class Wish { Run, Help, Version, Wrong };
    Wish wish = Wish::Run;
    const NamedCommand *command = nullptr; ///< null: none was named
    QString group; ///< help was asked for the commands beneath this word; else null
    Request request;
    QString problem; ///< what is wrong, one line
};

/// Sorts out the words of a command line, which begin with the program's name. Options stand before
/// or after the command; what follows "--" is an argument, whatever it begins with.
[[nodiscard]] CommandLine parseCommandLine(const QByteArrayList &words, const Commands &commands);

} // namespace varnel::cli
