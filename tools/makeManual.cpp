// Build tool: fills the manual pages' templates in. What the programs know of themselves (commands,
// options, settings, exit statuses) comes from where they know it.
// Usage: makeManual TEMPLATES OUT
//
// TEMPLATES/varnelctl.1.in -> OUT/varnelctl.1. A line "@FILES@" is replaced by TEMPLATES/files.in
// or by what is made here; "@VERSION@" may stand in a line.

#include "cli/Help.h"
#include "cli/Registry.h"
#include "cli/SettingWords.h"
#include "settings/Catalogue.h"
#include "shell/StartOptions.h"

#include <QDir>
#include <QFile>
#include <QMap>

#include <cstdio>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::cli;

namespace {

/// Text as roff takes it: hyphens stay hyphens that can be searched for and copied, and no line is
/// taken for a request.
QString roff(QString text)
{
    text.replace(u'\\', u"\\e"_s)
        .replace(u'-', u"\\-"_s)
        .replace(u'\'', u"\\(aq"_s)
        .replace(u'^', u"\\(ha"_s)
        .replace(u'~', u"\\(ti"_s)
        .replace(u'`', u"\\(ga"_s);
    return text.startsWith(u'.') ? QString(u"\\&" + text) : text;
}

QString bold(const QString &text)
{
    return u"\\fB" + roff(text) + u"\\fR";
}

QString italic(const QString &text)
{
    return u"\\fI" + roff(text) + u"\\fR";
}

/// A term and, indented below it, what it means.
QString tagged(const QString &term, const QString &meaning)
{
    return u".TP\n" + term + u'\n' + meaning + u'\n';
}

/// Lines that begin with a blank stand as they are; the others flow together.
QString paragraphs(const QString &details)
{
    QString out;
    bool verbatim = false;
    for (const QString &line : details.split(u'\n')) {
        const bool asItIs = line.startsWith(u' ');
        if (asItIs != verbatim)
            out += asItIs ? u".PP\n.EX\n"_s : u".EE\n.PP\n"_s;
        verbatim = asItIs;
        out += line.isEmpty() ? u".PP\n"_s : QString(roff(line) + u'\n');
    }
    return verbatim ? QString(out + u".EE\n") : out;
}

QString parameterUsage(const ParameterInfo &parameter)
{
    using Count = ParameterInfo::Count;
    const bool optional = parameter.count != Count::One && parameter.count != Count::OneOrMore;
    const bool many = parameter.count != Count::One && parameter.count != Count::Optional;
    const QString name = italic(parameter.name) + (many ? u"..." : u"");
    return u' ' + (optional ? QString(u'[' + name + u']') : name);
}

QString options(const QList<OptionInfo> &list)
{
    QString out;
    for (const OptionInfo &option : list) {
        const QString value = option.valueName.isNull()
            ? QString()
            : QString(u' ' + italic(option.valueName) + (option.many ? u"..." : u""));
        out += tagged(bold(u"--" + option.name) + value, roff(option.help));
    }
    return out;
}

QString command(const CommandInfo &info)
{
    QString usage = bold(info.name) + (info.options.isEmpty() ? u"" : u" [\\fIOPTION\\fR...]");
    QString parts;
    for (const ParameterInfo &parameter : info.parameters) {
        usage += parameterUsage(parameter);
        parts += tagged(italic(parameter.name), roff(parameter.help));
    }
    QString out = u".SS " + usage + u'\n' + roff(info.summary) + u".\n";
    if (!info.aliases.isEmpty())
        out += u".PP\nAlso: " + bold(info.aliases.join(u", ")) + u".\n";
    if (!info.details.isNull())
        out += u".PP\n" + paragraphs(info.details);
    return out + parts + options(info.options);
}

QString commands()
{
    QString out;
    for (const auto &each : makeCommands())
        out += command(each.info());
    return out;
}

QString commonOptionsText()
{
    return options(commonOptions())
        + tagged(bold(u"-h"_s) + u", " + bold(u"--help"_s), u"show help"_s)
        + tagged(bold(u"--version"_s), u"show the version"_s);
}

QString startOptions()
{
    QList<OptionInfo> list;
    for (const StartOption &option : startOptionList())
        list.append({option.name, option.valueName, option.help});
    return options(list);
}

QString valuesOf(const SettingRow &row)
{
    if (row.kind == ValueKind::Number)
        return u"A number from %1 to %2, or default."_s.arg(row.minimum).arg(row.maximum);
    const QStringList words = valueWords(row);
    return words.isEmpty() ? u"Any text; \\-1 is the default."_s
                           : QString(u"Values: " + roff(words.join(u", ")) + u'.');
}

QString settings()
{
    QString out;
    for (const ModuleRow &module : modules()) {
        out += u".SS " + roff(module.outlineTitle) + u'\n';
        for (const SettingRow &row : catalogue())
            if (row.module == module.id)
                out += tagged(bold(row.name) + u" (" + QString::number(row.id) + u')',
                              roff(row.label) + u".\n" + valuesOf(row));
    }
    return out;
}

QString exitStatuses()
{
    QString out;
    for (const ExitStatusText &status : exitStatusTexts())
        out += tagged(bold(status.number), roff(status.meaning));
    return out;
}

QString examples()
{
    QString out;
    for (const auto &each : makeCommands()) {
        const CommandInfo info = each.info();
        for (const QString &example : info.examples)
            out += u".EX\n" + roff(u"varnelctl " + example) + u"\n.EE\n";
    }
    return out;
}

QMap<QString, QString> parts()
{
    return {{u"@COMMANDS@"_s, commands()}, {u"@OPTIONS@"_s, commonOptionsText()},
            {u"@SETTINGS@"_s, settings()}, {u"@EXIT_STATUS@"_s, exitStatuses()},
            {u"@EXAMPLES@"_s, examples()}, {u"@START_OPTIONS@"_s, startOptions()}};
}

int complain(const QString &about)
{
    std::fprintf(stderr, "makeManual: %s\n", qPrintable(about));
    return 1;
}

bool read(const QString &path, QString &text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    text = QString::fromUtf8(file.readAll());
    return true;
}

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return complain(u"usage: makeManual TEMPLATES OUT"_s);
    const QDir templates(QFile::decodeName(argv[1]));
    const QDir out(QFile::decodeName(argv[2]));
    QMap<QString, QString> fill = parts();
    if (!read(templates.filePath(u"files.in"_s), fill[u"@FILES@"_s]))
        return complain(u"cannot read files.in"_s);
    fill.insert(u"@VERSION@"_s, QStringLiteral(VARNEL_VERSION));
    for (const QString &page : templates.entryList({u"*.1.in"_s}, QDir::Files, QDir::Name)) {
        QString text;
        if (!read(templates.filePath(page), text))
            return complain(u"cannot read "_s + page);
        for (auto part = fill.cbegin(); part != fill.cend(); ++part) {
            if (part.value().endsWith(u'\n'))
                text.replace(part.key() + u'\n', part.value());
            text.replace(part.key(), part.value());
        }
        if (!out.mkpath(u"."_s) || !write(out.filePath(page.chopped(3)), text))
            return complain(u"cannot write "_s + out.filePath(page.chopped(3)));
    }
    return 0;
}
