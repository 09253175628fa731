#include "profiles/ProfileWriter.h"

#include "plist/XmlComposer.h"
#include "profiles/ProfileDocument.h"
#include "settings/ValueText.h"

#include <QJsonDocument>

namespace varnel {

namespace {

QString withoutBlanksAtEnd(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// As a person would write it.
plist::NewValue plainValue(const SettingChange &setting)
{
    const SettingRow &row = *setting.row;
    if (row.kind == ValueKind::Number)
        return qint64(setting.newValue.number);
    if (row.kind == ValueKind::String
        && (row.mechanism == Mechanism::Text || setting.newValue == defaultValue(row)))
        return setting.newValue.text;
    return withoutBlanksAtEnd(labelText(row, setting.newValue));
}

QJsonValue toJson(const plist::NewValue &value)
{
    const auto *number = std::get_if<qint64>(&value);
    return number ? QJsonValue(*number) : QJsonValue(std::get<QString>(value));
}

} // namespace

Result<void> checkForProfile(const SettingChange &setting)
{
    const SettingRow &row = *setting.row;
    if (!setting.newValue.text.isValidUtf16())
        return Error {ErrorCode::Invalid, row.name + u": its text is no Unicode"};
    const Result<SettingValue> read = parseValue(row, exchangedText(row, setting.newValue));
    if (!read)
        return read.error();
    return {};
}

QJsonObject profileObject(const Profile &profile)
{
    QJsonObject settings;
    for (const SettingChange &setting : profile.settings)
        settings.insert(setting.row->name, toJson(plainValue(setting)));
    return {{profileMembers::schemaVersion, Profile::schemaVersion},
            {profileMembers::settings, settings}};
}

QByteArray profileJson(const Profile &profile)
{
    return QJsonDocument(profileObject(profile)).toJson(QJsonDocument::Indented);
}

Result<QByteArray> profilePropertyList(const Profile &profile)
{
    plist::XmlComposer composer;
    composer.add(profileMembers::schemaVersion, qint64(Profile::schemaVersion));
    composer.beginDictionary(profileMembers::settings);
    for (const SettingChange &setting : profile.settings)
        composer.add(setting.row->name, plainValue(setting));
    return composer.finish();
}

} // namespace varnel
