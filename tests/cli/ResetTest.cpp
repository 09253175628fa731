#include "cli/Varnelctl.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using namespace varnel::test;
using namespace testing;

namespace {

class ResetTest : public Test {
protected:
    ResetTest() { installSamples(home, u"binary"_qs); }

    [[nodiscard]] Outcome reset(const QStringList &words) const
    {
        return varnelctl.run(QStringList {u"reset"_qs} + words);
    }
    [[nodiscard]] QByteArray get(const QString &setting) const
    {
        return varnelctl.run({u"get"_qs, setting}).out;
    }
    [[nodiscard]] QByteArray rows() const
    {
        return runProgram(
                   u"sqlite3"_qs,
                   {home.path() + u"/Library/Application Support/Varnel/Backup/quillet1.sqlite",
                    u"SELECT * FROM users"_qs},
                   varnelctl.environment)
            .out;
    }
    /// The numbers of the settings that a run changed.
    [[nodiscard]] static QList<int> changed(const Outcome &outcome)
    {
        QList<int> ids;
        for (const QJsonValue &change : outcome.json().value(u"changed"_qs).toArray())
            ids.append(change[u"id"].toInt());
        return ids;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(ResetTest, theNamedSettingsGetTheirDefaultsInOneSave)
{
    const Outcome outcome = reset({u"dock-size"_qs, u"1200"_qs, u"1300"_qs, u"--json"_qs});
    EXPECT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(get(u"1004"_qs), "-1\tuse default value\n");
    EXPECT_EQ(get(u"1200"_qs), "-1\tuse default value\n");
    EXPECT_EQ(get(u"1300"_qs), "3\tuse default value\n");
    EXPECT_EQ(rows(), "1004|48||\n1200|0|1;1;0;0|\n1300|2||\n");
    EXPECT_EQ(changed(outcome), (QList {1004, 1200, 1300}));
}

TEST_F(ResetTest, aGroupIsThatGroupAlone)
{
    const QList<int> ids = changed(reset({u"--group"_qs, u"dock"_qs, u"--json"_qs}));
    EXPECT_EQ(ids, (QList {1003, 1004, 1005, 1007, 1008, 1009}));
    EXPECT_EQ(
        changed(reset({u"--group"_qs, u"general"_qs, u"--group"_qs, u"Finder"_qs, u"--json"_qs}))
            .size(),
        6);
    EXPECT_EQ(get(u"1203"_qs), "25\t25 items\n");
}

TEST_F(ResetTest, allIsEverySettingAndASecondTimeThereIsNothingToDo)
{
    EXPECT_EQ(reset({u"--all"_qs}).status, 0);
    for (const QJsonValue &setting :
         varnelctl.run({u"list"_qs, u"--json"_qs}).json().value(u"settings"_qs).toArray()) {
        // The Library folder has a flag, and no key that could be missing.
        EXPECT_EQ(setting[u"found"].toBool(), setting[u"id"].toInt() == 1302)
            << setting[u"id"].toInt();
    }
    EXPECT_EQ(get(u"1302"_qs), "0\thidden\n");
    const auto before = snapshot(home.path());
    EXPECT_EQ(varnelctl.run({u"delete"_qs, u"--all"_qs}).out, "Nothing to change.\n");
    EXPECT_EQ(snapshot(home.path()), before);
}

TEST_F(ResetTest, restoringBringsBackEveryValue)
{
    const QByteArray before = varnelctl.run({u"list"_qs, u"--json"_qs}).out;
    EXPECT_EQ(reset({u"--all"_qs}).status, 0);
    EXPECT_NE(varnelctl.run({u"list"_qs, u"--json"_qs}).out, before);
    EXPECT_EQ(varnelctl.run({u"backups"_qs, u"restore"_qs, u"quillet1.sqlite"_qs}).status, 0);
    EXPECT_EQ(varnelctl.run({u"list"_qs, u"--json"_qs}).out, before);
}

TEST_F(ResetTest, exactlyOneWayOfNamingAndEveryNameMustBeKnown)
{
    const auto before = snapshot(home.path());
    for (const QStringList &words : {QStringList {},
                                     {u"--all"_qs, u"1004"_qs},
                                     {u"--group"_qs, u"Dock"_qs, u"--all"_qs},
                                     {u"--group"_qs, u"Dock"_qs, u"1004"_qs},
                                     {u"--group"_qs},
                                     {u"--group"_qs, u"Docks"_qs},
                                     {u"1004"_qs, u"nosuch"_qs},
                                     {u"1004=64"_qs}}) {
        const Outcome outcome = reset(words);
        EXPECT_EQ(outcome.status, 2) << words.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
    }
    EXPECT_EQ(snapshot(home.path()), before);
}

} // namespace
