#include "shell/views/StartOptions.h"

#include <QCommandLineParser>

namespace varnel {

namespace {

const QString helpText =
    QStringLiteral("Usage: varnel [options]\n"
                   "Changes hidden settings of a Mac home folder, and puts them back.\n"
                   "\n"
                   "  --home DIR   edit the home folder DIR in place of your own\n"
                   "  --new-home   make the standard folders in it when they are missing\n"
                   "  --system-root DIR\n"
                   "               tell the system version of the disk mounted at DIR\n"
                   "  --version    print the version\n"
                   "  --help       print this text\n"
                   "\n"
                   "The same work without a window: varnelctl --help\n");

} // namespace

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
        options.answer = helpText;
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
