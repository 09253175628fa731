#include "Referees.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace varnel::test {

namespace {

using Node = std::unique_ptr<void, decltype(&plist_free)>;

QByteArray taken(char *text, std::uint64_t length)
{
    const QByteArray bytes(text, static_cast<qsizetype>(length));
    std::free(text);
    return bytes;
}

QByteArray number(double value)
{
    return QByteArray::number(value, 'g', 17);
}

QByteArray described(plist_t node);

QMap<QByteArray, QByteArray> entriesOf(plist_t dictionary)
{
    QMap<QByteArray, QByteArray> entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        if (!value)
            break;
        entries.insert(taken(key, qstrlen(key)), described(value));
    }
    std::free(iterator);
    return entries;
}

QByteArray describedArray(plist_t array)
{
    QByteArray text = "[";
    for (std::uint32_t i = 0; i < plist_array_get_size(array); ++i)
        text += described(plist_array_get_item(array, i)) + ',';
    return text + ']';
}

QByteArray describedDictionary(plist_t dictionary)
{
    QByteArray text = "{";
    const auto entries = entriesOf(dictionary);
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        text += entry.key() + '=' + entry.value() + ',';
    return text + '}';
}

QByteArray described(plist_t node)
{
    char *text = nullptr;
    std::uint64_t integer = 0;
    std::uint8_t boolean = 0;
    double real = 0;
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        plist_get_bool_val(node, &boolean);
        return boolean ? "true" : "false";
    case PLIST_UINT:
        plist_get_uint_val(node, &integer);
        return "int " + QByteArray::number(static_cast<qint64>(integer));
    case PLIST_REAL:
        plist_get_real_val(node, &real);
        return "real " + number(real);
    case PLIST_STRING:
        plist_get_string_val(node, &text);
        return "string " + taken(text, qstrlen(text));
    case PLIST_DATA:
        plist_get_data_val(node, &text, &integer);
        return "data " + taken(text, integer).toHex();
    case PLIST_DATE:
        plist_get_date_val(node, &seconds, &microseconds);
        return "date " + number(seconds) + ' ' + number(microseconds);
    case PLIST_UID:
        plist_get_uid_val(node, &integer);
        return "uid " + QByteArray::number(static_cast<quint64>(integer));
    case PLIST_ARRAY:
        return describedArray(node);
    case PLIST_DICT:
        return describedDictionary(node);
    default:
        return "?";
    }
}

} // namespace

std::optional<QMap<QByteArray, QByteArray>> readByLibplist(const QByteArray &file)
{
    plist_t root = nullptr;
    plist_from_memory(file.constData(), static_cast<std::uint32_t>(file.size()), &root);
    const Node owner(root, &plist_free);
    if (!root || plist_get_node_type(root) != PLIST_DICT)
        return {};
    return entriesOf(root);
}

} // namespace varnel::test
