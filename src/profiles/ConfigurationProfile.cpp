#include "profiles/ConfigurationProfile.h"

#include "base/Literals.h"
#include "plist/XmlComposer.h"
#include "profiles/Domain.h"
#include "profiles/ProfileWriter.h"
#include "settings/SettingWrite.h"

#include <QUuid>

#include <map>

namespace varnel {

namespace {

using plist::XmlComposer;

/// The keys of a domain with their values.
using Preferences = std::map<QString, plist::NewValue>;

struct Sorted {
    std::map<QString, Preferences> domains;
    QStringList leftOut;
};

/// Why the setting can't be delivered; null when it can.
QString obstacle(const SettingWrite &write)
{
    if (write.hidesLibrary)
        return u"no preference, so no configuration profile holds it"_s;
    if (!write.changes.first().value)
        return u"a configuration profile takes no key out"_s;
    if (write.changes.first().keyPath.size() > 1)
        return u"a configuration profile would replace the whole dictionary that it stands in"_s;
    return {};
}

Sorted sorted(const Profile &profile)
{
    Sorted result;
    for (const SettingChange &setting : profile.settings) {
        const SettingWrite write = SettingWrite::of(*setting.row, setting.newValue);
        if (const QString why = obstacle(write); !why.isNull()) {
            result.leftOut.append(setting.row->name + u": " + why);
            continue;
        }
        Preferences &domain = result.domains[domainOf(*setting.row)];
        for (const KeyChange &change : write.changes)
            domain.insert_or_assign(change.keyPath.first(), *change.value);
    }
    return result;
}

/// An identifier that the same content always gets.
QString identifier(const QByteArray &content)
{
    static const QUuid ours(u"{8f1b6a54-6a0e-4d0b-9d2c-5c1f0a7e3b92}"_s);
    return QUuid::createUuidV5(ours, content).toString(QUuid::WithoutBraces).toUpper();
}

void describe(XmlComposer &composer, const QString &type, const QString &uuid)
{
    composer.add(u"PayloadDisplayName"_s, u"Hidden settings"_s);
    composer.add(u"PayloadIdentifier"_s, QString(u"varnel.settings." + uuid));
    composer.add(u"PayloadType"_s, type);
    composer.add(u"PayloadUUID"_s, uuid);
    composer.add(u"PayloadVersion"_s, qint64(1));
}

void addPayload(XmlComposer &composer, const QString &domain, const Preferences &preferences,
                const std::optional<QDateTime> &onceSince)
{
    composer.beginDictionary();
    composer.beginDictionary(u"PayloadContent"_s);
    composer.beginDictionary(domain);
    composer.beginArray(onceSince ? u"Set-Once"_s : u"Forced"_s);
    composer.beginDictionary();
    if (onceSince)
        composer.add(u"mcx_data_timestamp"_s, *onceSince);
    composer.beginDictionary(u"mcx_preference_settings"_s);
    for (const auto &[key, value] : preferences)
        composer.add(key, value);
    for (int begun = 0; begun < 5; ++begun)
        composer.end();
}

} // namespace

Result<Translation> configurationProfile(const Profile &profile,
                                         const std::optional<QDateTime> &onceSince)
{
    const Sorted content = sorted(profile);
    const QByteArray seed = (onceSince ? "once " : "forced ") + profileJson(profile);
    XmlComposer composer;
    composer.beginArray(u"PayloadContent"_s);
    for (const auto &[domain, preferences] : content.domains) {
        addPayload(composer, domain, preferences, onceSince);
        describe(composer, u"com.apple.ManagedClient.preferences"_s,
                 identifier(domain.toUtf8() + ' ' + seed));
        composer.end();
    }
    composer.end();
    describe(composer, u"Configuration"_s, identifier(seed));
    composer.add(u"PayloadScope"_s, u"User"_s);
    Result<QByteArray> bytes = composer.finish();
    if (!bytes)
        return bytes.error();
    return Translation {std::move(bytes).value(), content.leftOut};
}

} // namespace varnel
