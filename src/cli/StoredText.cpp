#include "cli/StoredText.h"

#include "base/Literals.h"
#include "settings/PreferenceFiles.h"

#include <QJsonArray>

namespace varnel::cli {

Result<QString> storedText(const plist::Value &stored)
{
    switch (stored.kind) {
    case plist::Kind::Boolean:
    case plist::Kind::Integer:
    case plist::Kind::Real:
    case plist::Kind::String:
    case plist::Kind::StringArray:
        return textValue(stored);
    case plist::Kind::Missing:
    case plist::Kind::Data:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return Error {ErrorCode::Failed, u"its value is no text, number, boolean or list of texts"_s};
}

QJsonValue storedJson(const plist::Value &stored)
{
    switch (stored.kind) {
    case plist::Kind::Boolean:
        return stored.boolean;
    case plist::Kind::Integer:
        return stored.integer;
    case plist::Kind::Real:
        return stored.real;
    case plist::Kind::String:
        return stored.string;
    case plist::Kind::StringArray:
        return QJsonArray::fromStringList(stored.strings);
    case plist::Kind::Missing:
    case plist::Kind::Data:
    case plist::Kind::Array:
    case plist::Kind::Dictionary:
    case plist::Kind::Other:
        break;
    }
    return QJsonValue::Null;
}

} // namespace varnel::cli
