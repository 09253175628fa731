#include "plist/EditedDictionary.h"

namespace varnel::plist {

namespace {

EditedDictionary onTheWay(const BinaryReader &reader, const BinaryEdit::Step &step)
{
    EditedDictionary edited {step.dictionary, {}};
    const BinaryObject original = reader.object(step.dictionary);
    edited.references.resize(original.referenceCount());
    for (std::uint32_t n = 0; n < original.referenceCount(); ++n)
        edited.references[n] = reader.child(original, n);
    edited.references[original.count + step.position] = EditedDictionary::nextDictionary;
    return edited;
}

EditedDictionary atTheEnd(const BinaryReader &reader, const BinaryEdit &edit)
{
    EditedDictionary edited {edit.steps.back().dictionary, {}};
    const BinaryObject original = reader.object(edited.original);
    edited.references.reserve(std::size_t {original.referenceCount()} + 2);
    const auto copyHalf = [&](std::uint32_t first, bool keepEdited, std::uint32_t mark) {
        auto next = edit.positions.begin();
        for (std::uint32_t n = 0; n < original.count; ++n) {
            const bool isEdited = next != edit.positions.end() && *next == n;
            if (isEdited)
                ++next;
            if (!isEdited || keepEdited)
                edited.references.push_back(reader.child(original, first + n));
            else if (edit.value)
                edited.references.push_back(mark);
        }
        if (edit.addsKey())
            edited.references.push_back(mark);
    };
    copyHalf(0, edit.value != nullptr, EditedDictionary::newKey);
    copyHalf(original.count, false, EditedDictionary::newValue);
    return edited;
}

} // namespace

std::vector<EditedDictionary> editedDictionaries(const BinaryReader &reader, const BinaryEdit &edit)
{
    std::vector<EditedDictionary> dictionaries;
    for (std::size_t i = 0; i + 1 < edit.steps.size(); ++i)
        dictionaries.push_back(onTheWay(reader, edit.steps[i]));
    dictionaries.push_back(atTheEnd(reader, edit));
    return dictionaries;
}

} // namespace varnel::plist
