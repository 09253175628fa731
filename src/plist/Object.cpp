#include "plist/Object.h"

#include "plist/BinaryDecoding.h"
#include "plist/BinaryFragment.h"
#include "plist/BinaryValidation.h"
#include "plist/Errors.h"
#include "plist/ObjectComparison.h"
#include "plist/PropertyList.h"
#include "plist/XmlLocation.h"

namespace varnel::plist {

namespace {

/// Remembers the scalar that an object is, or the last one in it.
class LastScalar : public ObjectSink {
public:
    std::uint32_t scalar(const Scalar &scalar) override
    {
        last = scalar;
        return 0;
    }
    std::uint32_t container(ObjectType, const std::vector<std::uint32_t> &) override { return 0; }

    Scalar last;
};

/// What the source of an object in XML says at its top.
XmlScan scanned(const QByteArray &source)
{
    XmlScan scan;
    // What was read once can be read again. One entry expected: room for more is made as needed.
    static_cast<void>(scan.readFile(source, 1));
    return scan;
}

bool isUid(const QByteArray &source, const XmlNode &node)
{
    if (node.element != XmlElement::Dict || node.entries.size() != 1)
        return false;
    XmlScan entry;
    constexpr qint64 largest = 0xffffffff;
    return entry.readEntry(source, node.entries.front(), node.contentEnd, XmlEncoding())
        && entry.key() == "CF$UID" && entry.node().element == XmlElement::Integer
        && entry.decoded().exact && entry.decoded().value.integer >= 0
        && entry.decoded().value.integer <= largest;
}

ObjectType typeOfXml(const QByteArray &source)
{
    const XmlScan scan = scanned(source);
    switch (scan.node().element) {
    case XmlElement::Dict:
        return isUid(source, scan.node()) ? ObjectType::Uid : ObjectType::Dictionary;
    case XmlElement::Array:
        return ObjectType::Array;
    default:
        return scalarOf(scan.node().element, {}).type;
    }
}

Result<Object> ofBinary(const QByteArray &bytes)
{
    const auto trailer = BinaryTrailer::read(bytes);
    if (!trailer)
        return unloadable();
    const BinaryReader reader(bytes, *trailer);
    if (!isValid(reader))
        return unloadable();
    const QByteArray fragment = fragmentOf(reader, trailer->root);
    if (fragment.isEmpty())
        return unloadable();
    return objectOfFragment(fragment);
}

Result<Object> ofXml(const QByteArray &bytes)
{
    XmlScan scan;
    if (bytes.isEmpty() || bytes.size() >= XmlDocument::tooLarge || !scan.readFile(bytes, 1)
        || !scan.encoding().isUtf8() || scan.node().start != 0
        || scan.node().end != static_cast<std::uint32_t>(bytes.size()))
        return unloadable();
    return objectOfFragment(bytes);
}

} // namespace

QString nameOf(ObjectType type)
{
    switch (type) {
    case ObjectType::Null:
        return QStringLiteral("null");
    case ObjectType::Boolean:
        return QStringLiteral("boolean");
    case ObjectType::Integer:
        return QStringLiteral("integer");
    case ObjectType::Real:
        return QStringLiteral("real");
    case ObjectType::Date:
        return QStringLiteral("date");
    case ObjectType::String:
        return QStringLiteral("string");
    case ObjectType::Data:
        return QStringLiteral("data");
    case ObjectType::Uid:
        return QStringLiteral("UID");
    case ObjectType::Array:
        return QStringLiteral("array");
    case ObjectType::OrderedSet:
        return QStringLiteral("ordered set");
    case ObjectType::Set:
        return QStringLiteral("set");
    case ObjectType::Dictionary:
        break;
    }
    return QStringLiteral("dictionary");
}

Object objectOfFragment(QByteArray source)
{
    return Object(std::move(source));
}

Result<Object> Object::fromBytes(const QByteArray &bytes)
{
    return bytes.startsWith("bplist") ? ofBinary(bytes) : ofXml(bytes);
}

Format Object::format() const
{
    return source.startsWith('<') ? Format::Xml : Format::Binary;
}

ObjectType Object::type() const
{
    if (format() == Format::Xml)
        return typeOfXml(source);
    const BinaryReader reader = readerOf(source);
    const BinaryObject object = reader.object(0);
    return object.isContainer() ? typeOf(object.type()) : scalarOf(reader, object).type;
}

qsizetype Object::count() const
{
    if (format() == Format::Binary) {
        const BinaryObject object = readerOf(source).object(0);
        return object.isContainer() || object.type() == BinaryType::Data ? object.count : 0;
    }
    const XmlScan scan = scanned(source);
    if (scan.node().element == XmlElement::Data)
        return scan.decoded().value.data.size();
    return isUid(source, scan.node()) ? 0 : static_cast<qsizetype>(scan.node().entries.size());
}

QString Object::text() const
{
    if (type() >= ObjectType::Array)
        return {};
    LastScalar sink;
    fold(*this, sink);
    return textOf(sink.last);
}

Value Object::value(const QStringList &keyPath) const
{
    if (!keyPath.isEmpty()) {
        const auto list = PropertyList::open(source);
        return list ? list.value().value(keyPath) : Value();
    }
    if (format() == Format::Xml)
        return scanned(source).decoded().value;
    const BinaryReader reader = readerOf(source);
    return decode(reader, reader.object(0)).value;
}

std::optional<QByteArray> Object::data(const QStringList &keyPath) const
{
    Value found = value(keyPath);
    if (found.kind != Kind::Data)
        return {};
    return std::move(found.data);
}

bool Object::saysTheSameAs(const Object &other) const
{
    ObjectIdentities identities(ObjectIdentities::Order::OfKeysDoesNot);
    return *this == other || identities.numberOf(*this) == identities.numberOf(other);
}

} // namespace varnel::plist
