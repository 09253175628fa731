#pragma once

#include "cli/Registry.h"

#include <QByteArrayList>

namespace varnel::cli {

/// A command line taken apart into its command, its options and the other words, before the parser
/// sees it.
class TypedLine {
public:
    /// The arguments begin with the program's name.
    TypedLine(const QByteArrayList &arguments, const Commands &commands);

    /// Null when the first word is no command of one word, or stands behind "--".
    [[nodiscard]] const NamedCommand *command() const { return named; }
    /// As typed, each before its value.
    [[nodiscard]] const QByteArrayList &options() const { return optionWords; }
    /// Whether the last option is one whose value was not typed.
    [[nodiscard]] bool lacksValue() const { return valueFollows; }
    [[nodiscard]] bool hasOption(const QByteArray &name) const;
    /// What else stands behind the command's name, words with one dash among them.
    [[nodiscard]] const QByteArrayList &words() const { return otherWords; }

private:
    void take(const QByteArray &word, const Commands &commands);
    [[nodiscard]] bool takesValue(const QByteArray &option) const;

    const NamedCommand *named = nullptr;
    bool commandSeen = false;
    bool valueFollows = false;
    bool wordsOnly = false;
    QByteArrayList optionWords;
    QByteArrayList otherWords;
};

} // namespace varnel::cli
