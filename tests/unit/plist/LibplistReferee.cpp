#include "LibplistReading.h"
#include "Referees.h"

namespace varnel::test {

namespace {

using plist::Kind;
using Node = LibplistReading::Node;

QByteArray described(const Node &node);

QByteArray describedArray(const Node &array)
{
    QByteArray text = "[";
    for (qsizetype place = 0; place < array.entries.size(); ++place)
        text += described(array.entries.value(QString::number(place))) + ',';
    return text + ']';
}

QByteArray describedDictionary(const Node &dictionary)
{
    QByteArray text = "{";
    for (auto entry = dictionary.entries.begin(); entry != dictionary.entries.end(); ++entry)
        text += entry.key().toUtf8() + '=' + described(entry.value()) + ',';
    return text + '}';
}

QByteArray described(const Node &node)
{
    switch (node.value.kind) {
    case Kind::Boolean:
        return node.value.boolean ? "true" : "false";
    case Kind::Integer:
        return "int " + QByteArray::number(node.value.integer);
    case Kind::Real:
        return "real " + QByteArray::number(node.value.real, 'g', 17);
    case Kind::String:
        return "string " + node.value.string.toUtf8();
    case Kind::StringArray:
    case Kind::Array:
        return describedArray(node);
    case Kind::Dictionary:
        return describedDictionary(node);
    default:
        return node.other.isEmpty() ? QByteArray("?") : node.other;
    }
}

} // namespace

std::optional<QMap<QByteArray, QByteArray>> readByLibplist(const QByteArray &file)
{
    const auto root = LibplistReading::of(file);
    if (!root)
        return {};
    QMap<QByteArray, QByteArray> entries;
    for (auto entry = root->begin(); entry != root->end(); ++entry)
        entries.insert(entry.key().toUtf8(), described(entry.value()));
    return entries;
}

} // namespace varnel::test
