#include "plist/BinaryNumbering.h"

#include <algorithm>

namespace varnel::plist {

BinaryNumbering::BinaryNumbering(const BinaryReader &reader,
                                 const std::vector<EditedContainer> &containers)
    : numbers(reader.trailer().objectCount, dropped), edited(containers.size(), dropped)
{
    markKept(reader, containers);
    std::vector<std::uint32_t> replaced;
    for (const EditedContainer &container : containers) {
        originals.push_back(container.original);
        if (!isKept(container.original))
            replaced.push_back(container.original);
    }
    std::sort(replaced.begin(), replaced.end());
    auto next = replaced.begin();
    for (std::uint32_t i = 0; i < numbers.size(); ++i) {
        if (next != replaced.end() && *next == i) {
            ++next;
            const auto step = std::find(originals.begin(), originals.end(), i) - originals.begin();
            edited[static_cast<std::size_t>(step)] = total++;
        } else if (isKept(i)) {
            numbers[i] = total++;
        }
    }
    for (std::uint32_t &number : edited) {
        if (number == dropped)
            number = total++;
    }
}

std::optional<std::size_t> BinaryNumbering::replacement(std::uint32_t index) const
{
    if (isKept(index))
        return {};
    const auto found = std::find(originals.begin(), originals.end(), index);
    if (found == originals.end())
        return {};
    return static_cast<std::size_t>(found - originals.begin());
}

void BinaryNumbering::markKept(const BinaryReader &reader,
                               const std::vector<EditedContainer> &containers)
{
    std::vector<std::uint32_t> pending;
    const auto mark = [&](std::uint32_t index) {
        if (isKept(index))
            return;
        numbers[index] = 0;
        pending.push_back(index);
    };
    for (const EditedContainer &container : containers) {
        for (const std::uint32_t index : container.references) {
            if (index < EditedContainer::firstMark)
                mark(index);
        }
        while (!pending.empty()) {
            const BinaryObject object = reader.object(pending.back());
            pending.pop_back();
            for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
                mark(reader.child(object, n));
        }
    }
}

} // namespace varnel::plist
