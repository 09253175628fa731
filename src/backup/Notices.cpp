#include "backup/Notices.h"

#include "backup/KeptRun.h"
#include "base/Literals.h"
#include "settings/Catalogue.h"
#include "shell/QuitDecision.h"

#include <QSet>

#include <algorithm>

namespace varnel {

namespace {

using Step = SaveFailure::Step;
using Tone = Notice::Tone;

QString lastComponent(const QString &path)
{
    return path.section(u'/', -1, -1, QString::SectionSkipEmpty);
}

/// An error's text is the file's path and the reason.
struct NamedReason {
    QString file; ///< without its folder; empty where the text names none
    QString reason;
};

/// Of several places where the path could end, the one behind a file that is known: a folder's name
/// may look like the end, too.
NamedReason split(const QString &text, const QString &knownFile = {})
{
    const QString separator = u": "_s;
    if (!text.startsWith(u'/'))
        return {{}, text};
    const QString end = u'/' + knownFile + separator;
    if (const qsizetype known = text.indexOf(end); !knownFile.isEmpty() && known >= 0)
        return {knownFile, text.mid(known + end.size())};
    const qsizetype at = text.indexOf(separator);
    if (at < 0)
        return {{}, text};
    return {lastComponent(text.left(at)), text.mid(at + separator.size())};
}

/// "Clock.app can't be added (disableLoginItems.sqlite: database is locked)"
QString cannot(const QString &file, const QString &done, const Error &error)
{
    const NamedReason why = split(error.text, file);
    const bool another = !why.file.isEmpty() && why.file != file;
    return file + u" can't be " + done + u" ("
        + (another ? why.file + u": " + why.reason : why.reason) + u')';
}

QString damaged(const QString &file, const Error &error)
{
    return file + u" is damaged (" + split(error.text, file).reason + u')';
}

QString count(qsizetype number, const QString &thing)
{
    return QString::number(number) + u' ' + thing + (number == 1 ? u""_s : u"s"_s);
}

/// "Dock", "Dock and Finder", "Dock, Finder and Mail"
QString enumerated(const QStringList &names)
{
    if (names.size() < 2)
        return names.join(QString());
    return names.first(names.size() - 1).join(u", "_s) + u" and " + names.last();
}

QString reasonOf(const SaveFailure &failure, const QString &backupFile)
{
    const Error &error = failure.error;
    if (failure.step == Step::Backup) {
        // The library speaks of the statement's syntax, which tells a person nothing.
        if (failure.change.oldValue.text.contains(u'\''))
            return noApostrophe();
        return cannot(lastComponent(backupFile), u"written"_s, error);
    }
    const QString &row = failure.change.row->file;
    const QString file = row.isNull() ? split(error.text).file : row.mid(1);
    return error.code == ErrorCode::Unloadable ? damaged(file, error)
                                               : cannot(file, u"written"_s, error);
}

QString reasonOf(const LoginItemFailure &failure, const QString &backupFile)
{
    if (failure.isWayBack)
        return cannot(lastComponent(backupFile), u"written"_s, failure.error);
    QString done = u"added"_s;
    if (failure.change.actionId == LoginItemChange::Remove)
        done = u"removed"_s;
    else if (failure.change.actionId == LoginItemChange::Enable)
        done = u"enabled"_s;
    else if (failure.change.actionId == LoginItemChange::Disable)
        done = u"disabled"_s;
    return cannot(lastComponent(failure.change.path), done, failure.error);
}

QList<FailedStep> of(const PageSave &save, Step step)
{
    QList<FailedStep> failures = save.failures;
    failures.removeIf([step](const FailedStep &failure) { return failure.step != step; });
    return failures;
}

/// Each once.
QString reasons(const QList<FailedStep> &failures)
{
    QStringList texts;
    for (const FailedStep &failure : failures)
        texts.append(failure.reason);
    texts.removeDuplicates();
    return texts.join(u"; "_s);
}

QString notSavedText(qsizetype changes, const QList<FailedStep> &failures)
{
    const qsizetype failed = failures.size();
    const QString subject = changes == 1
        ? u"The change was not saved: "_s
        : u"%1 of %2 changes %3 not saved: "_s.arg(failed).arg(changes).arg(
            failed == 1 ? u"was"_s : u"were"_s);
    return subject + reasons(failures) + u'.';
}

QString noWayBackText(qsizetype saved, const QList<FailedStep> &lost)
{
    const QString why = u" can't be undone: " + reasons(lost) + u'.';
    if (saved == 1)
        return u"Saved, but this change" + why;
    if (lost.size() == saved)
        return u"Saved, but these "_s + count(saved, u"change"_s) + why;
    return u"Saved "_s + count(saved, u"change"_s) + u", but " + QString::number(lost.size())
        + u" of them" + why;
}

QStringList settingGroups(const QSet<int> &settings)
{
    QStringList groups;
    for (const ModuleRow &module : modules())
        if (std::any_of(settings.begin(), settings.end(),
                        [&](int number) { return findSetting(number)->module == module.id; }))
            groups.append(module.shortLocation);
    return groups;
}

QSet<int> settingsOf(const QList<BackupRow> &rows)
{
    QSet<int> settings;
    for (const BackupRow &row : rows)
        if (!row.isLoginItem() && findSetting(row.id) != nullptr)
            settings.insert(row.id);
    return settings;
}

qsizetype itemsIn(const QList<BackupRow> &rows)
{
    return std::count_if(rows.begin(), rows.end(),
                         [](const BackupRow &row) { return row.isLoginItem(); });
}

QString settingsAndItems(qsizetype settings, qsizetype items)
{
    QStringList parts;
    if (settings > 0 || items == 0)
        parts.append(count(settings, u"setting"_s));
    if (items > 0)
        parts.append(count(items, u"login item"_s));
    return enumerated(parts);
}

QString restartText(RestartFlags flags)
{
    QStringList names;
    for (const CloseRow &row : closeRows(flags))
        names.append(row.name);
    if (names.isEmpty())
        return {};
    return u' ' + enumerated(names) + (names.size() == 1 ? u" wants"_s : u" want"_s)
        + u" a restart.";
}

/// What stopped the playback, and why; the file is still needed then.
Notice stoppedNotice(const PageRestore &restore)
{
    const RestoreReport &report = restore.report;
    QString where;
    const NamedReason item = split(report.itemFailures.value(0));
    QString why = item.file.isEmpty() ? item.reason : item.file + u": " + item.reason;
    if (!report.settingFailures.isEmpty()) {
        const SaveFailure &failure = report.settingFailures.first();
        where = u" at “" + failure.change.row->label + u'”';
        why = reasonOf(failure, restore.name);
    } else if (!report.loginItems.isEmpty()) {
        where = u" at “" + lastComponent(report.loginItems.last().loginItemPath()) + u'”';
    }
    const qsizetype items =
        std::max<qsizetype>(0, report.loginItems.size() - report.itemFailures.size());
    const QString before = report.changes.isEmpty() && items == 0
        ? u"nothing"_s
        : settingsAndItems(report.changes.size(), items) + u" before it";
    return {Tone::Failure,
            u"Restoring stopped"_s + where + u": " + why + u". It has restored " + before + u"; "
                + restore.name + u" is still there."};
}

} // namespace

qsizetype PageSave::notSaved() const
{
    return of(*this, Step::Write).size();
}

QString stepText(SaveFailure::Step step)
{
    return step == Step::Write ? u"not written"_s : u"the old value is not in the backup file"_s;
}

QString noApostrophe()
{
    return u"no backup file can hold a text with an apostrophe"_s;
}

PageSave pageSave(const QList<ChangeRecord> &changes, const QList<SaveFailure> &failures,
                  const KeptRun &keeper, const QString &backupFile)
{
    const auto isWanted = [&](const SettingRow *row) {
        return row != nullptr
            && std::any_of(changes.begin(), changes.end(), [row](const ChangeRecord &change) {
                   return change.locationId == row->id;
               });
    };
    const auto isWritten = [&](const SettingRow *row) {
        return std::none_of(failures.begin(), failures.end(), [row](const SaveFailure &failure) {
            return failure.step == Step::Write && failure.change.row == row;
        });
    };
    PageSave save {changes.size(), {}, backupFile};
    for (const SaveFailure &failure : failures) {
        // The old values of the whole run are offered again with each save.
        const SettingRow *row = failure.change.row;
        if (isWanted(row)
            && (failure.step == Step::Write || (isWritten(row) && !keeper.hasWayBack(row->id))))
            save.failures.append({failure.step, row->label, reasonOf(failure, backupFile)});
    }
    return save;
}

PageSave pageSave(const QList<LoginItemChange> &changes, const QList<LoginItemFailure> &failures,
                  const KeptRun &keeper, const QString &backupFile)
{
    const auto isMade = [&](const LoginItemChange &change) {
        return std::none_of(failures.begin(), failures.end(), [&](const LoginItemFailure &failure) {
            return !failure.isWayBack && failure.change.path == change.path;
        });
    };
    PageSave save {changes.size(), {}, backupFile};
    for (const LoginItemFailure &failure : failures) {
        const LoginItemChange &change = failure.change;
        if (!failure.isWayBack || (isMade(change) && !keeper.hasWayBack(change.path)))
            save.failures.append({failure.isWayBack ? Step::Backup : Step::Write,
                                  lastComponent(change.path), reasonOf(failure, backupFile)});
    }
    return save;
}

Notice noticeOf(const PageSave &save)
{
    const QList<FailedStep> failed = of(save, Step::Write);
    const QList<FailedStep> lost = of(save, Step::Backup);
    const qsizetype saved = save.changes - failed.size();
    if (!failed.isEmpty())
        return {Tone::Failure,
                notSavedText(save.changes, failed)
                    + (lost.isEmpty() ? QString() : u' ' + noWayBackText(saved, lost))};
    if (!lost.isEmpty())
        return {Tone::Caution, noWayBackText(saved, lost)};
    return {Tone::Quiet,
            u"Saved "_s + count(saved, u"change"_s) + u". Old values are in "
                + lastComponent(save.backupFile) + u'.'};
}

QList<QStringList> detailsOf(const PageSave &save)
{
    QList<QStringList> rows;
    for (const FailedStep &failure : save.failures)
        rows.append({failure.what, stepText(failure.step), failure.reason});
    return rows;
}

std::optional<Notice> noticeOfFiles(const QList<Error> &errors)
{
    QStringList damagedFiles;
    QStringList unreadable;
    for (const Error &error : errors) {
        if (error.code == ErrorCode::Unloadable)
            damagedFiles.append(split(error.text).file);
        else
            unreadable.append(cannot(split(error.text).file, u"read"_s, error));
    }
    const qsizetype files = damagedFiles.size() + unreadable.size();
    if (files == 0)
        return std::nullopt;
    if (!damagedFiles.isEmpty())
        unreadable.prepend(enumerated(damagedFiles)
                           + (damagedFiles.size() == 1 ? u" is damaged"_s : u" are damaged"_s));
    return Notice {Tone::Caution,
                   unreadable.join(u"; "_s)
                       + (files == 1 ? u": its settings"_s : u": their settings"_s)
                       + u" are shown as defaults and won't be changed."};
}

Notice noticeOf(const PageRestore &restore)
{
    const RestoreReport &report = restore.report;
    if (!report.complete())
        return stoppedNotice(restore);
    // Those that stood so already are as they were, too.
    QSet<int> settings = settingsOf(restore.rows);
    for (const SettingChange &change : report.changes)
        settings.insert(change.row->id);
    const QString done =
        u"Restored: "_s + settingsAndItems(settings.size(), report.loginItems.size());
    if (restore.notDeleted)
        return {
            Tone::Caution,
            done + u", but "
                + cannot(split(restore.notDeleted->text).file, u"deleted"_s, *restore.notDeleted)
                + u'.' + restartText(report.restart)};
    return {Tone::Quiet, done + u'.' + restartText(report.restart)};
}

Notice noticeOfUnreadable(const QString &name)
{
    return {Tone::Failure, name + u" can't be read; nothing was changed."};
}

Notice noticeOfDeletion(const QStringList &names, const std::optional<Error> &error)
{
    if (error)
        return {Tone::Failure, cannot(split(error->text).file, u"deleted"_s, *error) + u'.'};
    return {Tone::Quiet,
            u"Deleted "_s
                + (names.size() == 1 ? names.first() : count(names.size(), u"backup file"_s))
                + u'.'};
}

QString unreadableInWords(const QString &name, const Error &error)
{
    return cannot(name, u"read"_s, error);
}

Notice noticeOfSelection(const QString &played, qsizetype selected)
{
    return {Tone::Caution,
            u"Restore plays back %1 only and deletes all %2 selected files."_s.arg(
                played, QString::number(selected))};
}

QString contentsInWords(const QList<BackupRow> &rows)
{
    const QSet<int> settings = settingsOf(rows);
    const qsizetype items = itemsIn(rows);
    if (settings.isEmpty() && items == 0)
        return u"holds nothing that can be undone"_s;
    QStringList parts;
    if (!settings.isEmpty())
        parts.append(count(settings.size(), u"setting"_s) + u" of "
                     + settingGroups(settings).join(u", "_s));
    if (items > 0)
        parts.append(count(items, u"login item"_s));
    return parts.join(u"; "_s);
}

} // namespace varnel
