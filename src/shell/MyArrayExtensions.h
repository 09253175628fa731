#pragma once

#include <QList>

#include <algorithm>
#include <memory>
#include <set>

namespace varnel {

// Questions about lists of pointers that ask for the very object, where the list's own operations
// would ask for an equal one. Elements are plain or shared pointers.

/// Whether the list holds that very object.
template <typename Pointer>
[[nodiscard]] bool
containsObjectIdenticalTo(const QList<Pointer> &list,
                          const typename std::pointer_traits<Pointer>::element_type *object)
{
    return std::any_of(list.begin(), list.end(),
                       [&](const Pointer &held) { return std::to_address(held) == object; });
}

/// Whether the list holds at least one of the others; false for no others.
template <typename Pointer>
[[nodiscard]] bool containsAnyObjectsIdenticalTo(const QList<Pointer> &list,
                                                 const QList<Pointer> &others)
{
    return std::any_of(others.begin(), others.end(), [&](const Pointer &other) {
        return containsObjectIdenticalTo(list, std::to_address(other));
    });
}

/// The place in the list of the first element equal to each of the objects; those that are not
/// there are skipped.
template <typename T>
[[nodiscard]] std::set<qsizetype> indexesOfObjects(const QList<T> &list, const QList<T> &objects)
{
    std::set<qsizetype> indexes;
    for (const T &object : objects) {
        const qsizetype index = list.indexOf(object);
        if (index >= 0)
            indexes.insert(index);
    }
    return indexes;
}

} // namespace varnel
