#include "doctor/PreferenceExamination.h"

#include "base/Literals.h"
#include "doctor/Examination.h"
#include "doctor/OddValues.h"
#include "platform/FileStore.h"
#include "settings/Catalogue.h"
#include "settings/PreferenceContent.h"
#include "settings/PreferencePlaces.h"

#include <QRegularExpression>
#include <QSet>

#include <map>
#include <optional>

namespace varnel {

namespace {

/// The settings of one domain, by its file.
using Domains = std::map<QString, QList<const SettingRow *>>;

Domains domains()
{
    Domains domains;
    for (const SettingRow &row : catalogue())
        if (!row.file.isNull())
            domains[row.file].append(&row);
    return domains;
}

/// None where there is no such file, and where it can't be loaded, which is told.
std::optional<PreferenceContent> load(Examination &examination, const QString &path)
{
    examination.checkRights(path);
    const Result<QByteArray> bytes = examination.workspace.files().read(path);
    if (!bytes && bytes.error().code == ErrorCode::NotFound)
        return std::nullopt;
    if (!bytes && bytes.error().code == ErrorCode::NotPermitted) {
        examination.addUnread(path, bytes.error());
        return std::nullopt;
    }
    if (!bytes) {
        if (!examination.isOutOfReach(path))
            examination.add(FindingKind::UnloadableFile, path, bytes.error());
        return std::nullopt;
    }
    Result<PreferenceContent> content = PreferenceContent::of(path, bytes.value());
    if (content)
        return std::move(content).value();
    examination.add(FindingKind::UnloadableFile, path, content.error());
    return std::nullopt;
}

void findFurtherFiles(Examination &examination, const PreferencePlaces &places, const QString &file)
{
    const QString read = places.find(file).path;
    for (const FurtherFile &further : places.furtherFiles(file)) {
        const bool isBeside = further.why == FurtherFile::Why::NotInContainer;
        examination.add(isBeside ? FindingKind::FileBesideContainer : FindingKind::SecondFile,
                        further.path, {read});
    }
}

void findOddValues(Examination &examination, const QString &path, const PreferenceContent &content,
                   const QList<const SettingRow *> &rows)
{
    const auto stored = [&](const QStringList &keyPath) { return content.value(keyPath); };
    for (const SettingRow *row : rows)
        for (const OddValue &odd : oddValues(*row, stored))
            examination.add(FindingKind::NoChoice, path, {odd.text, odd.key, row->name});
}

/// Whether a file's name is that of a domain with the mark of a machine in it: a UUID, or, of older
/// systems, the twelve digits of its network card.
bool isOfOneMachine(const QString &name, const QString &domainFile)
{
    static const QRegularExpression mark(
        u"\\A(.+)\\.(?:[0-9a-f]{12}|[0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12})\\.plist\\z"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QString domain = mark.match(name).captured(1);
    return !domain.isNull()
        && QString(u'/' + domain + u".plist").compare(domainFile, Qt::CaseInsensitive) == 0;
}

QStringList keysHeld(const PreferenceContent &content, const QList<const SettingRow *> &rows)
{
    QStringList keys;
    const auto add = [&](const QStringList &keyPath) {
        const QString key = keyPath.join(u" > ");
        if (!keys.contains(key) && content.value(keyPath).kind != plist::Kind::Missing)
            keys.append(key);
    };
    for (const SettingRow *row : rows)
        for (const QStringList &keyPath : keyPathsOf(*row))
            add(keyPath);
    return keys;
}

void findPerMachineValues(Examination &examination, const QString &folder, const QString &file,
                          const QList<const SettingRow *> &rows)
{
    const auto entries = examination.list(folder);
    if (!entries)
        return;
    for (const HomeInspection::Entry &entry : *entries) {
        if (!isOfOneMachine(entry.name, file))
            continue;
        const QString path = folder + u'/' + entry.name;
        const std::optional<PreferenceContent> content = load(examination, path);
        const QStringList keys = content ? keysHeld(*content, rows) : QStringList();
        if (!keys.isEmpty())
            examination.add(FindingKind::PerMachineValue, path, {keys.join(u", ")});
    }
}

} // namespace

void examinePreferences(Examination &examination)
{
    const HomeFolder &home = examination.workspace.home();
    const PreferencePlaces places(home, examination.workspace.files());
    for (const auto &[file, rows] : domains()) {
        const PreferencePlace place = places.find(file);
        const QString folder = place.path.section(u'/', 0, -2);
        if (place.inContainer)
            examination.checkRights(folder);
        findFurtherFiles(examination, places, file);
        if (const std::optional<PreferenceContent> content = load(examination, place.path))
            findOddValues(examination, place.path, *content, rows);
        findPerMachineValues(examination, folder + u"/ByHost", file, rows);
        // The system keeps those of applications in containers with all the others.
        if (place.inContainer)
            findPerMachineValues(examination, home.preferencesDirectory() + u"/ByHost", file, rows);
    }
}

void examineFile(Examination &examination, const QString &path)
{
    (void)load(examination, path);
}

} // namespace varnel
