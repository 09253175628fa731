#include "cli/Log.h"

#include "base/Literals.h"
#include "cli/Console.h"

#include <QLoggingCategory>

namespace varnel::cli {

namespace {

int silences = 0;

void logLine(QtMsgType, const QMessageLogContext &context, const QString &text)
{
    if (silences == 0)
        Console::note(QString::fromUtf8(context.category) + u": " + text);
}

} // namespace

void prepareLogging(bool verbose)
{
    qInstallMessageHandler(logLine);
    if (!verbose)
        QLoggingCategory::setFilterRules(u"*=false"_s);
}

LogSilence::LogSilence(bool wanted) : wanted(wanted)
{
    silences += int(wanted);
}

LogSilence::~LogSilence()
{
    silences -= int(wanted);
}

} // namespace varnel::cli
