// How the core's work grows with what it works on. Each benchmark's name is a line of the report;
// its argument is the size.

#include "backup/BackupFolder.h"
#include "backup/BackupReader.h"
#include "backup/Playback.h"
#include "data/BenchData.h"
#include "platform/linux/LinuxFileStore.h"
#include "plist/PropertyList.h"
#include "settings/Catalogue.h"
#include "settings/SearchIndex.h"
#include "settings/SettingAccess.h"
#include "ui/ListSheet.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

#include <memory>

namespace varnel::bench {

namespace {

Q_LOGGING_CATEGORY(lcBench, "varnel.bench")

void require(bool holds, benchmark::State &state)
{
    if (!holds)
        state.SkipWithError("the work has failed");
}

QByteArray keys(const benchmark::State &state, const char *form)
{
    return sampleBytes(
        QStringLiteral("keys-%1.%2.plist").arg(state.range(0)).arg(QString::fromLatin1(form)));
}

void lookUp(benchmark::State &state, const char *form)
{
    const QByteArray bytes = keys(state, form);
    for (auto _ : state) {
        const auto list = plist::PropertyList::open(bytes);
        require(list.ok() && list.value().value({QStringLiteral("tilesize")}).integer == 48, state);
    }
}

void edit(benchmark::State &state, const char *form)
{
    const QByteArray bytes = keys(state, form);
    for (auto _ : state) {
        auto list = plist::PropertyList::open(bytes);
        require(list.ok(), state);
        plist::PropertyList edited = std::move(list).value();
        require(edited.set({QStringLiteral("tilesize")}, qint64(64)).ok(), state);
    }
}

void listBackupFiles(benchmark::State &state)
{
    const QTemporaryDir folder;
    for (int i = 0; i < state.range(0); ++i)
        require(QFile(folder.filePath(QStringLiteral("quillet%1.sqlite").arg(i + 1)))
                    .open(QIODevice::WriteOnly),
                state);
    LinuxFileStore store({folder.path(), true});
    const BackupFolder backups(folder.path() + u'/', store);
    for (auto _ : state) {
        QList<BackupEntry> entries = backups.list().value();
        sortByDate(entries, false);
        sortByName(entries, true);
        require(entries.size() == state.range(0), state);
    }
}

BackupLine lineOf(const BackupRow &row)
{
    return describeRow(row, [](int id, int value, const QString &extra) {
        const SettingRow *setting = findSetting(id);
        return setting == nullptr
            ? QStringList()
            : QStringList {locationString(*setting), shortLocationString(*setting),
                           actionString(*setting, {value, extra})};
    });
}

void contentsRows(benchmark::State &state)
{
    const QString file = sample(QStringLiteral("rows-%1.sqlite").arg(state.range(0)));
    ListSheet sheet(QStringLiteral("Contents"),
                    {{QStringLiteral("Location"), Qt::CaseInsensitive},
                     {QStringLiteral("Description"), Qt::CaseSensitive}},
                    lcBench, nullptr);
    sheet.show();
    for (auto _ : state) {
        const auto rows = readBackupRows(file);
        require(rows.ok() && rows.value().size() == state.range(0), state);
        if (!rows.ok())
            break;
        QList<QStringList> texts;
        for (const BackupRow &row : rows.value()) {
            const BackupLine line = lineOf(row);
            texts.append({line.location, line.description});
        }
        sheet.setRows(std::move(texts));
        sheet.didClickTableColumn(1);
        QCoreApplication::processEvents();
    }
}

void readLoginItems(benchmark::State &state)
{
    LoginItemsHome home(int(state.range(0)));
    for (auto _ : state)
        require(home.access().readData().size() == state.range(0), state);
}

void saveLoginItems(benchmark::State &state)
{
    const int count = int(state.range(0));
    LoginItemsHome home(count);
    for (auto _ : state) {
        home.disableFirst(count);
        home.enableFirst(count);
    }
}

void mergeProcesses(benchmark::State &state)
{
    const QList<ProcessRow> rows = processRows(int(state.range(0)));
    for (auto _ : state)
        require(mergedByBundle(rows).size() * 4 == state.range(0), state);
}

/// The catalogue's size is fixed; what grows is what is typed, letter by letter.
void search(benchmark::State &state)
{
    const QString typed = QStringLiteral("minimize ").repeated(state.range(0)).left(state.range(0));
    for (auto _ : state) {
        for (qsizetype length = 1; length <= typed.size(); ++length)
            benchmark::DoNotOptimize(findViews(typed.left(length)));
    }
}

void registerAll()
{
    const auto add = [](const char *name, const auto &function, std::vector<std::int64_t> sizes) {
        auto *registered = benchmark::RegisterBenchmark(name, function);
        for (const std::int64_t size : sizes)
            registered->Arg(size);
        return registered->Unit(benchmark::kMicrosecond);
    };
    const std::vector<std::int64_t> entries {5000, 20000, 80000, 320000};
    add(
        "look-up, binary", [](auto &state) { lookUp(state, "binary"); }, entries);
    add(
        "look-up, XML", [](auto &state) { lookUp(state, "xml"); }, entries);
    add(
        "edit, binary", [](auto &state) { edit(state, "binary"); }, entries);
    add(
        "edit, XML", [](auto &state) { edit(state, "xml"); }, entries);
    add("list of backup files", listBackupFiles, {250, 1000, 4000, 16000});
    add("rows of the contents window", contentsRows, {150, 600, 2400, 9600});
    add("login items, reading", readLoginItems, {100, 300, 900, 2700});
    add("login items, saving", saveLoginItems, {10, 30, 90, 270})->Iterations(1)->Repetitions(3);
    add("process merge", mergeProcesses, {1000, 4000, 16000, 64000});
    add("search", search, {8, 32, 128, 512});
}

} // namespace

} // namespace varnel::bench

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    varnel::bench::registerAll();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
