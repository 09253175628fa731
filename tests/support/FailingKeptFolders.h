#pragma once

#include "platform/KeptFolders.h"

#include <QMap>

#include <type_traits>

namespace varnel::test {

/// Passes everything on to another implementation, writes down what was asked, and lets chosen
/// operations fail in the other's place. All but release() and sweep() are operations; they are
/// counted from 1.
class FailingKeptFolders : public KeptFolders {
public:
    explicit FailingKeptFolders(KeptFolders &folders) : inner(folders) { }

    void failOperation(int number, const Error &error) { failures.insert(number, error); }

    Result<QString> make(const QString &parent, const QString &name) override
    {
        return met(u"make " + parent + name, [&] { return inner.make(parent, name); });
    }
    Result<bool> hold(const QString &folder) override
    {
        return met(u"hold " + folder, [&] { return inner.hold(folder); });
    }
    void release(const QString &folder) override
    {
        calls.append(u"release " + folder);
        inner.release(folder);
    }
    Result<bool> isInUse(const QString &folder) const override
    {
        return met(u"isInUse " + folder, [&] { return inner.isInUse(folder); });
    }
    Result<QStringList> list(const QString &parent) const override
    {
        return met(u"list " + parent, [&] { return inner.list(parent); });
    }
    Result<QStringList> sweep(const QString &parent) override
    {
        return met(u"sweep " + parent, [&] { return inner.sweep(parent); });
    }
    Result<Kept> keep(const QString &path, const QString &folder, const QString &name) override
    {
        return met(u"keep " + path, [&] { return inner.keep(path, folder, name); });
    }
    Result<QByteArray> read(const QString &folder, const QString &name, qint64 most) const override
    {
        return met(u"read " + folder + name, [&] { return inner.read(folder, name, most); });
    }
    Result<void> write(const QString &folder, const QString &name, const QByteArray &bytes) override
    {
        return met(u"write " + folder + name, [&] { return inner.write(folder, name, bytes); });
    }
    Result<PutBack> putBack(const QString &folder, const QString &name, const QString &path,
                            const RightKept &rightKept, const Accept &accept) override
    {
        return met(u"putBack " + path,
                   [&] { return inner.putBack(folder, name, path, rightKept, accept); });
    }
    Result<bool> takeAway(const QString &path, const Accept &accept) override
    {
        return met(u"takeAway " + path, [&] { return inner.takeAway(path, accept); });
    }
    Result<bool> removeFolderIfEmpty(const QString &path) override
    {
        return met(u"removeFolderIfEmpty " + path, [&] { return inner.removeFolderIfEmpty(path); });
    }
    Result<bool> discard(const QString &folder) override
    {
        return met(u"discard " + folder, [&] { return inner.discard(folder); });
    }

    mutable QStringList calls; ///< "keep /path", "putBack /path", "discard /folder/", ...
    mutable int operations = 0;

private:
    template <typename Operation>
    std::invoke_result_t<Operation> met(const QString &what, const Operation &operation) const
    {
        calls.append(what);
        const auto failure = failures.find(++operations);
        if (failure != failures.end())
            return *failure;
        return operation();
    }

    KeptFolders &inner;
    QMap<int, Error> failures;
};

} // namespace varnel::test
