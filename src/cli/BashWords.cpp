#include "cli/BashWords.h"

#include "base/Literals.h"

namespace varnel::cli {

namespace {

/// A part of a word, its quoting taken away.
class Plain {
public:
    explicit Plain(const QString &part)
    {
        for (qsizetype at = 0; at < part.size(); ++at)
            take(part, at);
        strange = strange || (!quote.isNull() && part.front() != quote);
    }

    QString text;
    QChar quote; ///< in which it ends; null outside of any
    bool strange = false; ///< $'...' or $"...", or a quotation that begins inside and does not end

private:
    void take(const QString &part, qsizetype &at)
    {
        const QChar letter = part[at];
        if (letter == u'\\' && quote != u'\'' && at + 1 < part.size()) {
            const QChar next = part[++at];
            if (!quote.isNull() && !u"\\\"$`"_s.contains(next))
                text += letter;
            text += next;
        } else if (letter == quote) {
            quote = QChar();
        } else if (quote.isNull() && (letter == u'\'' || letter == u'"')) {
            strange = strange || (at > 0 && part[at - 1] == u'$');
            quote = letter;
        } else {
            text += letter;
        }
    }
};

/// Bash replaces what stands behind these,
bool parts(const QString &part)
{
    return part.startsWith(u'=') || part.startsWith(u':');
}

/// and what begins with this.
bool begins(const QString &part)
{
    return part.startsWith(u'@');
}

} // namespace

std::optional<BashWords> BashWords::read(const QStringList &typed)
{
    BashWords line;
    QString last;
    for (const QString &part : typed) {
        const Plain plain(part);
        if (plain.strange)
            return std::nullopt;
        const bool joins =
            !line.words.isEmpty() && (parts(last) || begins(last) || parts(part) || begins(part));
        const QString before = joins ? line.words.takeLast() : QString();
        line.words.append(before + plain.text);
        if (parts(part))
            line.kept = line.words.last();
        else if (!joins || !begins(last))
            line.kept = before;
        last = part;
    }
    return line;
}

} // namespace varnel::cli
