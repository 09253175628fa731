#include "base/ShellText.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

TEST(ShellText, theShellGivesEveryTextBackAsItWas)
{
    const QStringList texts {
        u""_s,           u"plain"_s,           u"a b"_s,          u"it's"_s, u"'"_s,
        u"''\\''"_s,     u"$HOME `id`"_s,      u"a\nb\n"_s,       u"\"\\"_s, u"-n ~/* ! #"_s,
        u"\t\r\u001b"_s, u"画像 \U0001f4f7"_s, u"a=b;c&d|e>(f)"_s};
    for (const QString &text : texts) {
        QProcess shell;
        shell.start(u"/bin/sh"_s,
                    {u"-c"_s, u"printf %s_%s_ "_s + shellWord(text) + u' ' + shellQuoted(text)});
        ASSERT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAllStandardOutput().toStdString(),
                  QString(text + u'_' + text + u'_').toStdString());
    }
    EXPECT_EQ(shellWord(u"com.apple.dock"_s), u"com.apple.dock");
    EXPECT_EQ(shellQuoted(u"com.apple.dock"_s), u"'com.apple.dock'");
}
