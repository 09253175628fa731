#pragma once

#include "plist/Scalar.h"

#include <vector>

namespace varnel::plist {

/// Makes something of an object from its leaves up. Each call answers with a number of the sink's
/// own, by which a container is told what stands in it.
class ObjectSink {
public:
    ObjectSink() = default;
    ObjectSink(const ObjectSink &) = delete;
    ObjectSink &operator=(const ObjectSink &) = delete;
    virtual ~ObjectSink() = default;

    virtual std::uint32_t scalar(const Scalar &scalar) = 0;
    /// Of a dictionary, the keys first, then the values in the same order.
    virtual std::uint32_t container(ObjectType type, const std::vector<std::uint32_t> &members) = 0;
};

[[nodiscard]] ObjectType typeOf(BinaryType container);

/// The sink's number for the whole object. What a binary list shares is told once. Linear, without
/// recursion. A dictionary in XML that a Mac reads as UID is told as one, behind its number.
std::uint32_t fold(const Object &object, ObjectSink &sink);

} // namespace varnel::plist
