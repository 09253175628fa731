#include "plist/BinaryValidation.h"

#include <vector>

namespace varnel::plist {

namespace {

/// What the pass over all objects finds out.
class ObjectCheck {
public:
    explicit ObjectCheck(const BinaryReader &reader)
        : reader(reader), budget(reader.trailer().tableStart - BinaryTrailer::headerSize)
    {
    }

    bool check(std::uint32_t index)
    {
        const auto object = reader.parse(reader.offset(index));
        if (!object || object->end - object->start > budget)
            return false;
        budget -= object->end - object->start;
        if (!object->isContainer())
            return true;
        const std::uint32_t keys = object->isDictionary() ? object->count : 0;
        for (std::uint32_t n = 0; n < object->referenceCount(); ++n) {
            if (!checkReference(index, reader.reference(*object, n), n < keys))
                return false;
        }
        return true;
    }

    /// Every container comes after all that hold it, so that there can be no cycle.
    [[nodiscard]] bool parentsFirst() const { return inOrder; }

private:
    bool checkReference(std::uint32_t from, std::uint64_t to, bool isKey)
    {
        if (to >= reader.trailer().objectCount)
            return false;
        // What the target is by itself, its own turn will tell.
        if (to > from && !isKey)
            return true;
        const auto type = reader.typeAt(reader.offset(static_cast<std::uint32_t>(to)));
        if (isKey)
            return type == BinaryType::Ascii || type == BinaryType::Utf16;
        inOrder = inOrder && type < BinaryType::Array;
        return true;
    }

    const BinaryReader &reader;
    std::uint32_t budget;
    bool inOrder = true;
};

/// Takes away, again and again, the objects that nothing left refers to. A cycle never goes.
bool isAcyclic(const BinaryReader &reader)
{
    const std::uint32_t count = reader.trailer().objectCount;
    std::vector<std::uint32_t> parents(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        const BinaryObject object = reader.object(i);
        for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
            ++parents[reader.child(object, n)];
    }
    std::vector<std::uint32_t> free;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (parents[i] == 0)
            free.push_back(i);
    }
    std::uint32_t taken = 0;
    for (; !free.empty(); ++taken) {
        const BinaryObject object = reader.object(free.back());
        free.pop_back();
        for (std::uint32_t n = 0; n < object.referenceCount(); ++n) {
            const std::uint32_t child = reader.child(object, n);
            if (--parents[child] == 0)
                free.push_back(child);
        }
    }
    return taken == count;
}

} // namespace

bool isValid(const BinaryReader &reader)
{
    ObjectCheck objects(reader);
    for (std::uint32_t i = 0; i < reader.trailer().objectCount; ++i) {
        if (!objects.check(i))
            return false;
    }
    return objects.parentsFirst() || isAcyclic(reader);
}

} // namespace varnel::plist
