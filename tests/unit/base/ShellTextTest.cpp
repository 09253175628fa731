#include "base/ShellText.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

using namespace varnel;

TEST(ShellText, theShellGivesEveryTextBackAsItWas)
{
    const QStringList texts {
        u""_qs,           u"plain"_qs,           u"a b"_qs,          u"it's"_qs, u"'"_qs,
        u"''\\''"_qs,     u"$HOME `id`"_qs,      u"a\nb\n"_qs,       u"\"\\"_qs, u"-n ~/* ! #"_qs,
        u"\t\r\u001b"_qs, u"画像 \U0001f4f7"_qs, u"a=b;c&d|e>(f)"_qs};
    for (const QString &text : texts) {
        QProcess shell;
        shell.start(u"/bin/sh"_qs,
                    {u"-c"_qs, u"printf %s_%s_ "_qs + shellWord(text) + u' ' + shellQuoted(text)});
        ASSERT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAllStandardOutput().toStdString(),
                  QString(text + u'_' + text + u'_').toStdString());
    }
    EXPECT_EQ(shellWord(u"com.apple.dock"_qs), u"com.apple.dock");
    EXPECT_EQ(shellQuoted(u"com.apple.dock"_qs), u"'com.apple.dock'");
}
