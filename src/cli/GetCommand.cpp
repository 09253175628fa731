#include "cli/HomeCommands.h"

#include "base/Literals.h"
#include "cli/Lookup.h"
#include "cli/StoredText.h"
#include "cli/TextWidth.h"
#include "settings/ValueText.h"

namespace varnel::cli {

namespace {

const QString keyOption = QStringLiteral("key");

QString shown(const QString &value, const Style &style)
{
    return style.terminal ? printable(value) : value;
}

HomeOutcome storedIn(const HomeFolder &home, const SettingRow &row, const QString &key)
{
    const HomeSession session(home);
    const QList<SettingReport> reports = session.reports({&row});
    const plist::Value stored = session.storedUnder(reports.first(), key);
    HomeOutcome outcome;
    outcome.noteUnreadableFiles(session, reports);
    outcome.object = [report = reports.first(), key, stored] {
        QJsonObject object = settingObject(report);
        object.insert(keyOption, key);
        object.insert(u"stored"_s, storedJson(stored));
        return object;
    };
    const Result<QString> text = storedText(stored);
    if (text) {
        outcome.text = [text = text.value()](const Style &style) {
            // An array is several lines by itself.
            return text.startsWith(u"(\n") ? QString(text + u'\n')
                                           : QString(shown(text, style) + u'\n');
        };
    } else if (outcome.status == ExitStatus::Done) {
        const bool missing = stored.kind == plist::Kind::Missing;
        outcome.status = missing ? ExitStatus::Negative : ExitStatus::Failed;
        outcome.messages.append(key + u": " + (missing ? u"not stored"_s : text.error().text));
    }
    return outcome;
}

} // namespace

CommandDescription GetCommand::description() const
{
    return {
        u"Prints the value of one setting"_s,
        u"The value is what 'set' takes: a choice's index, a number, a text, -1 for the default\n"
        u"of numbers and texts. After a tabulator follows the value in words, where these say\n"
        u"more. A setting that is not stored has its default value, which is an answer like any\n"
        u"other (status 0); 'get --json' tells whether it is stored, in \"found\".\n"
        u"\n"
        u"With --key it prints what stands in the file (1 and 0 for booleans), or ends with 1\n"
        u"where nothing does. 'get DOMAIN KEY' does the same for the setting stored there; DOMAIN\n"
        u"is the preference file's name without .plist, its path, NSGlobalDomain or -g."_s,
        {settingParameter()},
        {{keyOption, u"KEY"_s, u"print what stands in the file under this key of the setting"_s}},
        {u"get dock-size"_s, u"get 1300 --json"_s, u"get 1300 | cut -f1"_s,
         u"get com.apple.dock tilesize"_s}};
}

Result<HomeCommand::Work> GetCommand::prepare(const Request &request) const
{
    if (!request.has(keyOption))
        return OneSettingCommand::prepare(request);
    const Result<const SettingRow *> row = lookUpSetting(request.arguments.first());
    if (!row)
        return row.error();
    const QString key = request.value(keyOption);
    const bool isInside = row.value()->mechanism == Mechanism::NestedChoice;
    if (isInside ? row.value()->keys.last() != key : !row.value()->keys.contains(key))
        return Error {ErrorCode::Invalid,
                      row.value()->name + u" is not stored under '" + key + u'\''};
    return Work(
        [row = row.value(), key](const HomeFolder &home) { return storedIn(home, *row, key); });
}

QString GetCommand::text(const SettingReport &report, const Style &style) const
{
    const QString value = exchangedText(*report.row, report.reading.value);
    const QString label = labelText(*report.row, report.reading.value);
    QStringList words;
    if (label != value)
        words.append(label);
    if (report.reading.notText)
        words.append(notTextNote());
    return shown(value, style) + (words.isEmpty() ? QString() : u'\t' + words.join(u", ")) + u'\n';
}

} // namespace varnel::cli
