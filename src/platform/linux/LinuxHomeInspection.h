#pragma once

#include "base/HomeFolder.h"
#include "platform/HomeInspection.h"

#include <sys/types.h>

struct stat;

namespace varnel {

/// By the calls of the kernel, and its folder /proc.
class LinuxHomeInspection : public HomeInspection {
public:
    explicit LinuxHomeInspection(HomeFolder home, QString procFolder = QStringLiteral("/proc"));

    QString owner() const override;
    bool hasOwnersRights() const override;
    Result<Entry> look(const QString &path) const override;
    Result<void> checkEntry(const QString &folder) const override;
    Result<QList<Entry>> list(const QString &folder) const override;
    bool isLocked(const QString &database) const override;
    QList<Process> processes() const override;

private:
    [[nodiscard]] Entry entryOf(const QString &name, const struct stat &status) const;
    [[nodiscard]] bool hasThisHome(const QString &process) const;

    HomeFolder home;
    QString procFolder;
    uid_t ownerId;
};

} // namespace varnel
