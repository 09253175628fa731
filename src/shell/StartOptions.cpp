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
    return u"Usage: varnel [options] [DIR]\n"
           u"Changes hidden settings of a Mac home folder, and puts them back.\n\n"
           u"  DIR          the same as --home DIR\n"
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
        {QStringLiteral("choose-home"),
         {},
         QStringLiteral("ask for the home folder in a dialog, and open its window")},
        {QStringLiteral("system-root"), QStringLiteral("DIR"),
         QStringLiteral(
             "tell the system version of the disk mounted at DIR, not of the home's own")},
        {QStringLiteral("version"), {}, QStringLiteral("print the version")},
        {QStringLiteral("help"), {}, QStringLiteral("print this text")},
    };
    return list;
}

namespace {

/// What stands in the command line beside the options: a home at most.
void takeFolder(const QStringList &typed, StartOptions &options)
{
    const QStringList unexpected = typed.mid(options.home ? 0 : 1);
    if (!unexpected.isEmpty())
        options.mistake = u"Unexpected argument '" + unexpected.first() + u"'.";
    else if (!typed.isEmpty())
        options.home = typed.first();
}

} // namespace

StartOptions parseStartOptions(const QStringList &arguments)
{
    const QCommandLineOption home(QStringLiteral("home"), {}, QStringLiteral("DIR"));
    const QCommandLineOption newHome(QStringLiteral("new-home"));
    const QCommandLineOption chooseHome(QStringLiteral("choose-home"));
    const QCommandLineOption systemRoot(QStringLiteral("system-root"), {}, QStringLiteral("DIR"));
    const QCommandLineOption version(QStringList {QStringLiteral("v"), QStringLiteral("version")});
    const QCommandLineOption help(QStringList {QStringLiteral("h"), QStringLiteral("help")});
    QCommandLineParser parser;
    parser.addOptions({home, newHome, chooseHome, systemRoot, version, help});
    const bool understood = parser.parse(arguments);

    StartOptions options;
    if (parser.isSet(help))
        options.answer = helpText();
    else if (parser.isSet(version))
        options.answer = QStringLiteral("varnel " VARNEL_VERSION "\n");
    else if (!understood)
        options.mistake = parser.errorText();
    if (parser.isSet(home))
        options.home = parser.value(home);
    if (understood)
        takeFolder(parser.positionalArguments(), options);
    if (parser.isSet(systemRoot))
        options.systemRoot = parser.value(systemRoot);
    options.newHome = parser.isSet(newHome);
    options.chooseHome = parser.isSet(chooseHome);
    return options;
}

} // namespace varnel
