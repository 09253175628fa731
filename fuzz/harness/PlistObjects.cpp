#include "harness/PlistObjects.h"

#include "harness/Objects.h"
#include "harness/Require.h"
#include "plist/PropertyList.h"

namespace varnel::fuzz {

using namespace plist;

namespace {

const QString newKey = QStringLiteral("k");

PropertyList emptyBinary()
{
    static const QByteArray file = QByteArray::fromHex(
        "62706c6973743030d0080000000000000101000000000000000100000000000000000000000000000009");
    Result<PropertyList> list = PropertyList::open(file);
    require(list.ok(), "an empty list is one");
    return std::move(list).value();
}

void checkPut(PropertyList list, const Object &object)
{
    const QByteArray before = list.bytes();
    if (const auto put = list.put({newKey}, object); !put) {
        require(put.error().code == ErrorCode::Invalid, "what is refused is so for its type");
        require(list.format() != object.format(), "the object's own format can hold it");
        require(list.bytes() == before, "what is refused changes nothing");
        return;
    }
    const auto there = list.object({newKey});
    require(there && there->saysTheSameAs(object), "the key holds the object");
    if (list.format() == object.format())
        require(*there == object, "it stands there in the same words");
    const QByteArray after = list.bytes();
    require(list.put({newKey}, object).ok() && list.bytes() == after,
            "the same object again changes nothing");
}

/// A list that is edited, and the file that it must say the same as afterwards.
class Edited {
public:
    explicit Edited(const QByteArray &file)
        : list(std::move(PropertyList::open(file)).value()), file(file)
    {
        QStringList keys = *list.keys({});
        comesBack = keys.removeDuplicates() == 0; // else one is left of several
        // The encodings of one byte have characters that are written as references.
        const QByteArray text = file.toUpper();
        isExact = list.format() == Format::Xml && !text.contains("ISO-8859-1")
            && !text.contains("US-ASCII");
    }

    void requireSame(const char *promise) const
    {
        if (comesBack && isExact)
            require(list.bytes() == file, promise);
        else if (comesBack)
            require(objectsOf(list.bytes()) == objectsOf(file), promise);
    }

    PropertyList list;

private:
    QByteArray file;
    bool comesBack = false;
    bool isExact = false;
};

void checkKey(const QByteArray &file, const QString &key)
{
    Edited edited(file);
    PropertyList &list = edited.list;
    const auto object = list.object({key});
    const auto place = list.place({key});
    require(object && place, "a key that is there has an object and a place");
    const auto kept = Object::fromBytes(object->toBytes());
    require(kept && kept.value() == *object, "an object comes back from its bytes");
    checkPut(emptyBinary(), *object);
    checkPut(PropertyList::empty(), *object);

    require(list.put({key}, *object).ok(), "an object can be put where it is");
    edited.requireSame("an object that is there already changes nothing");
    require(list.remove({key}).ok() && list.put({key}, kept.value(), place).ok(),
            "what was removed can be put back");
    require(list.object({key}) && *list.object({key}) == *object, "it is the same object");
    edited.requireSame("what was removed and put back is as it was");
    require(list.set({key}, QStringLiteral("another")).ok()
                && list.put({key}, kept.value(), place).ok(),
            "what was changed can be put back");
    edited.requireSame("what was changed and put back is as it was");
}

void checkElements(const QByteArray &file, const QString &key)
{
    Edited edited(file);
    PropertyList &list = edited.list;
    const qsizetype count = list.count({key});
    const auto all = list.elements({key});
    require(static_cast<qsizetype>(all.size()) == count, "all elements are read");
    for (const qsizetype index : {qsizetype {0}, count / 2, count - 1}) {
        if (index < 0 || index >= count)
            continue;
        const auto place = list.place({key}, index);
        require(list.object({key}, index) == all[static_cast<std::size_t>(index)],
                "an element is the same among all and by itself");
        require(list.removeElement({key}, index).ok() && list.count({key}) == count - 1,
                "an element is taken out");
        require(list.insertElement({key}, index, all[static_cast<std::size_t>(index)], place).ok(),
                "an element is put back");
        require(list.elements({key}) == all, "the array is as it was");
        edited.requireSame("so is the file");
    }
}

} // namespace

void checkKept(const QByteArray &kept)
{
    const auto read = Object::fromBytes(kept);
    if (!read) {
        require(read.error().code == ErrorCode::Unloadable, "what is refused is Unloadable");
        return;
    }
    const Object &object = read.value();
    const auto again = Object::fromBytes(object.toBytes());
    require(again && again.value() == object, "what was kept is kept as the same");
    require(object.saysTheSameAs(again.value()), "it says the same as itself");
    require(object.text().isNull()
                == (object.type() >= ObjectType::Array || object.type() == ObjectType::Null
                    || object.type() == ObjectType::Data),
            "scalars have a text");
    require(object.count() >= 0 && !nameOf(object.type()).isEmpty(), "it can be described");
    static_cast<void>(object.value({newKey}));
    checkPut(emptyBinary(), object);
    checkPut(PropertyList::empty(), object);
}

void checkMoves(const QByteArray &file)
{
    constexpr qsizetype mostKeys = 4;
    const Result<PropertyList> list = PropertyList::open(file);
    if (!list)
        return;
    const QStringList keys = *list.value().keys({});
    for (const QString &key : keys.first(qMin(keys.size(), mostKeys))) {
        checkKey(file, key);
        checkElements(file, key);
    }
}

} // namespace varnel::fuzz
