#include "base/Literals.h"
#include "profiles/Profile.h"
#include "profiles/ProfileDocument.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"

#include <QSet>

namespace varnel {

namespace {

using Member = ProfileDocument::Member;

Error wrong(const QString &text)
{
    return {ErrorCode::Invalid, text};
}

/// A name out of a file, short enough for a message.
QString quoted(const QString &name)
{
    constexpr qsizetype most = 60;
    return u'\'' + (name.size() > most ? name.left(most) + u"..." : name) + u'\'';
}

bool isJson(QByteArrayView bytes)
{
    if (bytes.startsWith("\xef\xbb\xbf"))
        bytes = bytes.sliced(3);
    return bytes.trimmed().startsWith('{');
}

Result<void> checkVersion(const plist::Value &version)
{
    if (version.kind != plist::Kind::Integer || version.integer < 1)
        return wrong(u"schemaVersion must be a whole number from 1 on"_s);
    if (version.integer > Profile::schemaVersion)
        return wrong(
            u"schemaVersion %1 is newer than this program, which knows %2"_s.arg(version.integer)
                .arg(Profile::schemaVersion));
    return {};
}

Result<void> checkMember(const Member &member)
{
    if (member.name == profileMembers::schemaVersion)
        return checkVersion(member.value);
    if (member.name != profileMembers::settings)
        return wrong(u"unknown member "_s + quoted(member.name));
    if (member.value.kind != plist::Kind::Dictionary)
        return wrong(u"settings must be an object (a dictionary)"_s);
    return {};
}

Result<void> checkRoot(const QList<Member> &root)
{
    QSet<QString> seen;
    for (const Member &member : root) {
        if (seen.contains(member.name))
            return wrong(quoted(member.name) + u" stands there twice");
        seen.insert(member.name);
        if (Result<void> fine = checkMember(member); !fine)
            return fine;
    }
    for (const QString &name : {profileMembers::schemaVersion, profileMembers::settings})
        if (!seen.contains(name))
            return wrong(name + u" is missing");
    return {};
}

Result<SettingValue> valueOf(const SettingRow &row, const plist::Value &value)
{
    if (value.kind == plist::Kind::String)
        return parseValue(row, value.string);
    // A text setting takes any text; a number there is a slip, but for the one that is the default.
    const bool isNumber = value.kind == plist::Kind::Integer
        && (row.mechanism != Mechanism::Text || value.integer == -1);
    if (isNumber)
        return parseValue(row, QString::number(value.integer));
    return wrong(row.name
                 + (row.mechanism == Mechanism::Text
                        ? u": its value must be a text"_s
                        : u": its value must be a whole number or a text"_s));
}

Result<SettingChange> settingOf(const Member &member)
{
    const SettingRow *row = findSetting(QStringView(member.name.toLower()));
    if (!row)
        return wrong(u"unknown setting "_s + quoted(member.name));
    const Result<SettingValue> value = valueOf(*row, member.value);
    if (!value)
        return value.error();
    return SettingChange {row, {}, value.value()};
}

Result<Profile> profileOf(const ProfileDocument &document)
{
    if (const Result<void> fine = checkRoot(document.root); !fine)
        return fine.error();
    QList<SettingChange> settings;
    QSet<const SettingRow *> seen;
    for (const Member &member : document.settings) {
        const Result<SettingChange> setting = settingOf(member);
        if (!setting)
            return setting.error();
        const SettingRow *row = setting.value().row;
        if (seen.contains(row))
            return wrong(row->name + u" stands there twice");
        seen.insert(row);
        settings.append(setting.value());
    }
    return makeProfile(std::move(settings));
}

} // namespace

Result<Profile> readProfile(const QByteArray &bytes)
{
    if (bytes.size() > Profile::largestFile)
        return wrong(
            u"larger than any profile, which has %1 bytes at most"_s.arg(Profile::largestFile));
    const Result<ProfileDocument> document =
        isJson(bytes) ? ProfileDocument::fromJson(bytes) : ProfileDocument::fromPropertyList(bytes);
    return document ? profileOf(document.value()) : document.error();
}

} // namespace varnel
