#pragma once

#include "base/Result.h"
#include "doctor/Diagnosis.h"

#include <QString>

namespace varnel {

class Examination;
class FileReader;
class Workspace;

/// Looks a home over, and changes nothing in it: no byte, no name, no time but those of access.
class Doctor {
public:
    /// All of it outlives the doctor.
    struct Ports {
        const HomeInspection &inspection;
        const FileReader &systemDisk; ///< of the system that the home belongs to
        QString systemRoot; ///< its folder; null: none is known
    };
    Doctor(Workspace &workspace, Ports ports);

    /// NotFound where a named folder has no Library in it, which is no home.
    [[nodiscard]] Result<Diagnosis> examine() const;

private:
    void examineLoginItems(Examination &examination) const;
    void examineProcesses(Examination &examination) const;
    [[nodiscard]] bool isMissing(const QString &application) const;
    [[nodiscard]] bool isMissingOnItsMac(const QString &application) const;
    [[nodiscard]] bool isOnSystemDisk() const;

    Workspace &workspace;
    Ports ports;
};

} // namespace varnel
