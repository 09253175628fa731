#include "cli/Console.h"

#include "base/Literals.h"
#include "cli/TextWidth.h"
#include "platform/linux/LinuxTerminal.h"

namespace varnel::cli {

namespace {

constexpr int standardOutput = 1;
constexpr int standardError = 2;
constexpr int usualColumns = 80;

bool localeIsUtf8()
{
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const QByteArray value = qgetenv(name).toLower();
        if (!value.isEmpty())
            return value.contains("utf-8") || value.contains("utf8");
    }
    return false;
}

int terminalColumns()
{
    if (const int columns = LinuxTerminal::columns(standardOutput); columns > 0)
        return columns;
    const int columns = qEnvironmentVariableIntValue("COLUMNS");
    return columns > 0 ? columns : usualColumns;
}

} // namespace

Console::Console()
{
    textStyle.terminal = LinuxTerminal::isTerminal(standardOutput);
    if (!textStyle.terminal)
        return;
    textStyle.columns = terminalColumns();
    textStyle.colour = qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
    if (localeIsUtf8())
        textStyle.ellipsis = u"…"_s;
}

void Console::print(const QString &text)
{
    output += text.toUtf8();
}

void Console::print(const QByteArray &bytes)
{
    output += bytes;
}

void Console::message(const QString &text)
{
    note(u"varnelctl: " + text);
}

void Console::note(const QString &text)
{
    const QByteArray line = printable(text).toUtf8() + '\n';
    // Where messages can't be written there is no place left to say so; the exit status stays.
    [[maybe_unused]] const Result<void> ignored = LinuxTerminal::writeAll(standardError, line);
}

ExitStatus Console::finish(ExitStatus status)
{
    const Result<void> written = LinuxTerminal::writeAll(standardOutput, output);
    output.clear();
    if (written)
        return status;
    // A reader that has seen enough needs no message.
    if (written.error().code != ErrorCode::NotFound)
        message(u"standard output: "_s + written.error().text);
    return wrote ? ExitStatus::Partly : ExitStatus::Failed;
}

} // namespace varnel::cli
