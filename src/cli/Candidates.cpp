#include "cli/Candidates.h"

#include "base/Literals.h"
#include "cli/CommandTree.h"
#include "cli/RunningProcesses.h"
#include "cli/SettingWords.h"
#include "settings/Catalogue.h"

namespace varnel::cli {

namespace {

using Kind = Candidate::Kind;

QList<Candidate> ofWords(const QStringList &words)
{
    QList<Candidate> candidates;
    for (const QString &word : words)
        candidates.append({Kind::Word, word});
    return candidates;
}

QList<Candidate> settings(const QString &behind, Kind kind)
{
    QList<Candidate> candidates;
    for (const SettingRow &row : catalogue())
        candidates.append({kind, row.name + behind, shortLocationString(row) + u": " + row.label});
    return candidates;
}

/// SETTING=, then its values.
QList<Candidate> assignments(const QString &typed)
{
    const qsizetype sign = typed.indexOf(u'=');
    if (sign < 0)
        return settings(u"="_s, Kind::Part);
    QList<Candidate> values;
    if (const SettingRow *row = findSetting(QStringView(typed.left(sign).toLower())))
        for (const QString &word : valueWords(*row))
            values.append({Kind::Word, typed.left(sign + 1) + word});
    return values;
}

QList<Candidate> groups()
{
    QList<Candidate> titles;
    for (const ModuleRow &module : modules())
        titles.append({Kind::Word, module.outlineTitle});
    return titles;
}

QList<Candidate> processes()
{
    QList<Candidate> candidates;
    for (const ProcessRow &row : RunningProcesses().rows())
        candidates.append({Kind::Word, QString::number(row.processId), row.process});
    return candidates;
}

/// What may stand for a parameter, or for an option's value; `typed` is what is typed there.
template <typename Info>
QList<Candidate> ofPlace(const Info &info, const QString &typed, const TypedWords &before)
{
    switch (info.completes) {
    case Completes::Words:
        return ofWords(info.words);
    case Completes::Setting:
        return settings({}, Kind::Word);
    case Completes::Assignment:
        return assignments(typed);
    case Completes::Group:
        return groups();
    case Completes::Application:
        return ofWords(applicationNames());
    case Completes::File:
        return {{Kind::File}};
    case Completes::Folder:
        return {{Kind::Folder}};
    case Completes::Backup:
    case Completes::LoginItem:
        return candidatesInHomes(info.completes, before);
    case Completes::Process:
        return processes();
    case Completes::Nothing:
        break;
    }
    return {};
}

/// The value behind "--option=".
QList<Candidate> behindSign(const QString &typed, const TypedWords &before)
{
    const qsizetype sign = typed.indexOf(u'=');
    const std::optional<OptionInfo> option = before.option(typed.mid(2, sign - 2));
    if (!option || option->valueName.isNull())
        return {};
    QList<Candidate> candidates = ofPlace(*option, typed.mid(sign + 1), before);
    for (Candidate &candidate : candidates)
        candidate.text.prepend(typed.left(sign + 1));
    return candidates;
}

QList<Candidate> options(const TypedWords &before)
{
    QList<OptionInfo> all = before.command() ? allOptions(before.info()) : sharedOptions();
    if (before.path().isEmpty())
        all += programOptions();
    QList<Candidate> candidates;
    for (const OptionInfo &option : all)
        candidates.append({Kind::Word, u"--" + option.name, option.help});
    return candidates;
}

/// The words that lead to the commands beneath what is typed.
QList<Candidate> wordsBelow(const TypedWords &before, const Commands &commands)
{
    QList<Candidate> candidates;
    for (const TreeNode &node : commandTree(commands))
        if (node.path == before.path())
            for (const TreeWord &below : node.below)
                candidates.append({Kind::Word, below.word, below.help});
    return candidates;
}

QList<Candidate> arguments(const QString &typed, const TypedWords &before)
{
    qsizetype place = before.arguments().size();
    for (const ParameterInfo &parameter : before.info().parameters)
        if (place-- <= 0 || repeats(parameter))
            return ofPlace(parameter, typed, before);
    return {};
}

} // namespace

QList<Candidate> candidatesFor(const QByteArrayList &words, const Commands &commands)
{
    const TypedWords before(words.mid(1, words.size() - 2), commands);
    const QString typed = QString::fromUtf8(words.last());
    if (before.awaited())
        return ofPlace(*before.awaited(), typed, before);
    if (!before.marked() && typed.startsWith(u'-'))
        return typed.startsWith(u"--") && typed.contains(u'=') ? behindSign(typed, before)
                                                               : options(before);
    if (before.gathering())
        return ofPlace(*before.gathering(), typed, before);
    QList<Candidate> candidates;
    if (before.command())
        candidates = arguments(typed, before);
    if (!before.marked() && before.arguments().isEmpty())
        candidates += wordsBelow(before, commands);
    return candidates;
}

} // namespace varnel::cli
