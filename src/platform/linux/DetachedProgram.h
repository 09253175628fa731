#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

namespace varnel {

class HomeOwner;

/// Starts a program as that user, in a session of its own, reading and writing nothing; nobody
/// waits for its end. A bare name is looked for along PATH. An error when it could not be started.
///
/// QProcess has this too, but changes no user on the way.
[[nodiscard]] Result<void> startDetached(const HomeOwner &user, const QString &program,
                                         const QStringList &arguments, const QString &folder);

} // namespace varnel
