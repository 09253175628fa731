#include "platform/linux/AutostartEntry.h"
#include "platform/linux/ParsedEntries.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<AutostartEntry> parse(const QByteArray &lines)
{
    return parseAutostartEntry("[Desktop Entry]\nType=Application\n" + lines);
}

} // namespace

TEST(AutostartEntry, ReadsNameIconAndCommand)
{
    const auto entry = parse("Name=Clock\nIcon=clock\nExec=/usr/bin/clock --quiet %U\n"
                             "OnlyShowIn=GNOME;KDE;\nTryExec=clock\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"Clock"_s);
    EXPECT_EQ(entry->icon, u"clock"_s);
    EXPECT_EQ(entry->exec, (QStringList {u"/usr/bin/clock"_s, u"--quiet"_s}));
    EXPECT_EQ(entry->onlyShowIn, (QStringList {u"GNOME"_s, u"KDE"_s}));
    EXPECT_EQ(entry->tryExec, u"clock"_s);
    EXPECT_FALSE(entry->off);
}

TEST(AutostartEntry, IsOffWhenHiddenOrSwitchedOffByADesktop)
{
    EXPECT_TRUE(parse("Hidden=true\n")->off);
    EXPECT_FALSE(parse("Hidden=false\n")->off);
    EXPECT_TRUE(parse("X-GNOME-Autostart-enabled=false\n")->off);
    EXPECT_TRUE(parse("X-MATE-Autostart-enabled=false\n")->off);
    EXPECT_FALSE(parse("X-GNOME-Autostart-enabled=true\n")->off);
    EXPECT_TRUE(parseAutostartEntry("[Desktop Entry]\nHidden=true\n")->off);
}

TEST(AutostartEntry, ALoneProgramMayHaveTheLongestPathAndALongerCommandIsNone)
{
    const QString longest = u'/' + QString(4095, u'$');
    EXPECT_EQ(parseAutostartEntry(newAutostartEntry(longest))->exec, QStringList {longest});
    EXPECT_TRUE(
        parse("Exec=/usr/bin/clock" + QByteArray(" %f").repeated(6000) + '\n')->exec.isEmpty());
}

TEST(ParsedEntries, AFileIsParsedAnewOnlyWhereItsBytesAreOthers)
{
    const QByteArray bytes = "[Desktop Entry]\nType=Application\nName=Clock\n";
    ParsedEntries parsed;
    const QString name = parsed.entryOf(u"/a.desktop"_s, bytes)->name;
    EXPECT_EQ(name, u"Clock"_s);
    const QByteArray same(bytes.constData(), bytes.size());
    EXPECT_EQ(parsed.entryOf(u"/a.desktop"_s, same)->name.constData(), name.constData());
    EXPECT_EQ(parsed.entryOf(u"/a.desktop"_s, bytes + "Icon=a\n")->icon, u"a"_s);
    EXPECT_FALSE(parsed.entryOf(u"/b.desktop"_s, "none"));
    EXPECT_FALSE(parsed.entryOf(u"/a.desktop"_s, "none"));
}

TEST(AutostartEntry, OtherFilesAreNone)
{
    EXPECT_FALSE(parseAutostartEntry(""));
    EXPECT_FALSE(parseAutostartEntry("not a key file"));
    EXPECT_FALSE(parseAutostartEntry("[Other]\nType=Application\n"));
    EXPECT_FALSE(parseAutostartEntry("[Desktop Entry]\nType=Link\nURL=x\n"));
    EXPECT_FALSE(parseAutostartEntry(QByteArray("\0\0\xff\xfe", 4)));
}

TEST(AutostartEntry, ANewOneComesBackWithItsPath)
{
    const QString path = u"/Applications/It's \"100%\" $HOME `x` \\.app"_s;
    const auto entry = parseAutostartEntry(newAutostartEntry(path));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->ownPath, path);
    EXPECT_EQ(entry->exec.size(), 1);
    EXPECT_EQ(entry->name, u"It's \"100%\" $HOME `x` \\"_s);
}

TEST(AutostartEntry, TakingAPathKeepsCommentsAndTranslations)
{
    const QByteArray before = "# mine\n[Desktop Entry]\nType=Application\n# a word\nName=Clock\n"
                              "Name[de]=Uhr\n\n[Desktop Action New]\nName=New\n";
    const QByteArray after = withOwnPath(before, u"/A/Clock.app"_s);
    EXPECT_EQ(parseAutostartEntry(after)->ownPath, u"/A/Clock.app"_s);
    for (const char *kept : {"# mine\n", "# a word\n", "Name[de]=Uhr\n", "[Desktop Action New]\n"})
        EXPECT_TRUE(after.contains(kept)) << kept;
}

TEST(AutostartEntry, AHidingOneIsOff)
{
    EXPECT_TRUE(parseAutostartEntry(hidingAutostartEntry())->off);
}

TEST(AutostartEntry, ADoubledPercentSignOfTheCommandIsOne)
{
    EXPECT_EQ(parse("Exec=\"/opt/100%% sure\" %f\n")->exec, QStringList {u"/opt/100% sure"_s});
}
