#pragma once

#include <QByteArray>

namespace varnel::fuzz {

/// Opens the file and looks up the root's keys as another reader sees them, what stands beneath
/// them, and keys that are not there. A file that can't be opened is not written to either.
void checkLookUps(const QByteArray &file);

} // namespace varnel::fuzz
