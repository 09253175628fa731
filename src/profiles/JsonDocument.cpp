#include "base/Literals.h"
#include "profiles/JsonNames.h"
#include "profiles/ProfileDocument.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace varnel {

namespace {

Error brokenJson(const QByteArray &bytes, const QJsonParseError &error)
{
    const auto line = bytes.left(error.offset).count('\n') + 1;
    return {ErrorCode::Invalid, u"line "_s + QString::number(line) + u": " + error.errorString()};
}

plist::Value numberOf(const QJsonValue &json)
{
    // Up to here every whole number has a double of its own.
    constexpr double most = 9007199254740992.0;
    plist::Value value;
    value.kind = plist::Kind::Real;
    value.real = json.toDouble();
    if (std::trunc(value.real) == value.real && std::abs(value.real) <= most) {
        value.kind = plist::Kind::Integer;
        value.integer = static_cast<qint64>(value.real);
    }
    return value;
}

plist::Value valueOf(const QJsonValue &json)
{
    plist::Value value;
    value.kind = plist::Kind::Other;
    switch (json.type()) {
    case QJsonValue::Bool:
        value.kind = plist::Kind::Boolean;
        value.boolean = json.toBool();
        break;
    case QJsonValue::Double:
        return numberOf(json);
    case QJsonValue::String:
        value.kind = plist::Kind::String;
        value.string = json.toString();
        break;
    case QJsonValue::Array:
        value.kind = plist::Kind::Array;
        break;
    case QJsonValue::Object:
        value.kind = plist::Kind::Dictionary;
        break;
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        break;
    }
    return value;
}

} // namespace

Result<ProfileDocument> ProfileDocument::fromJson(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return brokenJson(bytes, error);
    const QJsonObject root = json.object();
    const QJsonObject settings = root.value(profileMembers::settings).toObject();
    // The toolkit keeps one member of each name; the names tell how many there are.
    const JsonNames names = JsonNames::of(bytes);
    ProfileDocument document;
    for (const QString &name : names.outer)
        document.root.append({name, valueOf(root.value(name))});
    for (const QString &name : names.inner)
        document.settings.append({name, valueOf(settings.value(name))});
    return document;
}

} // namespace varnel
