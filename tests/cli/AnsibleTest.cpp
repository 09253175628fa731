#include "cli/Varnelctl.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

/// The documented example, run as it stands on homes of the test's own.
class AnsibleTest : public Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"ansible-playbook"_s).isEmpty())
            GTEST_SKIP() << "ansible-core is not installed";
        QProcessEnvironment &environment = varnelctl.environment;
        environment.insert(u"PATH"_s,
                           QFileInfo(QStringLiteral(VARNELCTL)).path() + u":/usr/bin:/bin");
        environment.insert(u"ANSIBLE_NOCOLOR"_s, u"1"_s);
        environment.insert(u"ANSIBLE_HOME"_s, home.path() + u"/ansible");
        environment.insert(u"ANSIBLE_REMOTE_TMP"_s, home.path() + u"/ansible/tmp");
        QByteArray list;
        for (int number = 1; number <= 12; ++number) {
            homes.append(home.path() + u"/homes/user %1"_s.arg(number));
            QDir().mkpath(homes.last() + u"/Library/Preferences");
            list += homes.last().toUtf8() + '\n';
        }
        writeFile(homesFile(), list);
    }

    [[nodiscard]] QString homesFile() const { return home.path() + u"/homes.txt"; }

    [[nodiscard]] Outcome play(const QStringList &arguments = {}) const
    {
        const QString folder = QStringLiteral(DOCS) + u"/ansible/";
        return runProgram(u"ansible-playbook"_s,
                          QStringList {u"-i"_s, folder + u"inventory.ini", folder + u"varnel.yml",
                                       u"-e"_s, u"varnel_homes="_s + homesFile()}
                              + arguments,
                          varnelctl.environment);
    }

    /// "changed" of the summary that ends a play; -1 where there is none.
    [[nodiscard]] static int told(const Outcome &outcome, const QString &what)
    {
        const QRegularExpression field(what + u"=([0-9]+)");
        const QRegularExpressionMatch found = field.match(QString::fromUtf8(outcome.out));
        return found.hasMatch() ? found.captured(1).toInt() : -1;
    }

    [[nodiscard]] static QStringList backups(const QString &path)
    {
        return QDir(path + u"/Library/Application Support/Varnel/Backup").entryList(QDir::Files);
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    QStringList homes;
};

TEST_F(AnsibleTest, theFirstRunChangesAllHomesAndTheSecondNone)
{
    const Outcome first = play();
    EXPECT_EQ(first.status, 0) << first.out.toStdString() << first.err.toStdString();
    EXPECT_EQ(told(first, u"changed"_s), 1);
    EXPECT_EQ(told(first, u"failed"_s), 0);
    for (const QString &each : homes) {
        EXPECT_EQ(varnelctl.run({u"get"_s, u"dock-size"_s, u"--home"_s, each}).out,
                  "48\t48 pixels\n");
        EXPECT_EQ(varnelctl.run({u"get"_s, u"hidden-files"_s, u"--home"_s, each}).out, "0\tyes\n");
        EXPECT_EQ(backups(each), QStringList(u"quillet1.sqlite"_s));
    }

    const auto before = snapshot(home.path() + u"/homes");
    const Outcome second = play();
    EXPECT_EQ(second.status, 0) << second.out.toStdString();
    EXPECT_EQ(told(second, u"changed"_s), 0);
    EXPECT_EQ(told(second, u"ok"_s), 1);
    EXPECT_EQ(snapshot(home.path() + u"/homes"), before);
}

TEST_F(AnsibleTest, theCheckModeTellsOfChangesAndMakesNone)
{
    const auto before = snapshot(home.path() + u"/homes");
    const Outcome outcome = play({u"--check"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.out.toStdString();
    EXPECT_EQ(told(outcome, u"changed"_s), 1);
    EXPECT_EQ(snapshot(home.path() + u"/homes"), before);
}

TEST_F(AnsibleTest, aHomeThatFailsFailsTheTaskAndTheOthersAreDone)
{
    writeFile(homesFile(),
              (homes[0] + u'\n' + home.path() + u"/none\n" + homes[1] + u'\n').toUtf8());
    const Outcome outcome = play();
    EXPECT_NE(outcome.status, 0);
    EXPECT_EQ(told(outcome, u"failed"_s), 1);
    EXPECT_TRUE(outcome.out.contains("/none")) << outcome.out.toStdString();
    EXPECT_EQ(backups(homes[0]), QStringList(u"quillet1.sqlite"_s));
    EXPECT_EQ(backups(homes[1]), QStringList(u"quillet1.sqlite"_s));
}

} // namespace
