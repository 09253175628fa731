#include "cli/CommandFamilies.h"

#include "backup/LoginItemSave.h"
#include "backup/LoginItemsOfHome.h"
#include "base/Literals.h"
#include "cli/DryRun.h"
#include "cli/HomeCommand.h"
#include "cli/ListOption.h"
#include "cli/Table.h"
#include "cli/TextWidth.h"
#include "loginitems/LoginItemsChoice.h"
#include "loginitems/PendingLoginItems.h"
#include "platform/linux/LinuxSystemDisk.h"
#include "sysinfo/SystemRows.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

namespace varnel::cli {

namespace {

/// What is told of any command's list: that the account has another one, where it has.
QString noticeOf(HomeSession &session)
{
    const LinuxSystemDisk disk(session.home());
    const SystemVersion version = readSystemVersion(disk, disk.root());
    return newerListSentence(session.home(), session.workspace().files(), version.productVersion);
}

void addNotice(HomeSession &session, HomeOutcome &outcome)
{
    const QString notice = noticeOf(session);
    if (notice.isNull())
        return;
    outcome.messages.append(notice);
    outcome.object = [object = outcome.object, notice] {
        QJsonObject withNotice = object();
        withNotice.insert(u"notice"_s, notice);
        return withNotice;
    };
}

QJsonObject listObject(const QList<LoginItemRow> &rows, LoginItemsList list)
{
    QJsonArray items;
    for (const LoginItemRow &row : rows)
        items.append(QJsonObject {
            {u"name"_s, row.name}, {u"path"_s, row.path}, {u"enabled"_s, row.enabled}});
    return {{u"list"_s, wordOf(list)}, {u"loginItems"_s, items}};
}

QString table(const QList<LoginItemRow> &rows, LoginItemsList list, const Style &style)
{
    const bool isAccounts = list == LoginItemsList::Account;
    if (rows.isEmpty())
        return isAccounts ? u"No login items of the Mac account.\n"_s : u"No login items.\n"_s;
    Table table;
    if (isAccounts)
        table.addHeading(u"Login items of the Mac account"_s);
    for (const LoginItemRow &row : rows)
        table.addRow({{row.enabled ? u"on"_s : u"off"_s,
                       row.enabled ? Table::Look::Strong : Table::Look::Quiet},
                      {row.name},
                      {row.path, Table::Look::Quiet}});
    return table.text(style);
}

QString aboutLists()
{
    return u"The session's list is one's own session's, or, with --home, that folder's\n"
           u".config/autostart alone; the account's is that of a Mac up to 10.12, in\n"
           u"Library/Preferences/com.apple.loginitems.plist. Without --list, one's own home has\n"
           u"the session's, and any other the account's, unless it has a .config/autostart and\n"
           u"no such file."_s;
}

CommandDescription describeList()
{
    return {u"Lists what opens at login, and what was taken out of that list"_s,
            u"\"on\" opens at login; \"off\" is kept by this program and does not.\n"_s
                + aboutLists(),
            {},
            {listOption()},
            {u"login-items list"_s, u"login-items list --json --home /mnt/disk/Users/anna"_s,
             u"login-items list --list session --home /mnt/disk/Users/anna"_s}};
}

Result<HomeCommand::Work> prepareList(const Request &request)
{
    const Result<std::optional<LoginItemsList>> chosen = chosenList(request);
    if (!chosen)
        return chosen.error();
    return HomeCommand::Work([named = chosen.value()](const HomeFolder &home) {
        HomeSession session(home);
        LoginItemsOfHome items(session.workspace(), false, named);
        const QList<LoginItemRow> rows = items.rows();
        const LoginItemsList list = items.listInUse();
        HomeOutcome outcome;
        outcome.text = [rows, list](const Style &style) { return table(rows, list, style); };
        outcome.object = [rows, list] { return listObject(rows, list); };
        // Of a session's list, which is many files, each says in the log why it is not seen.
        const Result<QList<SessionLoginItem>> listed = items.list().snapshot();
        if (list == LoginItemsList::Account && !listed) {
            outcome.status = ExitStatus::Failed;
            outcome.messages.append(listed.error().text);
        }
        addNotice(session, outcome);
        return outcome;
    });
}

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
        return {
            u"add"_s, u"Adds an application to the login items, switched off"_s,
            u"The application goes among the items that are off. The next step is\n"
            u"'varnelctl login-items enable PATH': only then does it open at login.\n"
            u"PATH need not lead anywhere on this machine; a home folder can be prepared for\n"
            u"another. Without a slash at its beginning it begins in the current folder.\n"
            u"In a Mac account's list only the Mac itself makes an entry: what was never there\n"
            u"stays off.\n"_s
                + once};
    case LoginItemChange::Remove:
        return {u"remove"_s, u"Takes an application out of the login items, on or off"_s,
                u"An entry of the list is kept by this program, and\n"
                u"'varnelctl login-items enable PATH' brings it back as it was."_s};
    case LoginItemChange::Enable:
        return {u"enable"_s, u"Lets a login item open at login"_s,
                u"PATH is an item that is off, or one that this program took out of the list\n"
                u"before: its entry comes back as it was. One that was never in a Mac account's\n"
                u"list can't come into it, and stays off.\n"_s
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
        {u"dryRun"_s, report.dryRun},
        {u"list"_s, wordOf(report.list)}};
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
    const bool isAccounts = report.list == LoginItemsList::Account;
    const QString where = isAccounts ? u" in the Mac account's list"_s : QString();
    table.addHeading((report.dryRun ? u"Would change"_s : u"Changed"_s) + where);
    table.addRow({{loginItemActionString(change.actionId, change.path)}});
    if (report.dryRun)
        return table.text(style);
    QString lines = table.text(style) + u'\n';
    if (!report.backupFile.isNull())
        lines += u"Way back: " + printable(report.backupFile) + u'\n';
    if (change.actionId == LoginItemChange::Add)
        lines += isAccounts && report.keptIn.isNull()
            ? u"It does not open at login: only the Mac itself can make its entry in that list.\n"_s
            : u"It does not open at login yet: 'login-items enable' is the next step.\n"_s;
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

template <LoginItemChange::Action action> CommandDescription describeChange()
{
    const Words words = wordsOf(action);
    const QString name = u"login-items " + words.verb;
    return {words.summary,
            words.details,
            {{u"PATH"_s, u"the application, as 'login-items list' shows it"_s,
              ParameterInfo::Count::One,
              action == LoginItemChange::Add ? Completes::File : Completes::LoginItem}},
            {dryRunOption(), listOption()},
            {name + u" /Applications/Mail.app",
             name + u" /Applications/Mail.app --home /mnt/disk/Users/anna"}};
}

template <LoginItemChange::Action action>
Result<HomeCommand::Work> prepareChange(const Request &request)
{
    const QString typed = request.arguments.first();
    if (typed.isEmpty())
        return Error {ErrorCode::Invalid, u"PATH is empty"_s};
    const Result<std::optional<LoginItemsList>> list = chosenList(request);
    if (!list)
        return list.error();
    return HomeCommand::Work([typed, list = list.value(), &request](const HomeFolder &home) {
        HomeSession session(home);
        const QString absolute = QDir::cleanPath(QFileInfo(typed).absoluteFilePath());
        const Result<LoginItemsReport> saved = saveLoginItem(
            session.workspace(), {action, typed, absolute}, termsOf(home, request), list);
        if (!saved)
            return HomeOutcome::failed(saved.error());
        HomeOutcome outcome = outcomeOf(saved.value());
        addNotice(session, outcome);
        return outcome;
    });
}

template <LoginItemChange::Action action> NamedCommand change()
{
    return {u"login-items " + wordsOf(action).verb,
            {},
            homeCommand<describeChange<action>, prepareChange<action>>};
}

} // namespace

Commands loginItemsCommands()
{
    return {{u"login-items list"_s, {}, homeCommand<describeList, prepareList>},
            change<LoginItemChange::Add>(),
            change<LoginItemChange::Remove>(),
            change<LoginItemChange::Enable>(),
            change<LoginItemChange::Disable>()};
}

} // namespace varnel::cli
