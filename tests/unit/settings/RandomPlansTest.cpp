// What a plan tells is what its commit does, for homes and wishes made by chance.

#include "settings/SavePlan.h"

#include "support/DryRunFileStore.h"
#include "support/FakeFinderInfo.h"
#include "support/LogCapture.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

constexpr int groups = 8;
constexpr int plansOfAGroup = 250;

/// Preference files in memory, over an empty home.
struct Ground {
    SettingsHome disk;
    DryRunFileStore store {disk.store};
    FakeFinderInfo finder;
    PreferenceFiles files {store};
    SettingAccess access {disk.home.home(), files, finder};

    [[nodiscard]] QMap<QString, QByteArray> bytes() const
    {
        QMap<QString, QByteArray> all;
        for (const SettingRow &row : catalogue())
            if (const Result<QByteArray> read = store.read(access.filePath(row)))
                all.insert(access.filePath(row), read.value());
        return all;
    }
};

struct Rows : OldValueKeeper {
    Result<void> addDataToBackupFile(const ChangeRecord &record) override
    {
        rows.append(record);
        return {};
    }
    QList<ChangeRecord> rows;
};

class RandomPlans : public testing::TestWithParam<int> {
protected:
    unsigned below(unsigned end) { return unsigned(engine()) % end; }

    SettingChange wish()
    {
        const SettingRow &row = catalogue()[below(unsigned(catalogue().size()))];
        SettingValue value;
        if (row.kind == ValueKind::Choice)
            value.number = int(below(unsigned(row.choices.size())));
        else if (row.kind == ValueKind::Number)
            value.number = below(4) == 0 ? -1 : int(below(100));
        else if (row.mechanism == Mechanism::BarItems)
            value.text = below(4) == 0 ? u"-1"_s : u"%1;0;%2;1"_s.arg(below(2)).arg(below(2));
        else
            value.text = below(4) == 0 ? u"-1"_s : u"text %1"_s.arg(below(9));
        return {&row, {}, value};
    }

    /// Another program comes by: a file is made, emptied or broken.
    void disturb(Ground &ground)
    {
        static const QByteArrayList contents {
            xmlPlist({}), "broken",
            xmlPlist(
                u"<key>autohide</key><integer>1</integer><key>tilesize</key><real>44.0</real>"_s),
            xmlPlist(
                u"<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key><dict/>"_s)};
        const QString path = ground.access.filePath(
            wish().row->file.isNull() ? *findSetting(1009) : catalogue()[below(40)]);
        const QByteArray content = contents[below(unsigned(contents.size()))];
        (void)ground.store.update(path, [&](const auto &) -> Result<std::optional<QByteArray>> {
            return std::optional(content);
        });
    }

    void planAndCommit(Ground &ground)
    {
        QList<SettingChange> wishes;
        for (unsigned count = 1 + below(12); count > 0; --count)
            wishes.append(wish());
        SavePlan plan(ground.access, wishes);
        plan.keepWhatDiffers();
        const std::vector<SavePlan::Setting> told = plan.settings();
        QList<ChangeRecord> toldRows;
        for (const SettingChange &change : plan.firstNamed())
            toldRows.append(oldValueOf(change));
        const QMap<QString, QByteArray> before = ground.bytes();

        Rows keeper;
        RestartFlags flags;
        const QList<SaveFailure> failures = plan.commit(keeper, flags);

        EXPECT_EQ(keeper.rows, toldRows);
        compare(ground, told, before, failures, flags);
        SavePlan again(ground.access, wishes);
        for (const SavePlan::Setting &setting : again.settings())
            EXPECT_TRUE(setting.error || !setting.differs || isOverruled(again, setting))
                << setting.change.row->id;
    }

    /// One setting's key is another's, too, and each wants something else.
    static bool isOverruled(const SavePlan &plan, const SavePlan::Setting &setting)
    {
        return std::any_of(plan.settings().begin(), plan.settings().end(), [&](const auto &other) {
            return other.change.row != setting.change.row
                && other.change.row->file == setting.change.row->file
                && other.change.row->keys == setting.change.row->keys;
        });
    }

    static void compare(const Ground &ground, const std::vector<SavePlan::Setting> &told,
                        const QMap<QString, QByteArray> &before, const QList<SaveFailure> &failures,
                        RestartFlags flags)
    {
        QSet<QString> written;
        QList<int> refused;
        RestartFlags expected;
        for (const SavePlan::Setting &setting : told) {
            const SettingRow &row = *setting.change.row;
            if (setting.error)
                refused.append(row.id);
            else if (!setting.write.hidesLibrary)
                written.insert(ground.access.filePath(row));
            if (setting.write.restarts)
                expected |= *setting.write.restarts;
        }
        QList<int> failed;
        for (const SaveFailure &failure : failures)
            failed.append(failure.change.row->id);
        EXPECT_EQ(failed, refused);
        EXPECT_EQ(flags, expected);
        const QMap<QString, QByteArray> after = ground.bytes();
        for (auto file = after.begin(); file != after.end(); ++file)
            EXPECT_TRUE(written.contains(file.key()) || before.value(file.key()) == file.value())
                << qPrintable(file.key());
    }

    std::mt19937 engine {unsigned(GetParam())};
};

} // namespace

TEST_P(RandomPlans, WhatIsToldIsWhatIsDone)
{
    const LogCapture log;
    Ground ground;
    for (int i = 0; i < plansOfAGroup && !HasFailure(); ++i) {
        if (below(4) == 0)
            disturb(ground);
        planAndCommit(ground);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPlans, testing::Range(1, groups + 1));
