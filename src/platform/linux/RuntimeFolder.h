#pragma once

#include <QByteArray>

namespace varnel {

/// The folder for sockets and locks of this user's running programs: $XDG_RUNTIME_DIR, else
/// "/tmp/varnel-UID", made if missing. Only one that belongs to this user and that nobody else may
/// enter or write; empty when there is none such.
[[nodiscard]] QByteArray runtimeFolder();

} // namespace varnel
