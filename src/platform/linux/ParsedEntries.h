#pragma once

#include "platform/linux/AutostartEntry.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace varnel {

/// Desktop entries by their file, each parsed once for as long as its bytes stay the same: one
/// change lists the entries several times over, and somebody else's entry may be large.
class ParsedEntries {
public:
    /// What parseAutostartEntry() says of the bytes that the file holds now; valid until the next
    /// call.
    [[nodiscard]] const std::optional<AutostartEntry> &entryOf(const QString &file,
                                                               const QByteArray &bytes);

private:
    struct Parsed {
        QByteArray bytes;
        std::optional<AutostartEntry> entry;
    };

    QHash<QString, Parsed> byFile;
};

} // namespace varnel
