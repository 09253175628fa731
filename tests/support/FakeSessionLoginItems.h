#pragma once

#include "base/Logging.h"
#include "platform/SessionLoginItems.h"

#include <optional>

namespace varnel::test {

/// A session's list in memory. Each change is logged, so that a LogCapture shows it among the steps
/// around it.
class FakeSessionLoginItems : public SessionLoginItems {
public:
    Result<QList<SessionLoginItem>> snapshot() const override
    {
        if (failure)
            return *failure;
        return items;
    }
    Result<void> insertAtEnd(const QString &path) override
    {
        varnelLog(lcLoginItems, u"session: insert " + path);
        if (failure)
            return logged(*failure);
        if (insertFailure)
            return logged(*insertFailure);
        if (hidesWhatIsInserted)
            return {};
        items.removeIf([&](const SessionLoginItem &item) { return item.path == path; });
        items.append({path.section(u'/', -1), path, {}});
        return {};
    }
    Result<void> removeEvery(const QString &path) override
    {
        varnelLog(lcLoginItems, u"session: remove " + path);
        if (failure)
            return logged(*failure);
        items.removeIf([&](const SessionLoginItem &item) { return item.path == path; });
        return {};
    }
    QString iconOf(const QString &path) const override { return icons.value(path); }
    QString applicationsFolder() const override { return QStringLiteral("/Applications"); }

    [[nodiscard]] QStringList paths() const
    {
        QStringList all;
        for (const SessionLoginItem &item : items)
            all.append(item.path);
        return all;
    }

    QList<SessionLoginItem> items;
    QHash<QString, QString> icons; ///< by path
    std::optional<Error> failure; ///< of everything, while it is set
    std::optional<Error> insertFailure; ///< of inserting alone
    bool hidesWhatIsInserted = false;

private:
    static Error logged(const Error &error)
    {
        varnelLog(lcIo, error.text);
        return error;
    }
};

} // namespace varnel::test
