#include "support/SettingsHome.h"

#include "base/Literals.h"

#include <QFile>

#include <stdexcept>

namespace varnel::test {

void SettingsHome::put(const QString &name, const QString &entries) const
{
    putBytes(name, xmlPlist(entries));
}

void SettingsHome::putBytes(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("could not write a preference file");
}

QByteArray SettingsHome::bytes(const QString &name) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("could not read a preference file");
    return file.readAll();
}

bool SettingsHome::has(const QString &name) const
{
    return QFile::exists(path(name));
}

SettingReading SettingsHome::read(int id) const
{
    return access.read(*findSetting(id));
}

Result<void> SettingsHome::write(int id, const SettingValue &value)
{
    return access.write(*findSetting(id), value, flags);
}

QByteArray xmlPlist(const QString &entries)
{
    const QString text =
        u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n<dict>\n"_s
        + entries + u"\n</dict>\n</plist>\n"_s;
    return text.toUtf8();
}

} // namespace varnel::test
