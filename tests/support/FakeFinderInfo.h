#pragma once

#include "platform/FinderInfo.h"

#include <QMap>
#include <QStringList>

namespace varnel::test {

/// Finder information in memory.
class FakeFinderInfo : public FinderInfo {
public:
    Reading read(const QString &path) const override
    {
        calls.append(u"read " + path);
        return readError != 0 ? Reading {readError, {}, false}
                              : Reading {0, stored.value(path), stored.contains(path)};
    }
    int write(const QString &path, const FinderInfoBytes &bytes) override
    {
        calls.append(u"write " + path);
        if (writeError == 0)
            stored.insert(path, bytes);
        return writeError;
    }
    int remove(const QString &path) override
    {
        calls.append(u"remove " + path);
        if (writeError == 0)
            stored.remove(path);
        return writeError;
    }

    QMap<QString, FinderInfoBytes> stored;
    int readError = 0; ///< an errno value for every read from now on
    int writeError = 0; ///< the same for writes
    mutable QStringList calls; ///< "read /path", "write /path"
};

} // namespace varnel::test
