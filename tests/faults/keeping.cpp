// Keeps, changes and puts back the files of a home, as a save and the way back from it do, for the
// fault loop: without settings, rows and restart flags, so that every call is one of the kept
// files'.
//
// usage: keeping HOME save|back
//
// The exit status is 0 when all is done, 3 when nothing was changed, 4 when some of it was.

#include "platform/linux/HomeOwner.h"
#include "platform/linux/LinuxHomePorts.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace varnel;
using namespace Qt::StringLiterals;

namespace {

constexpr int done = 0;
constexpr int nothingChanged = 3;
constexpr int someChanged = 4;
constexpr qint64 longestIndex = 4096;

class Keeping {
public:
    explicit Keeping(const HomeFolder &home)
        : home(home), host(home, home.path + u"/Library/Application Support/Varnel/"),
          ports(host.ports())
    {
        ports.files.sweep(home.preferencesDirectory());
        (void)ports.keptFolders.sweep(parent);
    }

    int save()
    {
        for (const QString &folder : {support, parent}) {
            if (!good(ports.folders.makeFolder(home, folder)))
                return nothingChanged;
        }
        const Result<QString> run = ports.keptFolders.make(parent, u"quillet1"_s);
        if (!good(run))
            return nothingChanged;
        QByteArray index;
        for (const QString &name : names) {
            const auto kept = ports.keptFolders.keep(path(name), run.value(), name);
            if (!kept && kept.error().code != ErrorCode::NotFound)
                return good(kept) ? done : nothingChanged;
            index += (kept ? "old " : "none ") + name.toUtf8() + '\n';
        }
        if (!good(ports.keptFolders.write(run.value(), u"index"_s, index)))
            return nothingChanged;
        int changed = 0;
        for (const QString &name : names) {
            if (!good(ports.files.update(path(name), [](const auto &) {
                    return Result<std::optional<QByteArray>>(std::optional(QByteArray("new")));
                })))
                return changed == 0 ? nothingChanged : someChanged;
            ++changed;
        }
        return done;
    }

    int back()
    {
        const Result<QStringList> runs = ports.keptFolders.list(parent);
        if (!runs && runs.error().code == ErrorCode::NotFound)
            return done;
        if (!good(runs))
            return nothingChanged;
        bool well = true;
        for (const QString &run : runs.value())
            well &= goBack(parent + run);
        return well ? done : someChanged;
    }

    static bool good(const auto &result)
    {
        if (!result)
            std::fprintf(stderr, "varnelctl: %s\n", qUtf8Printable(result.error().text));
        return result.ok();
    }

private:
    [[nodiscard]] QString path(const QString &name) const
    {
        return home.preferencesDirectory() + u'/' + name;
    }

    bool goBack(const QString &run)
    {
        const Result<bool> held = ports.keptFolders.hold(run);
        if (!good(held))
            return false;
        const Result<QByteArray> index = ports.keptFolders.read(run, u"index"_s, longestIndex);
        // Without it, nothing was changed yet; or all was put back.
        if (!index && index.error().code != ErrorCode::NotFound)
            return good(index);
        bool well = true;
        for (const QByteArray &line : index ? index.value().split('\n') : QByteArrayList()) {
            if (line.startsWith("old "))
                well &= putBack(run, QString::fromUtf8(line.mid(4)));
            else if (line.startsWith("none "))
                well &= good(ports.keptFolders.takeAway(path(QString::fromUtf8(line.mid(5))),
                                                        [](const auto &) { return true; }));
        }
        return well && good(ports.files.remove(run + u"/index"))
            && good(ports.keptFolders.discard(run));
    }

    bool putBack(const QString &run, const QString &name)
    {
        const auto result = ports.keptFolders.putBack(
            run, name, path(name), [](const QByteArray &kept) { return kept.startsWith("old"); },
            [](const auto &now) { return !now || now->startsWith("old") || *now == "new"; });
        // A run that was stopped put it back already.
        if (!result && result.error().code == ErrorCode::NotFound)
            return true;
        return good(result) && result.value() == KeptFolders::PutBack::Done;
    }

    HomeFolder home;
    LinuxHomePorts host;
    HomePorts ports;
    QString support = home.path + u"/Library/Application Support/Varnel/";
    QString parent = support + u"Kept/";
    QStringList names {u"a.plist"_s, u"b.plist"_s, u"c.plist"_s};
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Result<HomeFolder> home = workAsOwner({QFile::decodeName(argv[1]), false});
    if (argc != 3 || !Keeping::good(home))
        return nothingChanged;
    Keeping keeping(home.value());
    return qstrcmp(argv[2], "save") == 0 ? keeping.save() : keeping.back();
}
