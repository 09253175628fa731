#include "platform/DryRunSessionLoginItems.h"

namespace varnel {

DryRunSessionLoginItems::DryRunSessionLoginItems(const SessionLoginItems &inner) : inner(inner) { }

Result<QList<SessionLoginItem>> DryRunSessionLoginItems::snapshot() const
{
    return tried ? Result<QList<SessionLoginItem>>(*tried) : inner.snapshot();
}

Result<void> DryRunSessionLoginItems::insertAtEnd(const QString &path)
{
    if (Result<void> able = canInsert(path); !able)
        return able;
    if (Result<void> taken = removeEvery(path); !taken)
        return taken;
    removed.remove(path);
    tried->append({path.section(u'/', -1), path, {}});
    return {};
}

Result<void> DryRunSessionLoginItems::canInsert(const QString &path) const
{
    return removed.contains(path) ? Result<void>() : inner.canInsert(path);
}

Result<void> DryRunSessionLoginItems::removeEvery(const QString &path)
{
    Result<QList<SessionLoginItem>> items = snapshot();
    if (!items)
        return items.error();
    const auto gone =
        items.value().removeIf([&](const SessionLoginItem &item) { return item.path == path; });
    if (gone > 0)
        removed.insert(path);
    tried = std::move(items).value();
    return {};
}

QString DryRunSessionLoginItems::keptIn(const QString &path) const
{
    return removed.contains(path) ? inner.keepingPlace(path) : inner.keptIn(path);
}

} // namespace varnel
