#pragma once

#include "cli/Command.h"

#include <functional>
#include <memory>
#include <vector>

namespace varnel::cli {

/// Everything that the parser and the help texts know of a command.
struct CommandInfo : CommandDescription {
    QString name;
    QStringList aliases;
};

/// A command under its names. To find the one that is meant no other is made, nor described.
struct NamedCommand {
    QString name; ///< one word, or several for a command beneath another: "backups show"
    QStringList aliases; ///< other words for the last word of the name
    std::function<std::unique_ptr<const Command>()> make;

    [[nodiscard]] CommandInfo info() const { return {make()->description(), name, aliases}; }
};

using Commands = std::vector<NamedCommand>;

/// Every command, in the order in which the help lists them.
[[nodiscard]] Commands makeCommands();

/// The options that every command takes, before or after its name.
[[nodiscard]] const QList<OptionInfo> &commonOptions();

} // namespace varnel::cli
