#include "plist/ObjectComparison.h"

#include <algorithm>

namespace varnel::plist {

namespace {

/// The members of a dictionary, ordered by the keys' numbers; of a key that stands there several
/// times, in the order of the file.
std::vector<std::uint32_t> inOrderOfKeys(const std::vector<std::uint32_t> &members)
{
    const std::size_t count = members.size() / 2;
    std::vector<std::size_t> order(count);
    for (std::size_t n = 0; n < count; ++n)
        order[n] = n;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return members[one] < members[other];
    });
    std::vector<std::uint32_t> ordered;
    ordered.reserve(members.size());
    for (const std::size_t first : {std::size_t {0}, count}) {
        for (const std::size_t n : order)
            ordered.push_back(members[first + n]);
    }
    return ordered;
}

} // namespace

std::uint32_t ObjectIdentities::scalar(const Scalar &scalar)
{
    return numberOf(identityOf(scalar));
}

std::uint32_t ObjectIdentities::container(ObjectType type,
                                          const std::vector<std::uint32_t> &members)
{
    const bool sorts = type == ObjectType::Dictionary && order == Order::OfKeysDoesNot;
    QByteArray identity(1, static_cast<char>(type));
    identity.reserve(1 + 4 * static_cast<qsizetype>(members.size()));
    for (const std::uint32_t member : sorts ? inOrderOfKeys(members) : members) {
        char bytes[4];
        writeBigEndian(bytes, member, sizeof bytes);
        identity.append(bytes, sizeof bytes);
    }
    return numberOf(identity);
}

std::uint32_t ObjectIdentities::numberOf(const QByteArray &identity)
{
    const auto next = static_cast<std::uint32_t>(numbers.size());
    const auto known = numbers.constFind(identity);
    if (known != numbers.constEnd())
        return *known;
    numbers.insert(identity, next);
    return next;
}

bool sayTheSameInOrder(const Object &one, const Object &other)
{
    ObjectIdentities identities(ObjectIdentities::Order::Counts);
    return one == other || identities.numberOf(one) == identities.numberOf(other);
}

} // namespace varnel::plist
