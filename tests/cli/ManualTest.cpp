#include "cli/CommandTree.h"
#include "cli/Help.h"
#include "cli/Varnelctl.h"
#include "settings/Catalogue.h"
#include "shell/StartOptions.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

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
        if (QStandardPaths::findExecutable(u"man"_qs).isEmpty())
            GTEST_SKIP() << "man is not installed";
        varnelctl.environment.insert(u"MANWIDTH"_qs, u"300"_qs);
        varnelctl.environment.insert(u"MANROFFOPT"_qs, u"-c"_qs);
    }

    [[nodiscard]] Outcome render(const QString &page) const
    {
        return runProgram(u"man"_qs,
                          {u"--warnings=w"_qs, u"-E"_qs, u"UTF-8"_qs, u"-l"_qs,
                           QStringLiteral(SHARE) + u"/man/man1/" + page},
                          varnelctl.environment);
    }

    /// Without the overstriking that makes bold letters, and the indentation.
    [[nodiscard]] QStringList lines(const QString &page) const
    {
        QString text = QString::fromUtf8(render(page).out);
        text.remove(QRegularExpression(u".\b"_qs));
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
        QDir(QStringLiteral(SHARE) + u"/man/man1").entryList({u"*.1"_qs}, QDir::Files);
    EXPECT_EQ(pages, (QStringList {u"varnel.1"_qs, u"varnelctl.1"_qs}));
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
        runProgram(u"man"_qs, {u"--warnings=w"_qs, u"-l"_qs, page}, varnelctl.environment);
    EXPECT_NE(outcome.err, "");
}

TEST_F(ManualTest, everythingThatTheProgramKnowsOfItselfIsThere)
{
    const QStringList all = lines(u"varnelctl.1"_qs);
    for (const auto &command : makeCommands()) {
        const CommandInfo info = command->info();
        EXPECT_TRUE(all.contains(info.summary + u'.')) << info.summary.toStdString();
        for (const QString &example : info.examples)
            EXPECT_TRUE(all.contains(u"varnelctl " + example)) << example.toStdString();
        for (const OptionInfo &option : allOptions(info))
            EXPECT_FALSE(all.filter(u"--" + option.name).isEmpty()) << option.name.toStdString();
    }
    for (const SettingRow &row : catalogue())
        EXPECT_TRUE(all.contains(u"%1 (%2)"_qs.arg(row.name).arg(row.id)))
            << row.name.toStdString();
    for (const ExitStatusText &status : exitStatusTexts())
        EXPECT_FALSE(all.filter(status.meaning).isEmpty()) << status.meaning.toStdString();
}

TEST_F(ManualTest, theWindowsPageHasItsOptions)
{
    const QStringList all = lines(u"varnel.1"_qs);
    for (const StartOption &option : startOptionList()) {
        EXPECT_FALSE(all.filter(u"--" + option.name).isEmpty()) << option.name.toStdString();
        EXPECT_FALSE(all.filter(option.help).isEmpty()) << option.help.toStdString();
    }
}

} // namespace
