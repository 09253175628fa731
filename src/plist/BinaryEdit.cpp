#include "plist/BinaryEdit.h"

#include "plist/BinaryDecoding.h"
#include "plist/Errors.h"

namespace varnel::plist {

Result<BinaryEdit> BinaryEdit::find(const BinaryReader &reader, const QStringList &path)
{
    BinaryEdit edit;
    edit.key = path.last();
    edit.steps.push_back({reader.trailer().root, 0});
    for (qsizetype i = 0; i + 1 < path.size(); ++i) {
        Step &step = edit.steps.back();
        const BinaryObject dictionary = reader.object(step.dictionary);
        const auto positions = positionsOf(reader, dictionary, path[i]);
        if (positions.empty())
            return noDictionary();
        step.position = positions.back();
        const std::uint32_t next = reader.child(dictionary, dictionary.count + step.position);
        if (!reader.object(next).isDictionary())
            return noDictionary();
        edit.steps.push_back({next, 0});
    }
    edit.positions = positionsOf(reader, reader.object(edit.steps.back().dictionary), edit.key);
    return edit;
}

} // namespace varnel::plist
