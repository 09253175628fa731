#include "platform/linux/LoginItemsOrder.h"

#include "base/Literals.h"
#include "platform/FileStore.h"

#include <optional>
#include <utility>

namespace varnel {

namespace {

constexpr QChar mark = u'"';

QString lineOf(QString name)
{
    if (!name.contains(u'\n') && !name.startsWith(mark))
        return name;
    name.replace(u"\\"_s, u"\\\\"_s).replace(u"\n"_s, u"\\n"_s);
    return mark + name + mark;
}

QString nameIn(const QString &line)
{
    if (line.size() < 2 || !line.startsWith(mark) || !line.endsWith(mark))
        return line;
    QString name;
    for (qsizetype i = 1; i < line.size() - 1; ++i) {
        const bool escaped = line[i] == u'\\' && i + 1 < line.size() - 1;
        if (escaped)
            ++i;
        name += escaped && line[i] == u'n' ? QChar(u'\n') : line[i];
    }
    return name;
}

QStringList namesIn(const QByteArray &bytes)
{
    QStringList names;
    for (const QString &line : QString::fromUtf8(bytes).split(u'\n', Qt::SkipEmptyParts))
        names.append(nameIn(line));
    return names;
}

QByteArray bytesOf(const QStringList &names)
{
    QString text;
    for (const QString &name : names)
        text += lineOf(name) + u'\n';
    return text.toUtf8();
}

} // namespace

LoginItemsOrder::LoginItemsOrder(QString file, FileStore &files)
    : path(std::move(file)), files(files)
{
}

QStringList LoginItemsOrder::names() const
{
    const Result<QByteArray> bytes = files.read(path);
    return bytes ? namesIn(bytes.value()) : QStringList();
}

Result<void> LoginItemsOrder::moveToEnd(const QStringList &names)
{
    return change([&](QStringList now) {
        now.removeIf([&](const QString &name) { return names.contains(name); });
        return now + names;
    });
}

Result<void> LoginItemsOrder::remove(const QStringList &names)
{
    return change([&](QStringList now) {
        now.removeIf([&](const QString &name) { return names.contains(name); });
        return now;
    });
}

Result<void> LoginItemsOrder::change(const Change &change)
{
    using Answer = Result<std::optional<QByteArray>>;
    return files.update(path, [&](const std::optional<QByteArray> &old) -> Answer {
        const QStringList names = change(namesIn(old.value_or(QByteArray())));
        if (names.isEmpty() && !old)
            return std::optional<QByteArray>();
        return std::optional(bytesOf(names));
    });
}

} // namespace varnel
