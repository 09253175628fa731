#include "plist/PropertyList.h"

#include "plist/Backend.h"
#include "plist/BinaryBackend.h"
#include "plist/XmlBackend.h"
#include "plist/XmlMarkup.h"

#include <algorithm>

namespace varnel::plist {

namespace {

Error emptyPath()
{
    return {ErrorCode::Invalid, QStringLiteral("the root of a property list cannot be edited")};
}

} // namespace

Result<PropertyList> PropertyList::open(QByteArray bytes)
{
    auto backend = bytes.startsWith("bplist") ? BinaryBackend::open(std::move(bytes))
                                              : XmlBackend::open(std::move(bytes));
    if (!backend)
        return backend.error();
    return PropertyList(std::move(backend).value());
}

PropertyList PropertyList::empty()
{
    auto list = open(QString(xmlProlog() + u"<dict/>\n</plist>\n").toUtf8());
    return std::move(list).value();
}

PropertyList::PropertyList(std::unique_ptr<Backend> backend) : backend(std::move(backend)) { }
PropertyList::PropertyList(PropertyList &&) noexcept = default;
PropertyList &PropertyList::operator=(PropertyList &&) noexcept = default;
PropertyList::~PropertyList() = default;

PropertyList PropertyList::copy() const
{
    return PropertyList(backend->copy());
}

Format PropertyList::format() const
{
    return backend->format();
}

Value PropertyList::value(const QStringList &path) const
{
    return backend->value(path);
}

QString PropertyList::text(const QStringList &path) const
{
    constexpr int digits = 16; // no more than survive in a double
    const Value found = value(path);
    switch (found.kind) {
    case Kind::String:
        return found.string;
    case Kind::Integer:
        return QString::number(found.integer);
    case Kind::Real:
        return QString::number(found.real, 'g', digits);
    case Kind::Boolean:
        return QString::number(found.boolean ? 1 : 0);
    default:
        return {};
    }
}

std::optional<QStringList> PropertyList::keys(const QStringList &path) const
{
    return backend->keys(path);
}

Result<void> PropertyList::set(const QStringList &path, const NewValue &value)
{
    if (path.isEmpty())
        return emptyPath();
    return backend->set(path, value);
}

Result<void> PropertyList::remove(const QStringList &path)
{
    if (path.isEmpty())
        return emptyPath();
    return backend->remove(path);
}

std::optional<Object> PropertyList::object(const QStringList &path) const
{
    return backend->object(path);
}

std::optional<Place> PropertyList::place(const QStringList &path) const
{
    if (path.isEmpty())
        return {};
    return backend->place(path);
}

qsizetype PropertyList::count(const QStringList &path) const
{
    return backend->count(path);
}

std::optional<Object> PropertyList::object(const QStringList &path, qsizetype index) const
{
    return backend->element(path, index);
}

std::optional<Place> PropertyList::place(const QStringList &path, qsizetype index) const
{
    return backend->elementPlace(path, index);
}

std::vector<Object> PropertyList::elements(const QStringList &path) const
{
    return backend->elements(path);
}

Result<void> PropertyList::put(const QStringList &path, const Object &object,
                               const std::optional<Place> &place)
{
    if (path.isEmpty())
        return emptyPath();
    return backend->put(path, object, place);
}

Result<void> PropertyList::removeElement(const QStringList &path, qsizetype index)
{
    return backend->removeElement(path, index);
}

Result<void> PropertyList::insertElement(const QStringList &path, qsizetype index,
                                         const Object &object, const std::optional<Place> &place)
{
    return backend->insertElement(path, std::max(index, qsizetype {0}), object, place);
}

const QByteArray &PropertyList::bytes() const
{
    return backend->bytes();
}

} // namespace varnel::plist
