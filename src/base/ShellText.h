#pragma once

#include <QString>

namespace varnel {

/// A text in single quotes, as one word of the standard shell, of bash or of zsh; NUL can't stand
/// in a word.
[[nodiscard]] QString shellQuoted(const QString &text);

/// A text as one word of the standard shell, quoted where it needs to be. NUL can't stand in a
/// word; no text with one comes here.
[[nodiscard]] QString shellWord(const QString &text);

} // namespace varnel
