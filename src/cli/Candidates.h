#pragma once

#include "cli/TypedWords.h"

#include <QByteArrayList>

namespace varnel::cli {

/// What may stand where somebody types, for the shells that complete it.
struct Candidate {
    enum class Kind {
        Word,
        Part, ///< a word that goes on: no blank after it
        File, ///< the shell's own: files, or folders, behind the text
        Folder,
    };
    Kind kind = Kind::Word;
    QString text {};
    QString help {};
};

/// What may stand for the last of the words, which begin with the program's name; not yet held
/// against what is typed of it.
///
/// A home that the words name is looked at with its owner's rights, in a process of its own that
/// changes nothing, tells nobody anything and is soon given up.
[[nodiscard]] QList<Candidate> candidatesFor(const QByteArrayList &words, const Commands &commands);

/// Of those, the backup files or login items of the homes that the words name. None where a home is
/// not to be had, or does not answer at once.
[[nodiscard]] QList<Candidate> candidatesInHomes(Completes completes, const TypedWords &typed);

} // namespace varnel::cli
