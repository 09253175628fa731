#include "cli/Outcome.h"

#include <QSet>

namespace varnel::cli {

ExitStatus failure(const Error &error)
{
    Console::message(error.text);
    return error.code == ErrorCode::Invalid ? ExitStatus::Usage : ExitStatus::Failed;
}

ExitStatus readingStatus(const HomeSession &session, const QList<SettingReport> &reports)
{
    const QList<Error> errors = session.unreadableFiles(reports);
    for (const Error &error : errors)
        Console::message(error.text);
    if (errors.isEmpty())
        return ExitStatus::Done;
    QSet<QString> files;
    for (const SettingReport &report : reports)
        files.insert(report.row->file);
    return errors.size() < files.size() ? ExitStatus::Partly : ExitStatus::Failed;
}

} // namespace varnel::cli
