#include "harness/PlistLookUps.h"

#include "harness/Objects.h"
#include "harness/PlistEdits.h"
#include "harness/Require.h"

namespace varnel::fuzz {

using namespace plist;

namespace {

void checkValue(const Value &value)
{
    require(value.string.isEmpty() || value.kind == Kind::String, "only strings have a text");
    require(value.data.isEmpty() || value.kind == Kind::Data, "only data have bytes");
    require(value.strings.isEmpty() || value.kind == Kind::StringArray || value.kind == Kind::Array,
            "only arrays have elements");
}

void checkBeneath(const PropertyList &list, const QString &key)
{
    const Value value = list.value({key});
    checkValue(value);
    require(value.kind != Kind::Missing, "a key that another reader sees is there");
    for (const QString &below : {key, QStringLiteral("a"), QStringLiteral("k")}) {
        const Value inner = list.value({key, below});
        checkValue(inner);
        require(inner.kind == Kind::Missing || value.kind == Kind::Dictionary,
                "only dictionaries have keys");
    }
}

} // namespace

void checkLookUps(const QByteArray &file)
{
    const Result<PropertyList> opened = PropertyList::open(file);
    if (!opened) {
        checkRefusal(file);
        return;
    }
    const PropertyList &list = opened.value();
    require(list.value({}).kind == Kind::Dictionary, "the root is a dictionary");
    const auto entries = objectsOf(file);
    if (!entries)
        return;
    qsizetype left = 100;
    for (const RootEntry &entry : *entries)
        if (left-- > 0)
            checkBeneath(list, entry.key);
    const QString other = QStringLiteral("nobody writes this key");
    const auto isOther = [&](const RootEntry &entry) { return entry.key == other; };
    if (std::none_of(entries->begin(), entries->end(), isOther))
        require(list.value({other}).kind == Kind::Missing, "a key that nobody wrote is missing");
}

} // namespace varnel::fuzz
