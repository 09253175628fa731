// counted CASE: does one piece of the core's work once unseen, so that everything is loaded, and
// once counted. Without a case it prints the names of all.

#include "backup/BackupReader.h"
#include "cli/HomeSession.h"
#include "data/BenchData.h"
#include "plist/PropertyList.h"
#include "settings/Catalogue.h"
#include "settings/SearchIndex.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include <valgrind/callgrind.h>

namespace varnel::bench {

namespace {

using Work = std::function<void()>;

void require(bool holds)
{
    if (!holds)
        qFatal("the counted work has failed");
}

Work lookUp(const char *name)
{
    return [bytes = sampleBytes(QString::fromLatin1(name))] {
        const auto list = plist::PropertyList::open(bytes);
        require(list.ok() && list.value().value({QStringLiteral("tilesize")}).integer == 48);
    };
}

Work edit(const char *name)
{
    return [bytes = sampleBytes(QString::fromLatin1(name))] {
        auto list = plist::PropertyList::open(bytes);
        require(list.ok());
        plist::PropertyList edited = std::move(list).value();
        require(edited.set({QStringLiteral("tilesize")}, qint64(64)).ok());
    };
}

Work search()
{
    return [] {
        const QString typed = QStringLiteral("minimize");
        for (qsizetype length = 1; length <= typed.size(); ++length)
            require(!findViews(typed.left(length)).isEmpty());
    };
}

Work backupRows()
{
    return [] {
        const auto rows = readBackupRows(sample(QStringLiteral("rows-1000.sqlite")));
        require(rows.ok() && rows.value().size() == 1000);
    };
}

Work listSettings()
{
    return [] {
        const cli::HomeSession session({sample(QStringLiteral("home")), false});
        QList<const SettingRow *> rows;
        for (const SettingRow &row : catalogue())
            rows.append(&row);
        const QList<cli::SettingReport> reports = session.reports(rows);
        require(reports.size() == 50 && session.unreadableFiles(reports).isEmpty());
    };
}

Work readLoginItems()
{
    const auto home = std::make_shared<LoginItemsHome>(100);
    home->disableFirst(20);
    return [home] { require(home->access().readData().size() == 100); };
}

Work saveLoginItems()
{
    const auto home = std::make_shared<LoginItemsHome>(100);
    return [home] {
        home->disableFirst(20);
        home->enableFirst(20);
    };
}

Work mergeProcesses()
{
    return [rows = processRows(2000)] { require(mergedByBundle(rows).size() == 500); };
}

const std::map<std::string, std::function<Work()>> cases {
    {"look-up-binary", [] { return lookUp("keys-5000.binary.plist"); }},
    {"look-up-xml", [] { return lookUp("keys-5000.xml.plist"); }},
    {"look-up-xml-with-comment", [] { return lookUp("keys-5000.comment.plist"); }},
    {"edit-binary", [] { return edit("keys-5000.binary.plist"); }},
    {"edit-xml", [] { return edit("keys-5000.xml.plist"); }},
    {"edit-xml-with-comment", [] { return edit("keys-5000.comment.plist"); }},
    {"search", search},
    {"backup-rows", backupRows},
    {"list-fifty-settings", listSettings},
    {"login-items-read", readLoginItems},
    {"login-items-save", saveLoginItems},
    {"process-merge", mergeProcesses},
};

int run(const std::string &name)
{
    const auto found = cases.find(name);
    if (found == cases.end()) {
        for (const auto &each : cases)
            std::puts(each.first.c_str());
        return name.empty() ? 0 : 2;
    }
    const Work work = found->second();
    work();
    CALLGRIND_START_INSTRUMENTATION;
    work();
    CALLGRIND_STOP_INSTRUMENTATION;
    return 0;
}

} // namespace

} // namespace varnel::bench

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return varnel::bench::run(argc > 1 ? argv[1] : "");
}
