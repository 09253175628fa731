#include "plist/BinaryComparison.h"

#include "plist/BinaryDecoding.h"
#include "plist/BinaryFragment.h"

#include <algorithm>

namespace varnel::plist {

namespace {

class Comparison {
public:
    Comparison(const BinaryReader &before, const BinaryReader &after)
        : before(before), after(after), partner(before.trailer().objectCount, none)
    {
    }

    /// Notes that two objects must be the same; false when they already must be others.
    bool expect(std::uint32_t old, std::uint32_t now)
    {
        if (partner[old] != none)
            return partner[old] == now;
        partner[old] = now;
        pending.push_back(old);
        return true;
    }

    bool expectEntry(const BinaryObject &old, std::uint32_t n, const BinaryObject &now,
                     std::uint32_t m)
    {
        return expectKey(old, n, now, m)
            && expect(before.child(old, old.count + n), after.child(now, now.count + m));
    }

    /// An entry of a dictionary, or an element.
    bool expectMember(const BinaryObject &old, std::uint32_t n, const BinaryObject &now,
                      std::uint32_t m)
    {
        if (old.isDictionary())
            return expectEntry(old, n, now, m);
        return m < now.count && expect(before.child(old, n), after.child(now, m));
    }

    bool expectKey(const BinaryObject &old, std::uint32_t n, const BinaryObject &now,
                   std::uint32_t m)
    {
        return m < now.count && expect(before.child(old, n), after.child(now, m));
    }

    /// Works off all that is expected, and what hangs from it.
    bool holds()
    {
        while (!pending.empty()) {
            const std::uint32_t index = pending.back();
            pending.pop_back();
            if (!isSame(before.object(index), after.object(partner[index])))
                return false;
        }
        return true;
    }

private:
    static constexpr std::uint32_t none = 0xffffffff;

    bool isSame(const BinaryObject &old, const BinaryObject &now)
    {
        if (!old.isContainer())
            return before.whole(old) == after.whole(now);
        if (old.marker != now.marker || old.count != now.count)
            return false;
        for (std::uint32_t n = 0; n < old.referenceCount(); ++n) {
            if (!expect(before.child(old, n), after.child(now, n)))
                return false;
        }
        return true;
    }

    const BinaryReader &before;
    const BinaryReader &after;
    std::vector<std::uint32_t> partner;
    std::vector<std::uint32_t> pending;
};

/// The dictionary on the way in the new file, or nothing when another entry than the way's differs.
std::optional<std::uint32_t> follow(const BinaryEdit::Step &step, const BinaryReader &before,
                                    const BinaryReader &after, std::uint32_t now,
                                    Comparison &comparison)
{
    const BinaryObject oldOne = before.object(step.container);
    const BinaryObject newOne = after.object(now);
    if (!newOne.isDictionary() || newOne.count != oldOne.count)
        return {};
    for (std::uint32_t n = 0; n < oldOne.count; ++n) {
        const bool same = n == step.position ? comparison.expectKey(oldOne, n, newOne, n)
                                             : comparison.expectEntry(oldOne, n, newOne, n);
        if (!same)
            return {};
    }
    return after.child(newOne, newOne.count + step.position);
}

/// Whether the places hold the new value: one object for all of them, so that it need be looked at
/// once only.
bool holdValue(const std::vector<std::uint32_t> &positions, const BinaryObject &container,
               const BinaryReader &after, const BinaryReader &value)
{
    const std::uint32_t first = container.isDictionary() ? container.count : 0;
    const std::uint32_t holder = after.child(container, first + positions.front());
    return std::all_of(positions.begin(), positions.end(),
                       [&](std::uint32_t position) {
                           return after.child(container, first + position) == holder;
                       })
        && fragmentOf(after, holder) == value.bytes();
}

bool isEdited(const BinaryEdit &edit, const BinaryReader &before, const BinaryReader &after,
              std::uint32_t now, Comparison &comparison)
{
    const BinaryObject oldOne = before.object(edit.steps.back().container);
    const BinaryObject newOne = after.object(now);
    if (newOne.type() != oldOne.type())
        return false;
    std::vector<std::uint32_t> written; // where the new value stands
    auto edited = edit.positions.begin();
    std::uint32_t m = 0;
    for (std::uint32_t n = 0; n < oldOne.count; ++n) {
        if (edit.addsAt(n))
            written.push_back(m++);
        const bool isEdited = edited != edit.positions.end() && *edited == n;
        if (isEdited)
            ++edited;
        if (isEdited && edit.value) {
            if (edit.key && !comparison.expectKey(oldOne, n, newOne, m))
                return false;
            written.push_back(m++);
        } else if (!isEdited && !comparison.expectMember(oldOne, n, newOne, m++)) {
            return false;
        }
    }
    if (edit.addsAt(oldOne.count))
        written.push_back(m++);
    if (newOne.count != m)
        return false;
    if (edit.key && positionsOf(after, newOne, *edit.key) != written)
        return false;
    return !edit.value || holdValue(written, newOne, after, *edit.value);
}

} // namespace

bool differsOnlyBy(const BinaryEdit &edit, const BinaryReader &before, const BinaryReader &after)
{
    Comparison comparison(before, after);
    std::uint32_t now = after.trailer().root;
    for (std::size_t i = 0; i + 1 < edit.steps.size(); ++i) {
        const auto next = follow(edit.steps[i], before, after, now, comparison);
        if (!next)
            return false;
        now = *next;
    }
    return isEdited(edit, before, after, now, comparison) && comparison.holds();
}

} // namespace varnel::plist
