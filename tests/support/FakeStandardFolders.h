#pragma once

#include "platform/StandardFolders.h"

#include <QList>

#include <optional>

namespace varnel::test {

/// Makes nothing; writes down for which home it was asked.
class FakeStandardFolders : public StandardFolders {
public:
    struct Call {
        QString home;
        Missing missing;
        bool operator==(const Call &) const = default;
    };

    Result<void> ensure(const HomeFolder &home, Missing missing) override
    {
        calls.append({home.path, missing});
        return failure ? Result<void>(*failure) : Result<void>();
    }

    Result<QStringList> toMake(const HomeFolder &, Missing) const override
    {
        return failure ? Result<QStringList>(*failure) : Result<QStringList>(QStringList());
    }

    QList<Call> calls;
    std::optional<Error> failure;
};

} // namespace varnel::test
