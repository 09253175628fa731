#pragma once

#include "plist/ObjectFold.h"

#include <QHash>

namespace varnel::plist {

/// Numbers objects so that those that say the same get the same number, whatever their formats.
class ObjectIdentities : private ObjectSink {
public:
    enum class Order { Counts, OfKeysDoesNot };

    explicit ObjectIdentities(Order order) : order(order) { }

    std::uint32_t numberOf(const Object &object) { return fold(object, *this); }

private:
    std::uint32_t scalar(const Scalar &scalar) override;
    std::uint32_t container(ObjectType type, const std::vector<std::uint32_t> &members) override;
    std::uint32_t numberOf(const QByteArray &identity);

    Order order;
    QHash<QByteArray, std::uint32_t> numbers;
};

/// Whether both say the same in the same order, that of a dictionary's keys too.
[[nodiscard]] bool sayTheSameInOrder(const Object &one, const Object &other);

} // namespace varnel::plist
