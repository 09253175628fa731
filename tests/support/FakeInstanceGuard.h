#pragma once

#include "platform/InstanceGuard.h"

#include <QStringList>

namespace varnel::test {

/// Answers from the test; raise() plays the second start.
class FakeInstanceGuard : public InstanceGuard {
public:
    Outcome acquire(const QString &home, std::function<void()> onRaise) override
    {
        homes.append(home);
        raise = std::move(onRaise);
        return outcome;
    }

    Outcome outcome = Outcome::First;
    QStringList homes;
    std::function<void()> raise;
};

} // namespace varnel::test
