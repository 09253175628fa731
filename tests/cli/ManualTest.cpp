#include "cli/CommandTree.h"
#include "cli/Help.h"
#include "cli/Varnelctl.h"
#include "settings/Catalogue.h"
#include "shell/StartOptions.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::cli;
using namespace varnel::test;
using namespace testing;

namespace {

/// The built manual pages as a reader sees them.
class ManualTest : public Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"man"_s).isEmpty())
            GTEST_SKIP() << "man is not installed";
        varnelctl.environment.insert(u"MANWIDTH"_s, u"300"_s);
        varnelctl.environment.insert(u"MANROFFOPT"_s, u"-c"_s);
    }

    [[nodiscard]] Outcome render(const QString &page) const
    {
        return runProgram(u"man"_s,
                          {u"--warnings=w"_s, u"-E"_s, u"UTF-8"_s, u"-l"_s,
                           QStringLiteral(SHARE) + u"/man/man1/" + page},
                          varnelctl.environment);
    }

    /// Without the overstriking that makes bold letters, and the indentation.
    [[nodiscard]] QStringList lines(const QString &page) const
    {
        QString text = QString::fromUtf8(render(page).out);
        text.remove(QRegularExpression(u".\b"_s));
        QStringList all;
        for (const QString &line : text.split(u'\n'))
            all.append(line.simplified());
        return all;
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(ManualTest, thePagesHaveNoWarnings)
{
    const QStringList pages =
        QDir(QStringLiteral(SHARE) + u"/man/man1").entryList({u"*.1"_s}, QDir::Files);
    EXPECT_EQ(pages, (QStringList {u"varnel.1"_s, u"varnelctl.1"_s}));
    for (const QString &page : pages) {
        const Outcome outcome = render(page);
        EXPECT_EQ(outcome.status, 0) << page.toStdString();
        EXPECT_EQ(outcome.err, "") << page.toStdString();
        EXPECT_FALSE(outcome.out.contains('@'))
            << page.toStdString() << ": a part is not filled in";
    }
}

TEST_F(ManualTest, aWarningWouldBeSeen)
{
    const QString page = home.path() + u"/broken.1";
    writeFile(page, ".TH BROKEN 1\n.SH NAME\nbroken \\- \\[nosuchglyph]\n");
    const Outcome outcome =
        runProgram(u"man"_s, {u"--warnings=w"_s, u"-l"_s, page}, varnelctl.environment);
    EXPECT_NE(outcome.err, "");
}

TEST_F(ManualTest, everythingThatTheProgramKnowsOfItselfIsThere)
{
    const QStringList all = lines(u"varnelctl.1"_s);
    for (const auto &command : makeCommands()) {
        const CommandInfo info = command.info();
        EXPECT_TRUE(all.contains(info.summary + u'.')) << info.summary.toStdString();
        for (const QString &example : info.examples)
            EXPECT_TRUE(all.contains(u"varnelctl " + example)) << example.toStdString();
        for (const OptionInfo &option : allOptions(info))
            EXPECT_FALSE(all.filter(u"--" + option.name).isEmpty()) << option.name.toStdString();
    }
    for (const SettingRow &row : catalogue())
        EXPECT_TRUE(all.contains(u"%1 (%2)"_s.arg(row.name).arg(row.id))) << row.name.toStdString();
    for (const ExitStatusText &status : exitStatusTexts())
        EXPECT_FALSE(all.filter(status.meaning).isEmpty()) << status.meaning.toStdString();
}

TEST_F(ManualTest, theWindowsPageHasItsOptions)
{
    const QStringList all = lines(u"varnel.1"_s);
    for (const StartOption &option : startOptionList()) {
        EXPECT_FALSE(all.filter(u"--" + option.name).isEmpty()) << option.name.toStdString();
        EXPECT_FALSE(all.filter(option.help).isEmpty()) << option.help.toStdString();
    }
}

} // namespace
