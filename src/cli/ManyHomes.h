#pragma once

#include "cli/HomeCommand.h"
#include "platform/linux/UncopiedBytes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

namespace varnel::cli {

class ProgressLine;

/// One command's work in many homes, with a result for each in the order named. A home that fails
/// stops none of the others. A folder that is named twice is worked on once.
class ManyHomes {
public:
    /// What waits for the work in a home and gives its outcome.
    using Waiting = std::function<HomeOutcome()>;
    /// Begins the work in one of the folders; where it is not done by another process, all of it is
    /// left to what waits.
    using Begin = std::function<Waiting(const QString &directory)>;

    ManyHomes(bool json, Console &console);

    /// `ahead`: in how many homes the work is begun before that of one is waited for.
    void run(const QStringList &directories, const Begin &begin, int ahead);

    /// The status that they share; where they differ: Partly, or, of answers alone, Negative.
    [[nodiscard]] ExitStatus status() const;
    /// The document: `object` with "homes", an object for each home in the order named.
    [[nodiscard]] QByteArray document(QJsonObject object) const;

private:
    void show(const QString &directory, const HomeOutcome &outcome);
    void print(const QString &directory, const QString &text);

    bool json;
    Console &console;
    UncopiedBytes objects; ///< as they stand in the document
    QList<ExitStatus> statuses;
    bool printed = false; ///< something of a home
};

} // namespace varnel::cli
