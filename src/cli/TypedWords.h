#pragma once

#include "cli/Registry.h"

#include <QByteArrayList>

#include <optional>

namespace varnel::cli {

/// A word of a command line, and what it is there.
struct TypedWord {
    enum class Kind {
        Command, ///< leads to a command, or names it
        Switch, ///< "--name", or "--name=value" where it takes none; or an option nobody knows
        Value, ///< an option's, typed behind it or behind its "="
        Dashed, ///< "-x": one dash, and no number
        Mark, ///< the "--" before what is nothing but words
        Word,
    };
    Kind kind;
    QByteArray text; ///< as typed; of a value behind "=" the value alone
    QString option {}; ///< of a switch or a value: the option's name; null where it is not known

    /// None where it is no UTF-8: a name is refused rather than changed. A zero-width no-break
    /// space at its start is part of it: without it the name would be another's.
    [[nodiscard]] std::optional<QString> asText() const;
};

/// The one reader of command lines: takes the words that were typed for what they are, by what the
/// commands say of themselves. Whoever obeys the line, says it in other words or completes it goes
/// by this.
///
/// No command is made but the one that is named, and that only where its own options or arguments
/// count.
class TypedWords {
public:
    /// Without the program's name. The commands outlive this object.
    TypedWords(const QByteArrayList &typed, const Commands &commands);

    [[nodiscard]] const QList<TypedWord> &words() const { return all; }
    /// Null: none was named, or only what stands above some.
    [[nodiscard]] const NamedCommand *command() const { return named; }
    /// The words of the command by its own name, as far as they were typed.
    [[nodiscard]] const QString &path() const { return typedPath; }
    /// Of the command; there is one.
    [[nodiscard]] const CommandInfo &info() const;

    /// What stands behind the command, or, without one, all that is no part of an option.
    [[nodiscard]] const QList<TypedWord> &arguments() const { return others; }
    [[nodiscard]] bool hasSwitch(const QString &name) const;
    /// Every value of an option.
    [[nodiscard]] QByteArrayList values(const QString &option) const;

    // Of the line's end, where a further word would stand:

    /// The option whose value is still to come.
    [[nodiscard]] const std::optional<OptionInfo> &awaited() const { return waiting; }
    /// The option of several values that takes one more.
    [[nodiscard]] const std::optional<OptionInfo> &gathering() const { return taking; }
    /// Whether nothing but words can follow.
    [[nodiscard]] bool marked() const { return wordsOnly; }
    /// What the option of that name is here.
    [[nodiscard]] std::optional<OptionInfo> option(const QString &name) const;

private:
    void take(const QByteArray &word);
    void takeOption(const QByteArray &word);
    bool takeForCommand(const QByteArray &word);

    const Commands &commands;
    const NamedCommand *named = nullptr;
    QString typedPath;
    QList<TypedWord> all;
    QList<TypedWord> others;
    std::optional<OptionInfo> waiting;
    std::optional<OptionInfo> taking;
    bool wordsOnly = false;
    mutable std::optional<CommandInfo> described;
};

} // namespace varnel::cli
