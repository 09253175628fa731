#pragma once

#include <QByteArray>

namespace varnel::fuzz {

/// Whether libplist reads the whole of a file that the program takes, and no more than it: only
/// then can the two be compared. What it loses, misreads or falls over is listed with the code.
[[nodiscard]] bool libplistLosesNothing(const QByteArray &file);

} // namespace varnel::fuzz
