#include "cli/ProgressLine.h"

namespace varnel::cli {

namespace {

constexpr qint64 patience = 1000;
/// Drawing costs more than many a home does.
constexpr qint64 interval = 100;

} // namespace

ProgressLine::ProgressLine(qsizetype total, Sink sink, Clock clock)
    : total(total), sink(std::move(sink)), clock(std::move(clock))
{
}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::show(qsizetype done)
{
    const qint64 now = clock();
    if (now < patience || now < lastShown + interval)
        return;
    lastShown = now;
    visible = true;
    QByteArray line("\r\033[K");
    line.append(QByteArray::number(done)).append(" of ");
    line.append(QByteArray::number(total)).append(" homes");
    sink(line);
}

void ProgressLine::clear()
{
    if (visible)
        sink("\r\033[K");
    visible = false;
}

} // namespace varnel::cli
