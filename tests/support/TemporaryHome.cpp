#include "support/TemporaryHome.h"

#include <QDir>

namespace varnel::test {

TemporaryHome::TemporaryHome() : folder(QDir::currentPath() + u"/home-XXXXXX")
{
    QDir(folder.path()).mkpath(QStringLiteral("Library/Preferences"));
    QDir(folder.path()).mkpath(QStringLiteral("Library/Application Support"));
}

HomeFolder TemporaryHome::home() const
{
    return {path(), false};
}

QString TemporaryHome::path() const
{
    return folder.path();
}

QString TemporaryHome::preference(const QString &name) const
{
    return path() + u"/Library/Preferences/" + name;
}

} // namespace varnel::test
