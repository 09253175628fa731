#pragma once

#include <QByteArray>

#include <functional>

namespace varnel::cli {

/// "12 of 200 homes" at the foot of a terminal, once the work takes longer than a second.
class ProgressLine {
public:
    /// Where the line goes, bytes as they are.
    using Sink = std::function<void(const QByteArray &)>;
    /// Milliseconds since the work began.
    using Clock = std::function<qint64()>;

    ProgressLine(qsizetype total, Sink sink, Clock clock);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    void show(qsizetype done);
    /// Makes room for something else on the line.
    void clear();

private:
    qsizetype total;
    Sink sink;
    Clock clock;
    qint64 lastShown = 0;
    bool visible = false;
};

} // namespace varnel::cli
