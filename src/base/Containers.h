#pragma once

#include "base/HomeFolder.h"

#include <QStringList>

namespace varnel {

/// The applications with settings that a Mac runs in containers, by the names of their domains. In
/// which system each came to live in one differs; the home tells.
inline const QStringList &containedApplications()
{
    static const QStringList all {QStringLiteral("com.apple.mail"),
                                  QStringLiteral("com.apple.Safari"),
                                  QStringLiteral("com.apple.QuickTimePlayerX")};
    return all;
}

[[nodiscard]] inline QString containersOf(const HomeFolder &home)
{
    return home.path + u"/Library/Containers";
}

/// Where such an application keeps its preferences once it lives in a container. The system makes
/// that folder, this program never does.
[[nodiscard]] inline QString containerPreferences(const HomeFolder &home,
                                                  const QString &application)
{
    return containersOf(home) + u'/' + application + u"/Data/Library/Preferences";
}

} // namespace varnel
