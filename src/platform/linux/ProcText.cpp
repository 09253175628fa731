#include "platform/linux/ProcText.h"

#include <QFile>
#include <QList>

#include <algorithm>

namespace varnel {

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<QByteArray> words(const QByteArray &line)
{
    return line.simplified().split(' ');
}

} // namespace

QHash<QByteArray, quint64> readMemInfo(const QString &path)
{
    return parseMemInfo(readAll(path));
}

QHash<QByteArray, quint64> parseMemInfo(const QByteArray &text)
{
    QHash<QByteArray, quint64> lines;
    for (const QByteArray &line : text.split('\n')) {
        const QList<QByteArray> fields = words(line);
        if (fields.size() != 3 || !fields[0].endsWith(':') || fields[2] != "kB")
            continue;
        bool isNumber = false;
        const quint64 kilobytes = fields[1].toULongLong(&isNumber);
        if (isNumber)
            lines.insert(fields[0].chopped(1), kilobytes);
    }
    return lines;
}

QHash<QByteArray, qint64> readSnmpLine(const QString &path, const QByteArray &protocol)
{
    return parseSnmp(readAll(path), protocol);
}

QHash<QByteArray, qint64> parseSnmp(const QByteArray &text, const QByteArray &protocol)
{
    const QByteArray start = protocol + ": ";
    QHash<QByteArray, qint64> counters;
    QList<QByteArray> names;
    for (const QByteArray &line : text.split('\n')) {
        if (!line.startsWith(start))
            continue;
        const QList<QByteArray> fields = words(line);
        if (names.isEmpty()) {
            names = fields;
            continue;
        }
        for (qsizetype i = 1; i < std::min(fields.size(), names.size()); ++i)
            counters.insert(names[i], fields[i].toLongLong());
        break;
    }
    return counters;
}

std::optional<ProcStat> parseProcStat(const QByteArray &text)
{
    const qsizetype open = text.indexOf('(');
    const qsizetype close = text.lastIndexOf(')');
    if (open < 0 || close < open)
        return std::nullopt;
    // Field 3 is the first behind the name.
    constexpr qsizetype parentField = 4 - 3;
    constexpr qsizetype priorityField = 18 - 3;
    const QList<QByteArray> fields = words(text.mid(close + 1));
    if (fields.size() <= priorityField)
        return std::nullopt;
    bool idOk = false;
    bool parentOk = false;
    bool priorityOk = false;
    ProcStat stat;
    stat.processId = text.left(open).trimmed().toInt(&idOk);
    stat.command = text.mid(open + 1, close - open - 1);
    stat.parentId = fields[parentField].toInt(&parentOk);
    stat.priority = fields[priorityField].toInt(&priorityOk);
    if (!idOk || !parentOk || !priorityOk)
        return std::nullopt;
    return stat;
}

} // namespace varnel
