#pragma once

#include "platform/SessionLoginItems.h"

#include <QSet>

#include <optional>

namespace varnel {

/// A session's list that changes are tried out on, in memory. What only a real change can meet (a
/// full disk, missing rights) it does not foresee.
class DryRunSessionLoginItems : public SessionLoginItems {
public:
    /// The inner list is only read, and outlives this one.
    explicit DryRunSessionLoginItems(const SessionLoginItems &inner);

    Result<QList<SessionLoginItem>> snapshot() const override;
    Result<void> insertAtEnd(const QString &path) override;
    Result<void> canInsert(const QString &path) const override;
    QString iconOf(const QString &path) const override { return inner.iconOf(path); }
    QString applicationsFolder() const override { return inner.applicationsFolder(); }
    QString pathInList(const QString &here) const override { return inner.pathInList(here); }
    Result<void> removeEvery(const QString &path) override;
    QString keptIn(const QString &path) const override;
    QString keepingPlace(const QString &path) const override { return inner.keepingPlace(path); }

private:
    const SessionLoginItems &inner;
    std::optional<QList<SessionLoginItem>> tried;
    QSet<QString> removed;
};

} // namespace varnel
