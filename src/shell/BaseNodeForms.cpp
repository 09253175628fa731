// The dictionary, archive and copy forms of a node, all driven by the same list of keys.

#include "shell/BaseNode.h"

#include <QDataStream>
#include <QHash>

#include <algorithm>

namespace varnel {

namespace {

const QString titleKey = QStringLiteral("nodeTitle");
const QString leafKey = QStringLiteral("isLeaf");
const QString childrenKey = QStringLiteral("children");
const QString iconKey = QStringLiteral("nodeIcon");
const QString addressKey = QStringLiteral("urlString");

QVariant orInvalid(const QString &text)
{
    return text.isNull() ? QVariant() : QVariant(text);
}

} // namespace

QStringList BaseNode::mutableKeys()
{
    return {titleKey, leafKey, childrenKey, iconKey, addressKey};
}

QVariant BaseNode::value(const QString &key) const
{
    if (key == titleKey)
        return orInvalid(title);
    if (key == leafKey)
        return leaf;
    if (key == iconKey)
        return icon;
    return key == addressKey ? orInvalid(address) : QVariant();
}

void BaseNode::setValue(const QString &key, const QVariant &value)
{
    if (key == titleKey)
        setNodeTitle(value.toString());
    else if (key == iconKey)
        setNodeIcon(value);
    else if (key == addressKey)
        setURL(value.toString());
    else if (key == leafKey && value.isValid())
        setLeaf(value.toBool());
    else
        setNilValueForKey(key);
}

void BaseNode::setNilValueForKey(const QString &key)
{
    if (key == leafKey)
        setLeaf(false);
}

BaseNode::Pointer BaseNode::initWithDictionary(const QVariantMap &dictionary)
{
    Pointer node = create();
    for (const QString &key : mutableKeys()) {
        if (key != childrenKey) {
            node->setValue(key, dictionary.value(key));
        } else if (dictionary.value(leafKey).toBool()) {
            node->setChildren({node});
        } else {
            List made;
            for (const QVariant &child : dictionary.value(childrenKey).toList())
                made << initWithDictionary(child.toMap());
            node->setChildren(made);
        }
    }
    return node;
}

QVariantMap BaseNode::dictionaryRepresentation() const
{
    QVariantMap dictionary;
    for (const QString &key : mutableKeys()) {
        if (key != childrenKey) {
            if (const QVariant held = value(key); held.isValid())
                dictionary.insert(key, held);
        } else if (!leaf) {
            QVariantList forms;
            for (const Pointer &child : below)
                forms << child->dictionaryRepresentation();
            dictionary.insert(key, forms);
        }
    }
    return dictionary;
}

BaseNode::Pointer BaseNode::copyWithZone() const
{
    Pointer copy = create();
    for (const QString &key : mutableKeys()) {
        if (key == childrenKey)
            copy->setChildren(children());
        else
            copy->setValue(key, value(key));
    }
    return copy;
}

// An archive is a list of keyed records, the first for the node itself; children are named by their
// places in that list, so that a node that stands in several places comes back as one.

void BaseNode::encodeWithCoder(QDataStream &coder) const
{
    QList<const BaseNode *> table {this};
    QHash<const BaseNode *, int> places {{this, 0}};
    QVariantList records;
    List alive; // what children() hands out must live until the table is done
    for (qsizetype i = 0; i < table.size(); ++i) {
        QVariantMap record;
        for (const QString &key : mutableKeys()) {
            if (key != childrenKey) {
                record.insert(key, table[i]->value(key));
                continue;
            }
            QVariantList numbers;
            for (const Pointer &child : table[i]->children()) {
                if (!places.contains(child.get())) {
                    places.insert(child.get(), int(table.size()));
                    table << child.get();
                    alive << child;
                }
                numbers << places.value(child.get());
            }
            record.insert(key, numbers);
        }
        records << record;
    }
    coder << records;
}

BaseNode::Pointer BaseNode::initWithCoder(QDataStream &coder)
{
    QVariantList records;
    coder >> records;
    const auto isRecord = [](const QVariant &record) {
        return record.typeId() == QMetaType::QVariantMap;
    };
    if (coder.status() != QDataStream::Ok || records.isEmpty()
        || !std::all_of(records.begin(), records.end(), isRecord))
        return nullptr;
    List nodes;
    for (qsizetype i = 0; i < records.size(); ++i)
        nodes << create();
    for (qsizetype i = 0; i < records.size(); ++i) {
        const QVariantMap record = records[i].toMap();
        for (const QString &key : mutableKeys()) {
            if (key != childrenKey) {
                nodes[i]->setValue(key, record.value(key));
                continue;
            }
            List children;
            for (const QVariant &place : record.value(key).toList())
                children << nodes.value(place.toInt());
            children.removeAll(nullptr);
            nodes[i]->setChildren(children);
        }
    }
    return nodes.first();
}

} // namespace varnel
