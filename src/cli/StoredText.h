#pragma once

#include "base/Result.h"
#include "plist/Value.h"

#include <QJsonValue>
#include <QString>

namespace varnel::cli {

/// What stands under a key, as the Mac's own preferences tool prints it: booleans as 1 and 0, texts
/// as they are, an array a line an element between brackets. Failed for what this program does not
/// look into: dictionaries, data, dates, arrays of anything but texts.
[[nodiscard]] Result<QString> storedText(const plist::Value &stored);

/// The same for scripts; null where nothing stands, and for what storedText() refuses.
[[nodiscard]] QJsonValue storedJson(const plist::Value &stored);

} // namespace varnel::cli
