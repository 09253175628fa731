#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace varnel::cli {

/// The words of a line as the command would get them, from the words that bash's completion parts
/// it into: in their quoting, and parted at "=", ":" and "@" too.
struct BashWords {
    QStringList words;
    /// What bash does not replace of the last word: what stands before the last of those letters.
    QString kept;

    /// None where the last word is in a quotation that begins inside it, or is no plain one: what
    /// is put there could be more than one word to bash.
    [[nodiscard]] static std::optional<BashWords> read(const QStringList &typed);
};

} // namespace varnel::cli
