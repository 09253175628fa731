#pragma once

#include "cli/Registry.h"

namespace varnel::cli {

/// A word that may follow, and what it is for.
struct TreeWord {
    QString word;
    QString help;
};

/// A word, or words, that commands stand beneath; the program itself is the null path.
struct TreeNode {
    QString path;
    QList<TreeWord> below;
};

/// The commands by their words: every node that holds others, the program first.
[[nodiscard]] QList<TreeNode> commandTree(const Commands &commands);

/// What stands beneath a word says what the word is for: "list, show, restore, delete". Of a word
/// that is a command as well, the command's summary.
[[nodiscard]] QString helpOfGroup(const QString &group, const Commands &commands);

/// Every name that the command answers to, its own first: "set", "write".
[[nodiscard]] QStringList allNames(const CommandInfo &info);

/// Whether the parameter takes whatever else is typed.
[[nodiscard]] bool repeats(const ParameterInfo &parameter);

/// The options that every command takes, with --help.
[[nodiscard]] QList<OptionInfo> sharedOptions();

/// Every option of a command, its own first.
[[nodiscard]] QList<OptionInfo> allOptions(const CommandInfo &info);

/// The options that the program takes without a command, beside the shared ones.
[[nodiscard]] QList<OptionInfo> programOptions();

} // namespace varnel::cli
