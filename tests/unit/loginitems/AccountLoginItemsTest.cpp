#include "loginitems/AccountLoginItems.h"

#include "base/Literals.h"
#include "platform/linux/LinuxFileReader.h"
#include "platform/linux/LinuxFileStore.h"
#include "platform/linux/LinuxFolderMaker.h"
#include "support/ChildProcess.h"
#include "support/FileFacts.h"
#include "support/LogCapture.h"
#include "support/PlistReferee.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QDir>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString clockPath = u"/Applications/Clock.app"_s;

struct AccountHome : testing::Test {
    [[nodiscard]] QString file() const { return AccountLoginItems::fileOf(home.home()); }
    void use(const QString &sample)
    {
        writeRaw(file(), readRaw(QStringLiteral(TEST_DATA "/loginitems/") + sample));
    }
    [[nodiscard]] QStringList lines() const
    {
        QStringList lines;
        const Result<QList<SessionLoginItem>> items = list.snapshot();
        for (const SessionLoginItem &item : items ? items.value() : QList<SessionLoginItem>())
            lines.append(item.name + u'\t' + item.path);
        return lines;
    }
    [[nodiscard]] QStringList paths() const
    {
        QStringList paths;
        for (const QString &line : lines())
            paths.append(line.section(u'\t', 1));
        return paths;
    }
    [[nodiscard]] std::vector<plist::Object> dictionaries() const
    {
        return plist::PropertyList::open(readRaw(file()))
            .value()
            .elements({u"SessionItems"_s, u"CustomListItems"_s});
    }

    TemporaryHome home;
    QString support = home.path() + u"/Library/Application Support/Varnel/";
    LinuxFileStore store {home.home()};
    LinuxFolderMaker maker;
    LinuxFileReader reader;
    AccountLoginItems list {home.home(), store, maker, {reader, {}}};
};

/// In each of the sample lists.
struct AccountLists : AccountHome, testing::WithParamInterface<const char *> { };

} // namespace

TEST_P(AccountLists, ShowEachItemThatHasAPathInTheirOrder)
{
    const QString name = QString::fromLatin1(GetParam());
    use(name);
    const QString expected = QString::fromUtf8(
        readRaw(QStringLiteral(TEST_DATA "/loginitems/") + name.section(u'-', 0, -2) + u".txt"));
    EXPECT_EQ(lines().join(u'\n') + u'\n', expected);
}

TEST_P(AccountLists, LoseJustTheItemsOfAPathAndGetTheIdenticalDictionariesBackAtTheEnd)
{
    const QString sample = QString::fromLatin1(GetParam());
    use(sample);
    for (const QString &path : paths()) {
        use(sample);
        const std::vector<plist::Object> before = dictionaries();
        const QStringList shown = paths();
        ASSERT_TRUE(list.removeEvery(path));
        EXPECT_FALSE(list.keptIn(path).isNull());
        EXPECT_FALSE(list.lists(path).value());
        ASSERT_TRUE(list.insertAtEnd(path));
        EXPECT_TRUE(list.keptIn(path).isNull()) << "what is back needs no keeping";
        const std::vector<plist::Object> after = dictionaries();
        ASSERT_EQ(after.size(), before.size());
        for (const plist::Object &each : before)
            EXPECT_EQ(std::count(after.begin(), after.end(), each), 1) << qPrintable(path);
        EXPECT_EQ(paths().last(), path);
        QStringList others = shown;
        others.removeAll(path);
        EXPECT_EQ(paths().first(others.size()), others);
    }
}

TEST_P(AccountLists, SayTheSameToPythonOnceTheOrderIsBack)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP();
    const QString sample = QString::fromLatin1(GetParam());
    use(sample);
    const QByteArray bytes = readRaw(file());
    QStringList copies;
    const auto copied = [&] {
        copies.append(home.path() + u"/copy" + QString::number(copies.size()));
        writeRaw(copies.last(), readRaw(file()));
    };
    for (const QString &path : paths()) {
        const QStringList order = list.order();
        copied();
        ASSERT_TRUE(list.removeEvery(path));
        ASSERT_TRUE(list.insertAtEnd(path));
        ASSERT_TRUE(list.reorder([&](const QStringList &) { return order; }));
        EXPECT_EQ(list.order(), order);
        copied();
        if (sample.contains(u"xml")) {
            EXPECT_EQ(readRaw(file()), bytes) << qPrintable(path);
        }
    }
    const QStringList seen = PlistReferee::read(copies);
    EXPECT_EQ(seen.size(), copies.size());
    EXPECT_EQ(seen.count(seen.first()), seen.size());
}

INSTANTIATE_TEST_SUITE_P(Samples, AccountLists,
                         testing::Values("leopard-xml.plist", "leopard-binary.plist",
                                         "snow-leopard-xml.plist", "snow-leopard-binary.plist",
                                         "sierra-xml.plist", "sierra-binary.plist"));

TEST_F(AccountHome, ItemsOfAnotherPathAndOfNoneKeepTheirDictionaries)
{
    use(u"snow-leopard-binary.plist"_s);
    const std::vector<plist::Object> before = dictionaries();
    ASSERT_TRUE(list.removeEvery(clockPath));
    const std::vector<plist::Object> after = dictionaries();
    ASSERT_EQ(after.size(), before.size() - 2) << "both of that path";
    EXPECT_EQ(after, std::vector<plist::Object>({before[1], before[2], before[3], before[5]}));
}

TEST_F(AccountHome, WhatWasNeverInTheListIsNotInserted)
{
    use(u"sierra-xml.plist"_s);
    const QByteArray before = readRaw(file());
    EXPECT_FALSE(list.canInsert(u"/Applications/New.app"_s));
    const Result<void> inserted = list.insertAtEnd(u"/Applications/New.app"_s);
    ASSERT_FALSE(inserted);
    EXPECT_TRUE(inserted.error().text.contains(u"never in the account's list"));
    EXPECT_EQ(readRaw(file()), before);
    EXPECT_FALSE(list.insertAtEnd(QString())) << "items that say no path are no item of none";
    EXPECT_TRUE(list.removeEvery(QString()));
    EXPECT_EQ(readRaw(file()), before);
}

TEST_F(AccountHome, WithoutAFileTheListIsEmptyAndNothingIsMade)
{
    ASSERT_TRUE(list.snapshot());
    EXPECT_TRUE(list.snapshot().value().isEmpty());
    EXPECT_TRUE(list.removeEvery(clockPath));
    EXPECT_FALSE(list.insertAtEnd(clockPath));
    EXPECT_TRUE(list.reorder([](const QStringList &now) { return now; }));
    EXPECT_FALSE(QFile::exists(file()));
    EXPECT_FALSE(QDir(support).exists());
}

TEST_F(AccountHome, WhatIsKeptComesBackIntoAFileThatWasMadeAnew)
{
    use(u"sierra-xml.plist"_s);
    const plist::Object agent = dictionaries().front();
    ASSERT_TRUE(list.removeEvery(u"/Applications/Agent.app"_s));
    ASSERT_TRUE(QFile::remove(file()));
    ASSERT_TRUE(list.insertAtEnd(u"/Applications/Agent.app"_s));
    EXPECT_EQ(dictionaries().size(), 1U);
    EXPECT_TRUE(dictionaries().front().saysTheSameAs(agent));
}

TEST_F(AccountHome, AnOrderThatNamesWhatIsNotThereArrangesTheRest)
{
    use(u"sierra-xml.plist"_s);
    const QByteArray before = readRaw(file());
    const QStringList order = list.order();
    QStringList turned(order.rbegin(), order.rend());
    ASSERT_TRUE(list.reorder([&](const QStringList &) {
        return QStringList {u"gone"_s, turned[0], u"gone too"_s} + turned.mid(1);
    }));
    EXPECT_EQ(list.order(), turned);
    ASSERT_TRUE(list.reorder([&](const QStringList &) { return order; }));
    EXPECT_EQ(readRaw(file()), before);
    ASSERT_TRUE(list.reorder([&](const QStringList &) { return QStringList {order[2]}; }));
    EXPECT_EQ(list.order().first(), order[2]) << "the rest stays behind it";
}

TEST_F(AccountHome, WhatIsListedMovesToTheEnd)
{
    use(u"snow-leopard-xml.plist"_s);
    const std::vector<plist::Object> before = dictionaries();
    ASSERT_TRUE(list.insertAtEnd(clockPath));
    EXPECT_EQ(dictionaries(),
              std::vector<plist::Object>(
                  {before[1], before[2], before[3], before[5], before[0], before[4]}));
    const QByteArray bytes = readRaw(file());
    ASSERT_TRUE(list.insertAtEnd(clockPath));
    EXPECT_EQ(readRaw(file()), bytes);
}

TEST_F(AccountHome, ItComesBackIntoAFileThatTheMacHasWrittenInTheOtherFormat)
{
    use(u"snow-leopard-xml.plist"_s);
    const plist::Object one = dictionaries()[0];
    ASSERT_TRUE(list.removeEvery(clockPath));
    use(u"sierra-binary.plist"_s);
    ASSERT_TRUE(list.insertAtEnd(clockPath));
    const std::vector<plist::Object> after = dictionaries();
    EXPECT_TRUE(after[after.size() - 2].saysTheSameAs(one));
}

TEST_F(AccountHome, OfTwoRemovalsTheLastComesBackFirst)
{
    use(u"snow-leopard-xml.plist"_s);
    const std::vector<plist::Object> first = dictionaries();
    ASSERT_TRUE(list.removeEvery(clockPath));
    // Meanwhile the Mac has made another entry.
    QByteArray other = readRaw(QStringLiteral(TEST_DATA "/loginitems/snow-leopard-xml.plist"));
    other.replace("<integer>1</integer>", "<integer>9</integer>");
    writeRaw(file(), other);
    const plist::Object second = dictionaries().front();
    ASSERT_NE(second, first.front());
    ASSERT_TRUE(list.removeEvery(clockPath));
    ASSERT_TRUE(list.insertAtEnd(clockPath));
    EXPECT_EQ(dictionaries()[4], second);
    EXPECT_FALSE(list.keptIn(clockPath).isNull()) << "the first is kept still";
    use(u"sierra-xml.plist"_s);
    ASSERT_TRUE(list.insertAtEnd(clockPath));
    EXPECT_TRUE(list.keptIn(clockPath).isNull());
}

TEST_F(AccountHome, AFileThatIsNoPropertyListIsLeftAsItIs)
{
    const LogCapture log;
    for (const QByteArray &bytes : {QByteArray("bplist00 and nothing"), QByteArray("<plist>")}) {
        writeRaw(file(), bytes);
        EXPECT_FALSE(list.snapshot());
        EXPECT_FALSE(list.removeEvery(clockPath));
        EXPECT_FALSE(list.insertAtEnd(clockPath));
        EXPECT_EQ(readRaw(file()), bytes);
    }
    EXPECT_FALSE(log.texts().isEmpty());
}

TEST_F(AccountHome, WhatCantBeKeptIsNotTakenOut)
{
    use(u"sierra-xml.plist"_s);
    const QByteArray before = readRaw(file());
    const QString agent = u"/Applications/Agent.app"_s;
    QDir().mkpath(support + u"RemovedAccountItems");
    writeRaw(list.keepingPlace(agent), "somebody's");
    EXPECT_FALSE(list.removeEvery(agent));
    EXPECT_EQ(readRaw(file()), before);
    EXPECT_EQ(readRaw(list.keepingPlace(agent)), "somebody's");
}

TEST_F(AccountHome, AKeptRecordOfAnotherApplicationIsNotPutIntoTheList)
{
    use(u"sierra-xml.plist"_s);
    const QString agent = u"/Applications/Agent.app"_s;
    ASSERT_TRUE(list.removeEvery(agent));
    const QByteArray before = readRaw(file());
    const QString record = list.keepingPlace(agent);
    QByteArray other = readRaw(record);
    other.replace(agent.toUtf8(), "/Applications/Other.app");
    writeRaw(list.keepingPlace(u"/Applications/Other.app"_s), other);
    EXPECT_FALSE(list.insertAtEnd(u"/Applications/Other.app"_s));
    EXPECT_EQ(readRaw(file()), before);
}

TEST_F(AccountHome, TheIconIsThatOfTheBundleOnTheHomesOwnDisk)
{
    const QString disk = home.path() + u"/disk";
    const QString bundle = disk + u"/Applications/Agent.app/Contents/";
    QDir().mkpath(disk + u"/Users/anna/Library/Preferences");
    QDir().mkpath(bundle + u"Resources");
    PlistReferee::write(bundle + u"Info.plist", u"{'CFBundleIconFile': 'agent'}"_s,
                        PlistReferee::Format::Xml);
    writeRaw(bundle + u"Resources/agent.icns", "icns");
    const HomeFolder anna {disk + u"/Users/anna", false};
    LinuxFileStore annas(anna);
    const AccountLoginItems items(anna, annas, maker, {reader, anna.systemRoot()});
    EXPECT_EQ(items.iconOf(u"/Applications/Agent.app"_s), bundle + u"Resources/agent.icns");
    EXPECT_EQ(items.applicationsFolder(), disk + u"/Applications");
    for (const QString &none : {u"/Applications/Gone.app"_s, u"/../Applications/Agent.app"_s}) {
        EXPECT_TRUE(items.iconOf(none).isEmpty());
        EXPECT_FALSE(items.iconOf(none).isNull()) << "nothing of this machine's";
    }
    EXPECT_TRUE(list.iconOf(u"/Applications/Agent.app"_s).isEmpty()) << "a disk of its own";
}

TEST_F(AccountHome, AListOfEndlesslyManyEntriesOfOneApplicationIsNotChanged)
{
    QByteArray entries;
    for (int number = 0; number < 1001; ++number)
        entries += "<dict><key>CustomItemProperties</key><dict>"
                   "<key>com.apple.loginitem.legacyprefs</key>"
                   "<dict><key>Path</key><string>/A.app</string></dict></dict></dict>";
    const QByteArray bytes =
        "<plist "
        "version=\"1.0\"><dict><key>SessionItems</key><dict><key>CustomListItems</key><array>"
        + entries + "</array></dict></dict></plist>";
    writeRaw(file(), bytes);
    EXPECT_EQ(paths().size(), 1001);
    EXPECT_FALSE(list.removeEvery(u"/A.app"_s));
    EXPECT_FALSE(list.insertAtEnd(u"/A.app"_s));
    EXPECT_EQ(readRaw(file()), bytes);
}

TEST_F(AccountHome, WhatAnotherProgramAddsBetweenKeepingAndTakingOutIsNotLost)
{
    /// Another program's entry of the same application comes just before the list is changed.
    struct Meddled : LinuxFileStore {
        using LinuxFileStore::LinuxFileStore;
        Result<void> update(const QString &path, const Change &change) override
        {
            if (path == meddledFile && !std::exchange(hasMeddled, true))
                writeRaw(path, other);
            return LinuxFileStore::update(path, change);
        }
        QString meddledFile;
        QByteArray other;
        bool hasMeddled = false;
    } meddled(home.home());
    use(u"snow-leopard-xml.plist"_s);
    meddled.meddledFile = file();
    meddled.other = readRaw(file()).replace("<integer>1</integer>", "<integer>9</integer>");
    AccountLoginItems items(home.home(), meddled, maker, {reader, {}});
    const Result<void> removed = items.removeEvery(clockPath);
    ASSERT_FALSE(removed);
    EXPECT_TRUE(removed.error().text.contains(u"another program changed the list"));
    EXPECT_EQ(readRaw(file()), meddled.other);
    EXPECT_TRUE(items.removeEvery(clockPath));
    EXPECT_FALSE(items.lists(clockPath).value());
}

TEST_F(AccountHome, RunsThatChangeTheListAtOnceLoseNothingOfEachOther)
{
    use(u"sierra-binary.plist"_s);
    const std::vector<plist::Object> before = dictionaries();
    std::vector<pid_t> children;
    for (const QString &path : paths())
        children.push_back(inChild([&] {
            LinuxFileStore own(home.home());
            AccountLoginItems items(home.home(), own, maker, {reader, {}});
            bool done = true;
            for (int round = 0; round < 3; ++round)
                done &= items.removeEvery(path).ok() && items.insertAtEnd(path).ok();
            return done;
        }));
    for (const pid_t child : children)
        EXPECT_TRUE(endOf(child));
    const std::vector<plist::Object> after = dictionaries();
    EXPECT_EQ(after.size(), before.size());
    for (const plist::Object &each : before)
        EXPECT_EQ(std::count(after.begin(), after.end(), each), 1);
}
