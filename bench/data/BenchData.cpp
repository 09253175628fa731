#include "data/BenchData.h"

#include <QDir>
#include <QFile>

#include <cstdlib>

namespace varnel::bench {

namespace {

[[noreturn]] void giveUp(const QString &why)
{
    qFatal("%s", qPrintable(why));
}

void writeEntry(const QString &file, const QString &application)
{
    QFile entry(file);
    const QString text = u"[Desktop Entry]\nType=Application\nName=Sample\nExec=" + application
        + u"\nX-Varnel-Path=" + application + u'\n';
    if (!entry.open(QIODevice::WriteOnly) || entry.write(text.toUtf8()) < 0)
        giveUp(file + u": " + entry.errorString());
}

} // namespace

QString sample(const QString &name)
{
    return qEnvironmentVariable("VARNEL_BENCH_DATA") + u'/' + name;
}

QByteArray sampleBytes(const QString &name)
{
    QFile file(sample(name));
    if (!file.open(QIODevice::ReadOnly))
        giveUp(file.fileName() + u": " + file.errorString());
    return file.readAll();
}

QList<ProcessRow> processRows(int count)
{
    constexpr int ofBundle = 4;
    QList<ProcessRow> rows;
    for (int i = 0; i < count; ++i) {
        const QString number = QString::number(i % ((count + ofBundle - 1) / ofBundle));
        rows.append({u"Sample " + number, QStringLiteral("20"), i + 1,
                     u"/Applications/Sample " + number + u".app", QString()});
    }
    return rows;
}

LoginItemsHome::LoginItemsHome(int count)
{
    QDir().mkpath(folders.user);
    QDir().mkpath(support);
    for (int i = 0; i < count; ++i)
        writeEntry(folders.user + u"/sample" + QString::number(i) + u".desktop", application(i));
}

QString LoginItemsHome::application(int number) const
{
    return u"/Applications/Sample" + QString::number(number) + u".app";
}

void LoginItemsHome::disableFirst(int count)
{
    saveAll(LoginItemChange::Disable, count);
}

void LoginItemsHome::enableFirst(int count)
{
    saveAll(LoginItemChange::Enable, count);
}

void LoginItemsHome::saveAll(LoginItemChange::Action action, int count)
{
    for (int i = 0; i < count; ++i)
        pending.addDataToChangeDataList(action, application(i), action == LoginItemChange::Enable);
    if (!pending.saveChanges().isEmpty())
        giveUp(QStringLiteral("the login items could not be saved"));
}

} // namespace varnel::bench
