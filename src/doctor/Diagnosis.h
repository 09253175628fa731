#pragma once

#include "doctor/Finding.h"
#include "platform/HomeInspection.h"
#include "sysinfo/SystemRows.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace varnel {

/// What a look at a home has shown.
struct Diagnosis {
    /// By kind, then as they were met.
    QList<Finding> findings;
    /// What could not be looked at, though the home's owner may: a line for each.
    QStringList unread;

    // Facts, of healthy homes too.

    struct Stock {
        int count = 0;
        qint64 bytes = 0;
    };
    // None where they could not be looked at.
    std::optional<Stock> backups; ///< backup files
    std::optional<Stock> kept; ///< folders of kept files, with all that is in them
    SystemVersion system;
    /// In one's own home programs are expected to run, and are no finding.
    QList<HomeInspection::Process> processes;
};

} // namespace varnel
