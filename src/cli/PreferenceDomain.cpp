#include "cli/PreferenceDomain.h"

#include "base/Literals.h"
#include "settings/Catalogue.h"
#include "settings/PreferencePlaces.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace varnel::cli {

namespace {

const QString ending = QStringLiteral(".plist");
const QString globalFile = QStringLiteral("/.GlobalPreferences.plist");
const QString globalName = QStringLiteral("NSGlobalDomain");

bool isGlobalName(const QString &typed)
{
    const QStringList names {globalName, u"Apple Global Domain"_s, u"-g"_s, u"-globalDomain"_s};
    return names.contains(typed, Qt::CaseInsensitive);
}

QString nameOfFile(const QString &file)
{
    return file == globalFile ? globalName : file.mid(1).chopped(ending.size());
}

/// Every preference file of the catalogue, by the number of its first setting.
QStringList allFiles()
{
    QStringList files;
    for (const SettingRow &row : catalogue())
        if (!row.file.isNull() && !files.contains(row.file))
            files.append(row.file);
    return files;
}

QString allNames()
{
    QStringList names;
    for (const QString &file : allFiles())
        names.append(nameOfFile(file));
    return names.join(u", ");
}

bool isInside(const SettingRow &row)
{
    return row.mechanism == Mechanism::NestedChoice;
}

} // namespace

bool PreferenceDomain::looksLikeOne(const QString &typed)
{
    // What stands behind a sign is the value of a setting, and may be a path.
    const QString name = typed.section(u'=', 0, 0);
    return isGlobalName(typed) || name.contains(u'.') || name.contains(u'/');
}

Result<PreferenceDomain> PreferenceDomain::parse(const QString &typed)
{
    PreferenceDomain domain;
    QString name = typed;
    QString folder;
    if (typed.contains(u'/')) {
        const QFileInfo path(QDir::cleanPath(QFileInfo(typed).absoluteFilePath()));
        folder = path.path();
        if (PreferencePlaces::homeAround(folder, {}).isEmpty())
            return Error {ErrorCode::Invalid,
                          u'\'' + typed + u"' is no file in a home's Library/Preferences"};
        name = path.fileName();
    }
    QString file = isGlobalName(typed) ? globalFile : QString(u'/' + name);
    if (!file.endsWith(ending))
        file += ending;
    for (const QString &known : allFiles())
        if (known.compare(file, Qt::CaseInsensitive) == 0)
            domain.file = known;
    if (domain.file.isNull())
        return Error {ErrorCode::Invalid,
                      u'\'' + typed + u"' is no preference domain with settings; they are "
                          + allNames()};
    if (!folder.isNull())
        domain.home = PreferencePlaces::homeAround(folder, domain.file);
    return domain;
}

QString PreferenceDomain::name() const
{
    return nameOfFile(file);
}

Result<const SettingRow *> PreferenceDomain::settingWithKey(const QString &key) const
{
    QStringList keys;
    for (const SettingRow &row : catalogue()) {
        if (row.file != file)
            continue;
        if (isInside(row) && row.keys.contains(key))
            return Error {ErrorCode::Invalid,
                          u'\'' + key + u"' belongs to a dictionary; its setting is " + row.name};
        if (!isInside(row) && row.keys.contains(key))
            return &row;
        if (!isInside(row))
            keys += row.keys;
    }
    keys.removeDuplicates();
    return Error {ErrorCode::Invalid,
                  u"no setting is stored in " + name() + u" under '" + key + u"'; keys are "
                      + keys.join(u", ")};
}

} // namespace varnel::cli
