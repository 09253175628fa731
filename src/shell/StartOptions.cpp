#include "shell/StartOptions.h"

#include <QCommandLineParser>

namespace varnel {

namespace {

/// An option too long for its column has a line of its own.
QString helpLine(const StartOption &option)
{
    constexpr int column = 13;
    const QString left =
        u"--" + option.name + (option.valueName.isNull() ? QString() : u' ' + option.valueName);
    const QString indent = left.size() < column ? left.leftJustified(column)
                                                : QString(left + u'\n' + QString(column + 2, u' '));
    return u"  " + indent + option.help + u'\n';
}

QString helpText()
{
    QString options;
    for (const StartOption &option : startOptionList())
        options += helpLine(option);
    return u"Usage: varnel [options]\n"
           u"Changes hidden settings of a Mac home folder, and puts them back.\n\n"
        + options + u"\nThe same work without a window: varnelctl --help\n";
}

} // namespace

const QList<StartOption> &startOptionList()
{
    static const QList<StartOption> list {
        {QStringLiteral("home"), QStringLiteral("DIR"),
         QStringLiteral("edit the home folder DIR in place of your own")},
        {QStringLiteral("new-home"),
         {},
         QStringLiteral("make the standard folders in it when they are missing")},
        {QStringLiteral("system-root"), QStringLiteral("DIR"),
         QStringLiteral(
             "tell the system version of the disk mounted at DIR, not of the home's own")},
        {QStringLiteral("version"), {}, QStringLiteral("print the version")},
        {QStringLiteral("help"), {}, QStringLiteral("print this text")},
    };
    return list;
}

StartOptions parseStartOptions(const QStringList &arguments)
{
    const QCommandLineOption home(QStringLiteral("home"), {}, QStringLiteral("DIR"));
    const QCommandLineOption newHome(QStringLiteral("new-home"));
    const QCommandLineOption systemRoot(QStringLiteral("system-root"), {}, QStringLiteral("DIR"));
    const QCommandLineOption version(QStringList {QStringLiteral("v"), QStringLiteral("version")});
    const QCommandLineOption help(QStringList {QStringLiteral("h"), QStringLiteral("help")});
    QCommandLineParser parser;
    parser.addOptions({home, newHome, systemRoot, version, help});
    const bool understood = parser.parse(arguments);

    StartOptions options;
    if (parser.isSet(help))
        options.answer = helpText();
    else if (parser.isSet(version))
        options.answer = QStringLiteral("varnel " VARNEL_VERSION "\n");
    else if (!understood)
        options.mistake = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        options.mistake = u"Unexpected argument '" + parser.positionalArguments().first() + u"'.";
    if (parser.isSet(home))
        options.home = parser.value(home);
    if (parser.isSet(systemRoot))
        options.systemRoot = parser.value(systemRoot);
    options.newHome = parser.isSet(newHome);
    return options;
}

} // namespace varnel
