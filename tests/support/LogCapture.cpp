#include "support/LogCapture.h"

namespace varnel::test {

LogCapture *LogCapture::active = nullptr;

LogCapture::LogCapture() : previous(qInstallMessageHandler(&LogCapture::handle))
{
    active = this;
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(previous);
    active = nullptr;
}

void LogCapture::handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QString category = QString::fromUtf8(context.category);
    if (category.startsWith(QStringLiteral("varnel.")))
        active->lines.append({category, text});
    else if (active->previous != nullptr)
        active->previous(type, context, text);
}

QStringList LogCapture::texts(const QString &category) const
{
    QStringList found;
    for (const Line &line : lines) {
        if (line.category == category)
            found << line.text;
    }
    return found;
}

QStringList LogCapture::texts() const
{
    QStringList found;
    for (const Line &line : lines)
        found << line.text;
    return found;
}

} // namespace varnel::test
