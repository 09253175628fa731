#include "cli/HomeCommands.h"

#include "backup/LoginItemSave.h"
#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/TextWidth.h"
#include "loginitems/PendingLoginItems.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

namespace varnel::cli {

namespace {

using Outcome = LoginItemsReport::Outcome;

struct Words {
    QString verb;
    QString summary;
    QString details;
};

Words wordsOf(LoginItemChange::Action action)
{
    const QString once = u"What is so already is left alone, and no backup file is made."_s;
    switch (action) {
    case LoginItemChange::Add:
        return {u"add"_s, u"Adds an application to the login items, switched off"_s,
                u"The application goes among the items that are off. The next step is\n"
                u"'varnelctl login-items enable PATH': only then does it open at login.\n"
                u"PATH need not lead anywhere on this machine; a home folder can be prepared for\n"
                u"another. Without a slash at its beginning it begins in the current folder.\n"_s
                    + once};
    case LoginItemChange::Remove:
        return {u"remove"_s, u"Takes an application out of the login items, on or off"_s,
                u"An entry of the session's list is kept by this program, and\n"
                u"'varnelctl login-items enable PATH' brings it back as it was."_s};
    case LoginItemChange::Enable:
        return {u"enable"_s, u"Lets a login item open at login"_s,
                u"PATH is an item that is off, or one that this program took out of the session's\n"
                u"list before: its entry comes back as it was.\n"_s
                    + once};
    case LoginItemChange::Disable:
        break;
    }
    return {u"disable"_s, u"Keeps a login item from opening at login, and remembers it"_s,
            u"The entry is kept as it is; 'varnelctl login-items enable PATH' brings it back.\n"_s
                + once};
}

QJsonObject changeObject(const LoginItemsReport &report)
{
    QJsonArray changed;
    if (report.outcome == Outcome::Changed)
        changed.append(QJsonObject {
            {u"path"_s, report.change.path},
            {u"action"_s, loginItemActionString(report.change.actionId, report.change.path)}});
    QJsonObject object {
        {u"backup"_s, report.backupFile.isNull() ? QJsonValue() : QJsonValue(report.backupFile)},
        {u"changed"_s, changed},
        {u"dryRun"_s, report.dryRun}};
    QJsonArray failures;
    for (const Error &error : report.failures)
        failures.append(QJsonObject {{u"message"_s, error.text}});
    if (!failures.isEmpty())
        object.insert(u"failures"_s, failures);
    return object;
}

QString text(const LoginItemsReport &report, const Style &style)
{
    if (report.outcome == Outcome::Nothing)
        return u"Nothing to change.\n"_s;
    if (report.outcome != Outcome::Changed)
        return {};
    const LoginItemChange &change = report.change;
    Table table;
    table.addHeading(report.dryRun ? u"Would change"_s : u"Changed"_s);
    table.addRow({{loginItemActionString(change.actionId, change.path)}});
    if (report.dryRun)
        return table.text(style);
    QString lines = table.text(style) + u'\n';
    if (!report.backupFile.isNull())
        lines += u"Way back: " + printable(report.backupFile) + u'\n';
    if (change.actionId == LoginItemChange::Add)
        lines += u"It does not open at login yet: 'login-items enable' is the next step.\n";
    return lines;
}

ExitStatus statusOf(const LoginItemsReport &report)
{
    switch (report.outcome) {
    case Outcome::Unknown:
        return ExitStatus::Negative;
    case Outcome::Refused:
        return ExitStatus::Failed;
    case Outcome::Unchanged:
        // What did not come into the list has its way back in a backup file by then.
        return report.change.actionId == LoginItemChange::Enable ? ExitStatus::Partly
                                                                 : ExitStatus::Failed;
    case Outcome::Halfway:
        return ExitStatus::Partly;
    case Outcome::Nothing:
    case Outcome::Changed:
        break;
    }
    return report.failures.isEmpty() ? ExitStatus::Done : ExitStatus::Partly;
}

QStringList messagesOf(const LoginItemsReport &report)
{
    QStringList messages;
    if (report.outcome == Outcome::Unknown)
        messages.append(report.change.path + u": no login item");
    for (const Error &error : report.failures)
        messages.append(report.change.path + u": " + error.text);
    if (report.outcome == Outcome::Halfway && !report.keptIn.isNull())
        messages.append(report.change.path + u": taken out of the list and kept in " + report.keptIn
                        + u"; 'login-items enable' brings it back");
    // A list that can't be read has no error of its own: what is in it is just not seen.
    if (messages.isEmpty() && statusOf(report) != ExitStatus::Done)
        messages.append(report.change.path
                        + u": not seen in the list as it should be; 'login-items list' shows it");
    return messages;
}

HomeOutcome outcomeOf(const LoginItemsReport &report)
{
    HomeOutcome outcome;
    outcome.status = statusOf(report);
    outcome.messages = messagesOf(report);
    outcome.changes = report.outcome == Outcome::Changed || report.outcome == Outcome::Halfway;
    outcome.dryRun = report.dryRun;
    outcome.text = [report](const Style &style) { return text(report, style); };
    outcome.object = [report] { return changeObject(report); };
    return outcome;
}

} // namespace

CommandDescription LoginItemsChangeCommand::description() const
{
    const Words words = wordsOf(action);
    const QString name = u"login-items " + words.verb;
    return {words.summary,
            words.details,
            {{u"PATH"_s, u"the application, as 'login-items list' shows it"_s,
              ParameterInfo::Count::One,
              action == LoginItemChange::Add ? Completes::File : Completes::LoginItem}},
            {dryRunOption()},
            {name + u" /Applications/Mail.app",
             name + u" /Applications/Mail.app --home /mnt/disk/Users/anna"}};
}

Result<HomeCommand::Work> LoginItemsChangeCommand::prepare(const Request &request) const
{
    const QString typed = request.arguments.first();
    if (typed.isEmpty())
        return Error {ErrorCode::Invalid, u"PATH is empty"_s};
    return Work([wanted = action, typed, &request](const HomeFolder &home) {
        HomeSession session(home);
        const QString absolute = QDir::cleanPath(QFileInfo(typed).absoluteFilePath());
        const Result<LoginItemsReport> saved =
            saveLoginItem(session.workspace(), {wanted, typed, absolute}, termsOf(home, request));
        return saved ? outcomeOf(saved.value()) : HomeOutcome::failed(saved.error());
    });
}

} // namespace varnel::cli
