#pragma once

#include <QString>

#include <functional>

namespace varnel::cli {

/// Log lines go to standard error, with their category, when they are asked for; else nowhere.
void prepareLogging(bool verbose);

/// From here on log lines go there.
void sendLogTo(std::function<void(const QString &line)> sink);

} // namespace varnel::cli
