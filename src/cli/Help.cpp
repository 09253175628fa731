#include "cli/Help.h"

#include "base/Literals.h"

#include <algorithm>

namespace varnel::cli {

namespace {

struct Entry {
    QString left;
    QString right;
};

QString section(const QString &title, const QList<Entry> &entries)
{
    if (entries.isEmpty())
        return {};
    qsizetype widest = 0;
    for (const Entry &entry : entries)
        widest = std::max(widest, entry.left.size());
    QString out = u'\n' + title + u":\n";
    for (const Entry &entry : entries)
        out += u"  " + entry.left.leftJustified(widest + 2) + entry.right + u'\n';
    return out;
}

QString section(const QString &title, const QStringList &lines)
{
    QString out = lines.isEmpty() ? QString() : QString(u'\n' + title + u":\n");
    for (const QString &line : lines)
        out += u"  varnelctl " + line + u'\n';
    return out;
}

QList<Entry> entriesOf(const QList<OptionInfo> &options)
{
    QList<Entry> entries;
    for (const OptionInfo &option : options) {
        const QString value =
            option.valueName.isNull() ? QString() : QString(u' ' + option.valueName);
        const QStringView more = option.many ? u"..." : u"";
        entries.append({u"--" + option.name + value + more, option.help});
    }
    return entries;
}

QList<Entry> commonEntries()
{
    QList<Entry> entries = entriesOf(commonOptions());
    entries.append({u"-h, --help"_s, u"show this help"_s});
    return entries;
}

QString usage(const ParameterInfo &parameter)
{
    switch (parameter.count) {
    case ParameterInfo::Count::Optional:
        return u" [" + parameter.name + u']';
    case ParameterInfo::Count::OneOrMore:
        return u' ' + parameter.name + u"...";
    case ParameterInfo::Count::Any:
        return u" [" + parameter.name + u"...]";
    case ParameterInfo::Count::One:
        break;
    }
    return u' ' + parameter.name;
}

/// " (also: read)"; empty for a command with one name.
QString otherNames(const CommandInfo &info)
{
    return info.aliases.isEmpty() ? QString()
                                  : QString(u" (also: " + info.aliases.join(u", ") + u')');
}

/// The commands whose names pass, and all their examples' first.
struct Listing {
    QList<Entry> entries;
    QStringList examples;
};

template <typename Passes> Listing listing(const Commands &commands, Passes passes)
{
    Listing found;
    for (const auto &command : commands) {
        if (!passes(command.name))
            continue;
        const CommandInfo info = command.info();
        found.entries.append({info.name, info.summary + otherNames(info)});
        if (!info.examples.isEmpty())
            found.examples.append(info.examples.first());
    }
    return found;
}

const QList<Entry> &statusEntries()
{
    static const QList<Entry> entries {
        {u"0"_s, u"done"_s},
        {u"1"_s, u"a negative answer: nothing found, something differs or is wrong"_s},
        {u"2"_s, u"wrong usage, unknown setting, value out of its kind; nothing written"_s},
        {u"3"_s, u"could not read or write; nothing changed"_s},
        {u"4"_s, u"partly done; the messages say what was not"_s},
    };
    return entries;
}

} // namespace

const QList<ExitStatusText> &exitStatusTexts()
{
    static const QList<ExitStatusText> texts = [] {
        QList<ExitStatusText> all;
        for (const Entry &entry : statusEntries())
            all.append({entry.left, entry.right});
        return all;
    }();
    return texts;
}

QString programHelp(const Commands &commands)
{
    const Listing all = listing(commands, [](const QString &) { return true; });
    QList<Entry> options = commonEntries();
    options.append({u"--version"_s, u"show the version"_s});
    return u"Shows and changes the hidden settings of a home folder; every save keeps the old "
           u"values\n"
           u"in a backup file first.\n\n"
           u"Usage: varnelctl [OPTIONS] [COMMAND ...]\n\n"
           u"Without a command it lists the settings. SETTING is a number or a short name of that\n"
           u"list.\n"_s
        + section(u"Commands"_s, all.entries) + section(u"Options"_s, options)
        + section(u"Exit status"_s, statusEntries()) + section(u"Examples"_s, all.examples)
        + u"\n'varnelctl COMMAND --help' tells more of one command.\n";
}

QString commandHelp(const CommandInfo &info)
{
    QString out = u"Usage: varnelctl " + info.name + u" [OPTIONS]";
    QList<Entry> parameters;
    for (const ParameterInfo &parameter : info.parameters) {
        out += usage(parameter);
        parameters.append({parameter.name, parameter.help});
    }
    out += u"\n\n" + info.summary + otherNames(info) + u".\n";
    if (!info.details.isNull())
        out += u'\n' + info.details + u'\n';
    QList<Entry> options = entriesOf(info.options);
    options += commonEntries();
    return out + section(u"Arguments"_s, parameters) + section(u"Options"_s, options)
        + section(u"Examples"_s, info.examples);
}

QString groupHelp(const QString &group, const Commands &commands)
{
    const Listing beneath =
        listing(commands, [&](const QString &name) { return name.startsWith(group + u' '); });
    return u"Usage: varnelctl " + group + u" COMMAND [OPTIONS] ...\n"
        + section(u"Commands"_s, beneath.entries) + section(u"Options"_s, commonEntries())
        + section(u"Examples"_s, beneath.examples);
}

} // namespace varnel::cli
