#pragma once

#include "platform/CommandRunner.h"

#include <QList>

#include <functional>

namespace varnel::test {

/// Runs nothing; writes down what it was asked to run and answers from the test.
class FakeCommandRunner : public CommandRunner {
public:
    struct Call {
        QString launchPath;
        QStringList arguments;
        bool operator==(const Call &) const = default;
    };

    Result<QString> run(const QString &launchPath, const QStringList &arguments) override
    {
        calls.append({launchPath, arguments});
        return answer(calls.last());
    }

    QList<Call> calls;
    std::function<Result<QString>(const Call &)> answer = [](const Call &) {
        return Result<QString>(QStringLiteral(""));
    };
};

} // namespace varnel::test
