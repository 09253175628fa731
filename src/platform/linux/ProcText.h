#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace varnel {

/// The lines "Name:   123 kB" of a meminfo file, in kB; lines of another shape are passed over.
/// Empty when it can't be read.
[[nodiscard]] QHash<QByteArray, quint64> readMemInfo(const QString &path);
[[nodiscard]] QHash<QByteArray, quint64> parseMemInfo(const QByteArray &text);

/// One protocol's counters of a net/snmp file: a line of names and the line of values below it.
[[nodiscard]] QHash<QByteArray, qint64> readSnmpLine(const QString &path,
                                                     const QByteArray &protocol);
[[nodiscard]] QHash<QByteArray, qint64> parseSnmp(const QByteArray &text,
                                                  const QByteArray &protocol);

/// What is read of a process's stat line. The command name stands in parentheses and may hold any
/// byte, parentheses and blanks too.
struct ProcStat {
    int processId = 0;
    QByteArray command;
    int parentId = 0;
    int priority = 0; ///< the scheduler's value (field 18)
};
[[nodiscard]] std::optional<ProcStat> parseProcStat(const QByteArray &text);

} // namespace varnel
