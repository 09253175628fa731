#include "plist/EditedContainer.h"

namespace varnel::plist {

namespace {

EditedContainer onTheWay(const BinaryReader &reader, const BinaryEdit::Step &step)
{
    EditedContainer edited {step.container, BinaryType::Dictionary, {}};
    const BinaryObject original = reader.object(step.container);
    edited.references.resize(original.referenceCount());
    for (std::uint32_t n = 0; n < original.referenceCount(); ++n)
        edited.references[n] = reader.child(original, n);
    edited.references[original.count + step.position] = EditedContainer::nextContainer;
    return edited;
}

EditedContainer atTheEnd(const BinaryReader &reader, const BinaryEdit &edit)
{
    const BinaryObject original = reader.object(edit.steps.back().container);
    EditedContainer edited {edit.steps.back().container, original.type(), {}};
    edited.references.reserve(std::size_t {original.referenceCount()} + 2);
    const auto copyHalf = [&](std::uint32_t first, bool keepEdited, std::uint32_t mark) {
        auto next = edit.positions.begin();
        for (std::uint32_t n = 0; n < original.count; ++n) {
            if (edit.addsAt(n))
                edited.references.push_back(mark);
            const bool isEdited = next != edit.positions.end() && *next == n;
            if (isEdited)
                ++next;
            if (!isEdited || keepEdited)
                edited.references.push_back(reader.child(original, first + n));
            else if (edit.value)
                edited.references.push_back(mark);
        }
        if (edit.addsAt(original.count))
            edited.references.push_back(mark);
    };
    if (original.isDictionary())
        copyHalf(0, edit.value != nullptr, EditedContainer::newKey);
    copyHalf(original.isDictionary() ? original.count : 0, false, EditedContainer::newValue);
    return edited;
}

} // namespace

std::vector<EditedContainer> editedContainers(const BinaryReader &reader, const BinaryEdit &edit)
{
    std::vector<EditedContainer> containers;
    for (std::size_t i = 0; i + 1 < edit.steps.size(); ++i)
        containers.push_back(onTheWay(reader, edit.steps[i]));
    containers.push_back(atTheEnd(reader, edit));
    return containers;
}

} // namespace varnel::plist
