#include "plist/BinaryEdit.h"

#include "plist/BinaryDecoding.h"
#include "plist/Errors.h"

namespace varnel::plist {

namespace {

/// Goes on to the value of a key in the last step's dictionary; false where that has none.
bool descend(const BinaryReader &reader, const QString &key, std::vector<BinaryEdit::Step> &steps)
{
    BinaryEdit::Step &step = steps.back();
    const BinaryObject dictionary = reader.object(step.container);
    if (!dictionary.isDictionary())
        return false;
    const auto positions = positionsOf(reader, dictionary, key);
    if (positions.empty())
        return false;
    step.position = positions.back();
    steps.push_back({reader.child(dictionary, dictionary.count + step.position), 0});
    return true;
}

} // namespace

Result<BinaryEdit> BinaryEdit::find(const BinaryReader &reader, const QStringList &path)
{
    BinaryEdit edit;
    edit.key = path.last();
    edit.steps.push_back({reader.trailer().root, 0});
    for (qsizetype i = 0; i + 1 < path.size(); ++i) {
        if (!descend(reader, path[i], edit.steps))
            return noDictionary();
    }
    const BinaryObject dictionary = reader.object(edit.steps.back().container);
    if (!dictionary.isDictionary())
        return noDictionary();
    edit.positions = positionsOf(reader, dictionary, *edit.key);
    edit.insertAt = dictionary.count;
    return edit;
}

Result<BinaryEdit> BinaryEdit::findArray(const BinaryReader &reader, const QStringList &path)
{
    BinaryEdit edit;
    edit.steps.push_back({reader.trailer().root, 0});
    for (const QString &key : path) {
        if (!descend(reader, key, edit.steps))
            return noArray();
    }
    if (reader.object(edit.steps.back().container).type() != BinaryType::Array)
        return noArray();
    return edit;
}

} // namespace varnel::plist
