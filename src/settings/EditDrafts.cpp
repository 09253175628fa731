#include "settings/EditDrafts.h"

namespace varnel {

namespace {

bool areSame(const QByteArray &one, const QByteArray &other)
{
    return (one.constData() == other.constData() && one.size() == other.size()) || one == other;
}

} // namespace

Result<plist::PropertyList> EditDrafts::open(const QByteArray &bytes)
{
    if (opened && areSame(opened->bytes(), bytes))
        return opened->copy();
    opened.reset();
    Result<plist::PropertyList> list = plist::PropertyList::open(bytes);
    if (list && bytes.size() <= largestFile)
        opened = list.value().copy();
    return list;
}

std::optional<QByteArray> EditDrafts::edited(const QByteArray &bytes,
                                             const QList<KeyChange> &changes) const
{
    if (!edit || edit->changes != changes || !areSame(edit->before, bytes))
        return std::nullopt;
    return edit->after;
}

void EditDrafts::keepEdit(const QByteArray &bytes, const QList<KeyChange> &changes,
                          const QByteArray &edited)
{
    if (bytes.size() > largestFile)
        edit.reset();
    else
        edit = Edit {bytes, changes, edited};
}

} // namespace varnel
