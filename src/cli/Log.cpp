#include "cli/Log.h"

#include "base/Literals.h"
#include "cli/Console.h"

#include <QLoggingCategory>

#include <utility>

namespace varnel::cli {

namespace {

std::function<void(const QString &line)> sink = Console::note;

void logLine(QtMsgType, const QMessageLogContext &context, const QString &text)
{
    sink(QString::fromUtf8(context.category) + u": " + text);
}

} // namespace

void prepareLogging(bool verbose)
{
    qInstallMessageHandler(logLine);
    if (!verbose)
        QLoggingCategory::setFilterRules(u"*=false"_s);
}

void sendLogTo(std::function<void(const QString &line)> newSink)
{
    sink = std::move(newSink);
}

} // namespace varnel::cli
