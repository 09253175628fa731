#pragma once

#include <QDirIterator>
#include <QFile>
#include <QString>
#include <QStringList>

namespace varnel::test {

/// The first of the names that a process of this machine has, whosever it is; null when none has.
[[nodiscard]] inline QString runningOneOf(const QStringList &names)
{
    QDirIterator processes(QStringLiteral("/proc"), QDir::Dirs | QDir::NoDotAndDotDot);
    while (processes.hasNext()) {
        QFile file(processes.next() + u"/comm");
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString name = QString::fromLocal8Bit(file.readAll()).trimmed();
        if (names.contains(name))
            return name;
    }
    return {};
}

} // namespace varnel::test
