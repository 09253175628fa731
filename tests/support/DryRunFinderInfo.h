#pragma once

#include "platform/FinderInfo.h"

#include <QStringList>

#include <map>

namespace varnel {

/// Finder information that tries writes out in memory and touches nothing. Each path is read once,
/// so that all answers are about the same moment.
class DryRunFinderInfo : public FinderInfo {
public:
    /// The inner one is only read, and outlives this one.
    explicit DryRunFinderInfo(const FinderInfo &inner);

    Reading read(const QString &path) const override;
    int write(const QString &path, const FinderInfoBytes &bytes) override;
    int remove(const QString &path) override { return write(path, {}); }

    /// A folder that would be made by then: one without any information.
    void expectFolder(const QString &path) { originals.insert_or_assign(path, Reading {}); }

    /// The paths whose information would now differ from what it is, in the order of their first
    /// change.
    [[nodiscard]] const QStringList &changedPaths() const { return changed; }

    /// How many tries left something different from what they met.
    [[nodiscard]] int changes() const { return count; }

private:
    [[nodiscard]] const Reading &original(const QString &path) const;

    const FinderInfo &inner;
    mutable std::map<QString, Reading> originals;
    std::map<QString, FinderInfoBytes> tried;
    QStringList changed;
    int count = 0;
};

} // namespace varnel
