#pragma once

#include <QString>
#include <QStringList>

namespace varnel {

/// The homes whose windows were opened last by name, newest first, in the configuration of whoever
/// runs the program.
class RecentHomes {
public:
    static constexpr int most = 5;

    /// Read anew each time: other windows add theirs.
    [[nodiscard]] static QStringList list();

    /// Puts a home first. What can't be written is logged to lcIo.
    static void add(const QString &path);
};

} // namespace varnel
