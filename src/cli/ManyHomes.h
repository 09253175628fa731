#pragma once

#include "cli/HomeCommand.h"

#include <QJsonArray>
#include <QStringList>

namespace varnel::cli {

class ProgressLine;

/// One command's work in many homes, one after the other, with a result for each. A home that fails
/// stops none of the others. A folder that is named twice is worked on once.
class ManyHomes {
public:
    using Step = std::function<HomeOutcome(const QString &directory)>;

    ManyHomes(bool json, Console &console);

    /// `step` does the work in one of the folders.
    void run(const QStringList &directories, const Step &step);

    /// The status that they share; where they differ: Partly, or, of answers alone, Negative.
    [[nodiscard]] ExitStatus status() const;
    /// {"homes":[...]}, an object for each home in the order named.
    [[nodiscard]] QJsonObject object() const { return {{QStringLiteral("homes"), objects}}; }

private:
    void show(const QString &directory, const HomeOutcome &outcome);
    void print(const QString &directory, const QString &text);

    bool json;
    Console &console;
    QJsonArray objects;
    QList<ExitStatus> statuses;
    bool printed = false; ///< something of a home
};

} // namespace varnel::cli
