#pragma once

#include "cli/Request.h"
#include "cli/Table.h"
#include "sysinfo/InfoRow.h"

#include "base/Result.h"

#include <QByteArray>

namespace varnel::cli {

/// One category of the facts about the system, as the window shows it.
struct SystemCategory {
    enum class Kind { MacOSX, Memory, Network };
    Kind kind = Kind::MacOSX;
    const char16_t *key = nullptr; ///< what is typed, and the JSON member's name
    const char16_t *title = nullptr;
};

/// The one named, in any letter case by key or title; all of them for a null name.
[[nodiscard]] Result<QList<SystemCategory>> lookUpCategories(const QString &typed);

/// What is typed for each.
[[nodiscard]] QStringList categoryNames();

/// A category with its facts; or why they can't be read.
struct SystemReport {
    SystemCategory category;
    Result<InfoRows> rows;
    QString note {}; ///< for people, below the rows; null: none
};

/// Reads the host. The home folder and the system's root are those of the command line.
[[nodiscard]] SystemReport readSystem(const SystemCategory &category, const Request &request);

[[nodiscard]] QByteArray systemDocument(const QList<SystemReport> &reports);
[[nodiscard]] QString systemSheet(const QList<SystemReport> &reports, const Style &style);

} // namespace varnel::cli
