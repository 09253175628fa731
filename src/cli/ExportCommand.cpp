#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/HomeCommand.h"
#include "cli/HomesNamed.h"
#include "cli/Lookup.h"
#include "cli/TextWidth.h"
#include "plist/XmlEncoding.h"
#include "profiles/ConfigurationProfile.h"
#include "profiles/DefaultsScript.h"
#include "profiles/ProfileWriter.h"
#include "settings/ValueText.h"

#include <QDateTime>
#include <QSet>

#include <optional>

namespace varnel::cli {

namespace {

const QString allOption = QStringLiteral("all");
const QString formatOption = QStringLiteral("format");
const QString groupOption = QStringLiteral("group");
const QString setOnceOption = QStringLiteral("set-once");
const QString forcedOption = QStringLiteral("forced");

enum class Format { Json, PropertyList, Defaults, MobileConfig };

/// What was asked for.
struct Wish {
    Format format = Format::Json;
    bool setOnce = false;
    bool all = false;
    QList<const SettingRow *> rows;
};

Error wrong(const QString &text)
{
    return {ErrorCode::Invalid, text};
}

Result<Format> formatNamed(const QString &name)
{
    if (name.isNull() || name == u"json")
        return Format::Json;
    if (name == u"plist")
        return Format::PropertyList;
    if (name == u"defaults")
        return Format::Defaults;
    if (name == u"mobileconfig")
        return Format::MobileConfig;
    return wrong(u"unknown format '" + name
                 + u"'; the formats are json, plist, defaults, mobileconfig");
}

Result<void> checkTogether(const Request &request, Format format)
{
    const bool managed = request.has(setOnceOption) || request.has(forcedOption);
    if (managed && format != Format::MobileConfig)
        return wrong(u"--set-once and --forced are for the format mobileconfig"_s);
    if (request.has(setOnceOption) && request.has(forcedOption))
        return wrong(u"--set-once and --forced exclude each other"_s);
    if (request.has(u"json"_s) && format != Format::Json)
        return wrong(u"--json is for the format json, which is a JSON object itself"_s);
    return {};
}

/// Of the groups that were named; of all, when none was.
Result<QList<const SettingRow *>> rowsOfGroups(const Request &request)
{
    QSet<ModuleId> groups;
    for (const QString &name : request.options.value(groupOption)) {
        const Result<const ModuleRow *> group = lookUpGroup(name);
        if (!group)
            return group.error();
        groups.insert(group.value()->id);
    }
    QList<const SettingRow *> rows = settingsInOutlineOrder();
    if (request.has(groupOption))
        rows.removeIf([&](const SettingRow *row) { return !groups.contains(row->module); });
    return rows;
}

Result<Wish> wishOf(const Request &request)
{
    const Result<Format> format = formatNamed(request.value(formatOption));
    if (!format)
        return format.error();
    if (const Result<void> fits = checkTogether(request, format.value()); !fits)
        return fits.error();
    const Result<QList<const SettingRow *>> rows = rowsOfGroups(request);
    if (!rows)
        return rows.error();
    return Wish {format.value(), request.has(setOnceOption), request.has(allOption), rows.value()};
}

/// Now, or the time that a build gives to everything that it makes.
QDateTime timestamp()
{
    bool given = false;
    const qint64 seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&given);
    return given ? QDateTime::fromSecsSinceEpoch(seconds).toUTC() : QDateTime::currentDateTimeUtc();
}

Result<Translation> translated(const Profile &profile, const Wish &wish)
{
    switch (wish.format) {
    case Format::Json:
        break;
    case Format::PropertyList: {
        Result<QByteArray> bytes = profilePropertyList(profile);
        if (!bytes)
            return bytes.error();
        return Translation {std::move(bytes).value(), {}};
    }
    case Format::Defaults:
        return defaultsScript(profile);
    case Format::MobileConfig:
        return configurationProfile(
            profile, wish.setOnce ? std::optional(timestamp()) : std::optional<QDateTime>());
    }
    return Translation {printableJson(profileJson(profile)), {}};
}

/// The text as it is; on a terminal nothing in it steers that, and lines stay lines.
QString shownText(const QByteArray &bytes, const Style &style)
{
    QString text = QString::fromUtf8(bytes);
    if (!style.terminal)
        return text;
    QStringList lines = text.split(u'\n');
    for (QString &line : lines) {
        QStringList parts = line.split(u'\t');
        for (QString &part : parts)
            part = printable(part);
        line = parts.join(u'\t');
    }
    return lines.join(u'\n');
}

/// Whether the format can hold the setting's value; XML lacks some characters.
Result<void> checkForFormat(const SettingChange &setting, Format format)
{
    const bool isXml = format == Format::PropertyList || format == Format::MobileConfig;
    if (isXml && !plist::escapeXml(setting.newValue.text))
        return wrong(setting.row->name + u": its text holds a character that XML cannot hold");
    return checkForProfile(setting);
}

/// What goes into the profile; a message for each value that no profile can hold.
QList<SettingChange> settingsToExport(const QList<SettingReport> &reports, const Wish &wish,
                                      QStringList &messages)
{
    QList<SettingChange> settings;
    for (const SettingReport &report : reports) {
        const SettingRow &row = *report.row;
        const SettingChange setting {&row, {}, report.reading.value};
        if (!wish.all && meanTheSame(row, setting.newValue, defaultValue(row)))
            continue;
        if (const Result<void> fits = checkForFormat(setting, wish.format); fits)
            settings.append(setting);
        else
            messages.append(u"left out: "_s + fits.error().text);
    }
    return settings;
}

HomeOutcome exported(const HomeFolder &home, const Wish &wish)
{
    const HomeSession session(home);
    const QList<SettingReport> reports = session.reports(wish.rows);
    HomeOutcome outcome;
    const Result<Profile> profile = makeProfile(settingsToExport(reports, wish, outcome.messages));
    if (!profile)
        return HomeOutcome::failed(profile.error());
    const bool complete = outcome.messages.isEmpty();
    const Result<Translation> translation = translated(profile.value(), wish);
    if (!translation)
        return HomeOutcome::failed({ErrorCode::Failed, translation.error().text});
    for (const QString &line : translation.value().leftOut)
        outcome.messages.append(u"left out: "_s + line);
    outcome.text = [bytes = translation.value().bytes](const Style &style) {
        return shownText(bytes, style);
    };
    outcome.object = [profile = profile.value()] { return profileObject(profile); };
    outcome.noteUnreadableFiles(session, reports);
    if (!complete && outcome.status == ExitStatus::Done)
        outcome.status = ExitStatus::Partly;
    return outcome;
}

CommandDescription describeExport()
{
    return {
        u"Writes the settings as a profile"_s,
        u"Writes the settings that have another value than their default to standard output.\n"
        u"'json' and 'plist' are what 'diff' and 'apply' read. 'defaults' is a shell script for\n"
        u"an account that somebody is logged in to. 'mobileconfig' is a configuration profile\n"
        u"for a device manager. What the last two cannot say is left out; a message names it.\n"
        u"Of several homes, only --json writes the profiles: an object with one for each."_s,
        {},
        {{allOption, {}, u"all settings, those at their default too"_s},
         {formatOption,
          u"FORMAT"_s,
          u"json, plist, defaults or mobileconfig; json without it"_s,
          false,
          Completes::Words,
          {u"json"_s, u"plist"_s, u"defaults"_s, u"mobileconfig"_s}},
         {groupOption, u"GROUP"_s,
          u"the settings of a group only, as 'list' takes it; may be repeated"_s, false,
          Completes::Group},
         {forcedOption, {}, u"mobileconfig: the user can't change the values (as without it)"_s},
         {setOnceOption, {}, u"mobileconfig: set once, then the user's to change"_s}},
        {u"export > lab.json"_s, u"export --format plist --all --home /mnt/disk/Users/anna"_s,
         u"export --format mobileconfig --set-once --group Dock > dock.mobileconfig"_s}};
}

Result<HomeCommand::Work> prepareExport(const Request &request)
{
    // One file after the other on standard output would be no file that anything reads.
    if (namesManyHomes(request) && !request.has(u"json"_s))
        return wrong(u"a profile is that of one home; several need --json, whose object has one for"
                     u" each"_s);
    const Result<Wish> wish = wishOf(request);
    if (!wish)
        return wish.error();
    return HomeCommand::Work(
        [wish = wish.value()](const HomeFolder &home) { return exported(home, wish); });
}

} // namespace

Commands exportCommands()
{
    return {{u"export"_s, {}, homeCommand<describeExport, prepareExport>}};
}

} // namespace varnel::cli
