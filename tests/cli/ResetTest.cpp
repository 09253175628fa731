#include "cli/Varnelctl.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

class ResetTest : public Test {
protected:
    ResetTest() { installSamples(home, u"binary"_s); }

    [[nodiscard]] Outcome reset(const QStringList &words) const
    {
        return varnelctl.run(QStringList {u"reset"_s} + words);
    }
    [[nodiscard]] QByteArray get(const QString &setting) const
    {
        return varnelctl.run({u"get"_s, setting}).out;
    }
    [[nodiscard]] QByteArray rows() const
    {
        return runProgram(
                   u"sqlite3"_s,
                   {home.path() + u"/Library/Application Support/Varnel/Backup/quillet1.sqlite",
                    u"SELECT * FROM users"_s},
                   varnelctl.environment)
            .out;
    }
    /// The numbers of the settings that a run changed.
    [[nodiscard]] static QList<int> changed(const Outcome &outcome)
    {
        QList<int> ids;
        for (const QJsonValue &change : outcome.json().value(u"changed"_s).toArray())
            ids.append(change[u"id"].toInt());
        return ids;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(ResetTest, theNamedSettingsGetTheirDefaultsInOneSave)
{
    const Outcome outcome = reset({u"dock-size"_s, u"1200"_s, u"1300"_s, u"--json"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(get(u"1004"_s), "-1\tuse default value\n");
    EXPECT_EQ(get(u"1200"_s), "-1\tuse default value\n");
    EXPECT_EQ(get(u"1300"_s), "3\tuse default value\n");
    EXPECT_EQ(rows(), "1004|48||\n1200|0|1;1;0;0|\n1300|2||\n");
    EXPECT_EQ(changed(outcome), (QList {1004, 1200, 1300}));
}

TEST_F(ResetTest, aGroupIsThatGroupAlone)
{
    const QList<int> ids = changed(reset({u"--group"_s, u"dock"_s, u"--json"_s}));
    EXPECT_EQ(ids, (QList {1003, 1004, 1005, 1007, 1008, 1009}));
    EXPECT_EQ(
        changed(reset({u"--group"_s, u"general"_s, u"--group"_s, u"Finder"_s, u"--json"_s})).size(),
        6);
    EXPECT_EQ(get(u"1203"_s), "25\t25 items\n");
}

TEST_F(ResetTest, allIsEverySettingAndASecondTimeThereIsNothingToDo)
{
    EXPECT_EQ(reset({u"--all"_s}).status, 0);
    for (const QJsonValue &setting :
         varnelctl.run({u"list"_s, u"--json"_s}).json().value(u"settings"_s).toArray()) {
        // The Library folder has a flag, and no key that could be missing.
        EXPECT_EQ(setting[u"found"].toBool(), setting[u"id"].toInt() == 1302)
            << setting[u"id"].toInt();
    }
    EXPECT_EQ(get(u"1302"_s), "0\thidden\n");
    const auto before = snapshot(home.path());
    EXPECT_EQ(varnelctl.run({u"delete"_s, u"--all"_s}).out, "Nothing to change.\n");
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(ResetTest, restoringBringsBackEveryValue)
{
    const QByteArray before = varnelctl.run({u"list"_s, u"--json"_s}).out;
    EXPECT_EQ(reset({u"--all"_s}).status, 0);
    EXPECT_NE(varnelctl.run({u"list"_s, u"--json"_s}).out, before);
    EXPECT_EQ(varnelctl.run({u"backups"_s, u"restore"_s, u"quillet1.sqlite"_s}).status, 0);
    EXPECT_EQ(varnelctl.run({u"list"_s, u"--json"_s}).out, before);
}

TEST_F(ResetTest, exactlyOneWayOfNamingAndEveryNameMustBeKnown)
{
    const auto before = snapshot(home.path());
    for (const QStringList &words : {QStringList {},
                                     {u"--all"_s, u"1004"_s},
                                     {u"--group"_s, u"Dock"_s, u"--all"_s},
                                     {u"--group"_s, u"Dock"_s, u"1004"_s},
                                     {u"--group"_s},
                                     {u"--group"_s, u"Docks"_s},
                                     {u"1004"_s, u"nosuch"_s},
                                     {u"1004=64"_s}}) {
        const Outcome outcome = reset(words);
        EXPECT_EQ(outcome.status, 2) << words.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

} // namespace
