#include "LibplistReading.h"

#include "base/Text.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include <plist/plist.h>

namespace varnel::test {

using plist::Kind;
using plist::Value;
using Node = LibplistReading::Node;
using Dictionary = LibplistReading::Dictionary;

namespace {

using Tree = std::unique_ptr<void, decltype(&plist_free)>;

QByteArray taken(char *text, std::uint64_t length)
{
    const QByteArray bytes(text, static_cast<qsizetype>(length));
    std::free(text);
    return bytes;
}

Node read(plist_t node);

Dictionary entriesOf(plist_t dictionary)
{
    Dictionary entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        if (value == nullptr)
            break;
        entries.insert(textOfUtf8(taken(key, qstrlen(key))), read(value));
    }
    std::free(iterator);
    return entries;
}

Node readArray(plist_t array)
{
    Node node;
    node.value.kind = Kind::StringArray;
    for (std::uint32_t i = 0; i < plist_array_get_size(array); ++i) {
        const Node element = read(plist_array_get_item(array, i));
        if (element.value.kind == Kind::String)
            node.value.strings.append(element.value.string);
        else
            node.value.kind = Kind::Array;
        node.entries.insert(QString::number(i), element);
    }
    return node;
}

Node read(plist_t tree)
{
    Node node;
    Value &value = node.value;
    char *text = nullptr;
    std::uint64_t number = 0;
    std::uint8_t boolean = 0;
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    value.kind = Kind::Other;
    switch (plist_get_node_type(tree)) {
    case PLIST_BOOLEAN:
        value.kind = Kind::Boolean;
        plist_get_bool_val(tree, &boolean);
        value.boolean = boolean != 0;
        break;
    case PLIST_UINT:
        value.kind = Kind::Integer;
        plist_get_uint_val(tree, &number);
        value.integer = static_cast<qint64>(number);
        break;
    case PLIST_REAL:
        value.kind = Kind::Real;
        plist_get_real_val(tree, &value.real);
        break;
    case PLIST_STRING:
        value.kind = Kind::String;
        plist_get_string_val(tree, &text);
        value.string = textOfUtf8(taken(text, qstrlen(text)));
        break;
    case PLIST_ARRAY:
        return readArray(tree);
    case PLIST_DICT:
        value.kind = Kind::Dictionary;
        node.entries = entriesOf(tree);
        break;
    case PLIST_DATA:
        value.kind = Kind::Data;
        plist_get_data_val(tree, &text, &number);
        node.other = "data " + taken(text, number);
        break;
    case PLIST_DATE:
        plist_get_date_val(tree, &seconds, &microseconds);
        node.other = "date " + QByteArray::number(seconds) + ' ' + QByteArray::number(microseconds);
        break;
    case PLIST_UID:
        plist_get_uid_val(tree, &number);
        node.other = "uid " + QByteArray::number(static_cast<quint64>(number));
        break;
    default:
        break;
    }
    return node;
}

} // namespace

bool sameContent(const Value &one, const Value &other)
{
    if (std::isnan(one.real) && std::isnan(other.real))
        return one.kind == other.kind;
    if (one.kind == Kind::Data)
        return one.kind == other.kind;
    return one == other;
}

bool LibplistReading::Node::operator==(const Node &that) const
{
    return sameContent(value, that.value) && other == that.other && entries == that.entries;
}

std::optional<Dictionary> LibplistReading::of(const QByteArray &file)
{
    // Not plist_from_memory(): its arguments are others since libplist 2.3, and it reads more
    // formats.
    const auto size = static_cast<std::uint32_t>(file.size());
    plist_t root = nullptr;
    if (plist_is_binary(file.constData(), size))
        plist_from_bin(file.constData(), size, &root);
    else
        plist_from_xml(file.constData(), size, &root);
    const Tree owner(root, &plist_free);
    if (root == nullptr || plist_get_node_type(root) != PLIST_DICT)
        return std::nullopt;
    return entriesOf(root);
}

} // namespace varnel::test
