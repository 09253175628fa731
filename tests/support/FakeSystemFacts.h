#pragma once

#include "platform/SystemFacts.h"

#include <QHash>

#include <algorithm>
#include <cstring>

namespace varnel::test {

/// A host whose facts a test sets.
class FakeSystemFacts : public SystemFacts {
public:
    std::optional<MemoryFacts> memory() const override { return memoryFacts; }

    Result<void> sysctlbyname(const char *name, std::span<std::byte> buffer) const override
    {
        asked.append(QString::fromLatin1(name) + u' ' + QString::number(buffer.size()));
        const auto block = blocks.constFind(QByteArray(name));
        if (block == blocks.constEnd())
            return Error {ErrorCode::Failed, QString::fromLatin1(name)};
        std::memcpy(buffer.data(), block->constData(),
                    std::min(buffer.size(), static_cast<std::size_t>(block->size())));
        return {};
    }

    QString userName() const override { return user; }
    QString fullUserName() const override { return fullUser; }
    std::optional<QString> fullNameFor(const HomeFolder &home) const override
    {
        return home.path == accountHome ? std::optional(accountName) : std::nullopt;
    }
    QString temporaryDirectory() const override { return temporary; }

    std::optional<MemoryFacts> memoryFacts;
    QHash<QByteArray, QByteArray> blocks;
    QString user = QStringLiteral("ann");
    QString fullUser = QStringLiteral("Ann Example");
    QString temporary;
    QString accountHome; ///< whose account has that name
    QString accountName;
    mutable QStringList asked;
};

} // namespace varnel::test
