// All fifty settings in one run: saved, changed again, saved again, restored.

#include "backup/BackupReader.h"
#include "backup/BackupWriter.h"
#include "backup/Playback.h"
#include "settings/Catalogue.h"
#include "settings/PendingChanges.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// What the files hold at first.
enum class Start { NoFiles, NoKeys, FirstChoices, SecondChoices };
enum class Form { Xml, Binary };

SettingValue valueOf(const SettingRow &row, int number)
{
    switch (row.kind) {
    case ValueKind::Choice:
        return {number % int(row.choices.size())};
    case ValueKind::Number:
        return {40 + number};
    case ValueKind::String:
        break;
    }
    static const QStringList items {u"1;0;0;1"_s, u"0;1;0;0"_s, u"1;1;1;1"_s, u"0;0;1;0"_s};
    return row.mechanism == Mechanism::BarItems
        ? SettingValue {0, items[number]}
        : SettingValue {0, u"Größe %1 %@ \U0001F600 "_s + QString::number(number)};
}

class AccessTarget : public PlaybackTarget {
public:
    explicit AccessTarget(SettingsHome &home) : home(home) { }
    Result<void> writeSetting(int settingId, int value, const QString &extra) override
    {
        return home.write(settingId, {value, extra});
    }
    Result<void> writeLoginItem(int, const QString &, bool) override
    {
        ADD_FAILURE();
        return {};
    }
    void readLoginItems() override { ADD_FAILURE(); }

private:
    SettingsHome &home;
};

class RoundTrip : public testing::TestWithParam<std::tuple<Start, Form>> {
protected:
    [[nodiscard]] Start start() const { return std::get<0>(GetParam()); }

    void SetUp() override
    {
        if (!PlistReferee::isHere())
            GTEST_SKIP() << "no python3";
        for (const SettingRow &row : catalogue())
            if (!row.file.isNull() && !names.contains(row.file))
                names.append(row.file);
        if (start() == Start::NoFiles)
            return;
        for (const QString &name : names)
            PlistReferee::write(home.path(name), otherKeys,
                                std::get<1>(GetParam()) == Form::Xml
                                    ? PlistReferee::Format::Xml
                                    : PlistReferee::Format::Binary);
        if (start() == Start::NoKeys)
            return;
        for (const SettingRow &row : catalogue())
            ASSERT_TRUE(home.write(row.id, valueOf(row, start() == Start::FirstChoices ? 0 : 1)));
    }

    [[nodiscard]] QStringList seen() const
    {
        QStringList paths;
        for (const QString &name : names)
            paths.append(home.path(name));
        QStringList files = PlistReferee::read(paths);
        // A file that was not there may stay behind empty.
        if (start() == Start::NoFiles)
            files.replaceInStrings(u"missing"_s, u"{}"_s);
        files.append(QString::number(home.read(1302).value.number));
        return files;
    }

    /// One save of all fifty.
    void save(PendingChanges &pending, int number)
    {
        for (const SettingRow &row : catalogue()) {
            const SettingValue old = home.read(row.id).value;
            const SettingValue wanted = valueOf(row, number);
            pending.addDataToBackupDataList(row.id, old.number, old.text);
            pending.addDataToChangeDataList(row.id, wanted.number, wanted.text);
        }
        EXPECT_TRUE(pending.saveChanges().isEmpty());
    }

    /// What a setting must leave alone, and the nested dictionary that one of them looks for.
    const QString otherKeys =
        u"{'zz-kept': [1.5, True, b'\\x00', date(2020, 1, 2), {'deep': 2 ** 63}],"
        u" 'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Icon Size Mode': 1}}"_s;
    SettingsHome home;
    QStringList names;
};

TEST_P(RoundTrip, EveryFileIsAsItWasBeforeTheFirstSave)
{
    const QStringList before = seen();
    const QString backupFile = home.home.path() + u"/quillet1.sqlite";
    BackupWriter writer(backupFile, home.store);
    QList<ChangeRecord> changes;
    QList<ChangeRecord> backups;
    PendingChanges pending(changes, backups, home.flags, home.access, writer);
    save(pending, 2);
    EXPECT_NE(seen(), before);
    save(pending, 3);

    const Result<QList<BackupRow>> rows = readBackupRows(backupFile);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows.value().size(), 50);
    AccessTarget target(home);
    EXPECT_TRUE(playBack(rows.value(), target));
    EXPECT_EQ(seen(), before);
}

std::string nameOf(const testing::TestParamInfo<RoundTrip::ParamType> &values)
{
    const auto &[start, form] = values.param;
    const QStringList starts {u"NoFiles"_s, u"NoKeys"_s, u"FirstChoices"_s, u"SecondChoices"_s};
    const QString name =
        u"From" + starts[int(start)] + (form == Form::Xml ? u"AsXml" : u"AsBinary");
    return name.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Fifty, RoundTrip,
                         testing::Combine(testing::Values(Start::NoFiles, Start::NoKeys,
                                                          Start::FirstChoices,
                                                          Start::SecondChoices),
                                          testing::Values(Form::Xml, Form::Binary)),
                         nameOf);

} // namespace
