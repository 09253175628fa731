#include "support/DryRunFinderInfo.h"

namespace varnel {

DryRunFinderInfo::DryRunFinderInfo(const FinderInfo &inner) : inner(inner) { }

FinderInfo::Reading DryRunFinderInfo::read(const QString &path) const
{
    const auto at = tried.find(path);
    return at != tried.end() ? Reading {0, at->second, true} : original(path);
}

const FinderInfo::Reading &DryRunFinderInfo::original(const QString &path) const
{
    const auto at = originals.find(path);
    return at != originals.end() ? at->second
                                 : originals.emplace(path, inner.read(path)).first->second;
}

int DryRunFinderInfo::write(const QString &path, const FinderInfoBytes &bytes)
{
    if (const Reading before = read(path); before.error == 0 && before.bytes == bytes)
        return 0;
    tried[path] = bytes;
    ++count;
    const Reading &first = original(path);
    if (first.error == 0 && first.bytes == bytes)
        changed.removeAll(path);
    else if (!changed.contains(path))
        changed.append(path);
    return 0;
}

} // namespace varnel
