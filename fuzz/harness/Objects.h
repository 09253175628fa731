#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace varnel::fuzz {

/// One entry of a property list's root: its key and a digest of everything beneath.
struct RootEntry {
    QString key;
    QByteArray digest;

    bool operator==(const RootEntry &) const = default;
};

/// The root's entries in order, by readers that share no code with the program. Digests are of what
/// is said, not of how: the same integer in other bytes has the same digest.
///
/// A valid binary file; one that is not valid breaks a promise.
[[nodiscard]] QList<RootEntry> binaryObjects(const QByteArray &file);
/// None where the reader of this has other ideas of XML than the program's.
[[nodiscard]] std::optional<QList<RootEntry>> xmlObjects(const QByteArray &file);
/// By the file's first bytes.
[[nodiscard]] std::optional<QList<RootEntry>> objectsOf(const QByteArray &file);

} // namespace varnel::fuzz
