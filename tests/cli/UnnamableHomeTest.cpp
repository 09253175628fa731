#include "cli/Varnelctl.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

/// A home whose name is not UTF-8, beside one that bears the name which is left when the bytes that
/// mean nothing are replaced.
class UnnamableHome : public Test {
protected:
    void SetUp() override { QDir().mkpath(lookalike + u"/Library/Preferences"); }

    /// A line for the shell in which $d is that home and $HOME/l a link to it; it is gone
    /// afterwards, since the toolkit could not delete it.
    [[nodiscard]] Outcome shell(const QString &line) const
    {
        return varnelctl.shell(
            uR"sh(d=$(printf '%s/hc\377' "$HOME"); mkdir -p "$d/Library/Preferences" && ln -s "$d" "$HOME/l"; )sh"_s
            + line + uR"(; status=$?; rm -r "$d"; exit $status)");
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
    const QString lookalike = home.path() + u"/hc\ufffd";
};

TEST_F(UnnamableHome, isRefusedAndTheOneOfTheLeftoverNameStaysAsItIs)
{
    const auto before = snapshot(lookalike);
    for (const QString &line : {
             uR"sh((env HOME="$d" "$varnelctl" set autohide=yes))sh"_s,
             uR"sh((cd "$d" && exec "$varnelctl" --home . set autohide=yes))sh"_s,
             uR"sh("$varnelctl" --home "$HOME/l" set autohide=yes)sh"_s,
             uR"sh(echo "$HOME/l" | "$varnelctl" --homes-from - set autohide=yes)sh"_s,
         }) {
        const Outcome outcome = shell(line);
        EXPECT_EQ(outcome.status, 3) << qPrintable(line);
        EXPECT_TRUE(outcome.err.contains("/hc\\xff: its name is not UTF-8 text"))
            << outcome.err.toStdString();
        EXPECT_EQ(snapshot(lookalike), before) << qPrintable(line);
        QFile::remove(home.path() + u"/l");
    }
}

TEST_F(UnnamableHome, isNoArgument)
{
    const Outcome outcome = shell(uR"sh("$varnelctl" --home "$d" set autohide=yes)sh"_s);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.startsWith("varnelctl: an argument is not UTF-8 text\n"))
        << outcome.err.toStdString();
}

TEST_F(UnnamableHome, takesTheOneOfTheLeftoverNameFromNoList)
{
    const Outcome outcome = shell(uR"sh("$varnelctl" --home "$HOME/l" --home "$HOME/hc)sh"_s
                                  + QChar(0xfffd) + u"\" set autohide=yes");
    EXPECT_EQ(outcome.status, 4);
    EXPECT_TRUE(QFile::exists(lookalike + u"/Library/Preferences/com.apple.dock.plist"));
}

TEST_F(UnnamableHome, aMarkAtTheStartOfANameIsPartOfIt)
{
    const Outcome outcome = varnelctl.shell(
        uR"sh(cd "$HOME" && mkdir x && "$varnelctl" --home "$(printf '\357\273\277x')" )sh"
        u"--new-home set autohide=yes"_s);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(QDir(home.path() + u"/x").isEmpty());
}

TEST_F(UnnamableHome, aRelativeVariableIsNoHomeAndNoOtherIsTaken)
{
    for (const QByteArray &command : {QByteArray("set autohide=yes"), QByteArray("list")}) {
        const Outcome outcome = varnelctl.shell(uR"sh(cd "$HOME" && env HOME=hc "$varnelctl" )sh"_s
                                                + QString::fromUtf8(command));
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.err, "varnelctl: HOME is hc: not an absolute path\n");
        EXPECT_EQ(outcome.out, "");
    }
}

} // namespace
