#pragma once

#include <QString>

#include <functional>

namespace varnel::cli {

/// Log lines go to standard error, with their category, when they are asked for; else nowhere.
void prepareLogging(bool verbose);

/// From here on log lines go there.
void sendLogTo(std::function<void(const QString &line)> sink);

/// Keeps the log silent while one lives: for work that is only tried out.
class LogSilence {
public:
    explicit LogSilence(bool wanted = true);
    ~LogSilence();
    LogSilence(const LogSilence &) = delete;
    LogSilence &operator=(const LogSilence &) = delete;

private:
    bool wanted;
};

} // namespace varnel::cli
