#include "cli/Varnelctl.h"

#include <QDir>
#include <QJsonArray>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

class SystemTest : public Test {
protected:
    QString putSystem(const QByteArray &version)
    {
        const QString root = home.path() + u"/disk";
        const QString folder = root + u"/System/Library/CoreServices";
        QDir().mkpath(folder);
        writeFile(folder + u"/SystemVersion.plist",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                  "<key>ProductBuildVersion</key><string>11G63</string>"
                  "<key>ProductCopyright</key><string>1983-2012</string>"
                  "<key>ProductVersion</key><string>"
                      + version + "</string></dict></plist>\n");
        return root;
    }

    /// The names of a category's facts, or the value of one of them.
    static QStringList names(const QJsonValue &category)
    {
        QStringList list;
        for (const QJsonValue row : category.toArray())
            list += row[u"name"].toString();
        return list;
    }
    static QString value(const QJsonValue &category, const QString &name)
    {
        for (const QJsonValue row : category.toArray())
            if (row[u"name"].toString() == name)
                return row[u"value"].toString();
        return u"no such row"_s;
    }

    /// A home on that disk.
    QString putHome(const QString &root)
    {
        const QString path = root + u"/Users/anna";
        QDir().mkpath(path + u"/Library/Preferences");
        return path;
    }
    Outcome toldOf(const QString &path, const QStringList &more = {})
    {
        return varnelctl.run(QStringList {u"system"_s, u"macosx"_s, u"--json"_s, u"--home"_s, path}
                             + more);
    }
    static QString version(const Outcome &system)
    {
        return value(system.json().value(u"macosx"_s), u"Version Number"_s);
    }
    static QString note(const Outcome &system)
    {
        return system.json().value(u"macosxNote"_s).toString();
    }

    TemporaryHome home;
    Varnelctl varnelctl {home};
};

TEST_F(SystemTest, theVersionComesFromTheNamedSystemDisk)
{
    const QString root = putSystem("10.7.5");
    const Outcome system = varnelctl.run({u"system"_s, u"macosx"_s, u"--system-root"_s, root});
    EXPECT_EQ(system.status, 0) << system.err.toStdString();
    EXPECT_TRUE(system.out.startsWith("Mac OS X\n  Code Name            Mac OS X Lion\n"
                                      "  Version Number       10.7.5\n"
                                      "  Build Number         11G63\n"
                                      "  Copyright            1983-2012\n"))
        << system.out.toStdString();
    EXPECT_TRUE(QString::fromUtf8(system.out)
                    .contains(QString(u"  Home Directory       " + home.path() + u'\n')));
}

TEST_F(SystemTest, asJsonEachCategoryIsAListOfNamesAndValues)
{
    const QString root = putSystem("10.6.8");
    const Outcome system = varnelctl.run({u"system"_s, u"--json"_s, u"--system-root"_s, root});
    EXPECT_EQ(system.status, 0) << system.err.toStdString();
    const QJsonObject json = system.json();
    EXPECT_EQ(json.keys(),
              (QStringList {u"macosx"_s, u"memory"_s, u"network"_s, u"schemaVersion"_s}));
    EXPECT_EQ(names(json[u"macosx"_s]).mid(0, 7),
              (QStringList {u"Code Name"_s, u"Version Number"_s, u"Build Number"_s, u"Copyright"_s,
                            u"User Name"_s, u"Full User Name"_s, u"Home Directory"_s}));
    EXPECT_EQ(value(json[u"macosx"_s], u"Code Name"_s), u"Mac OS X");
    EXPECT_EQ(
        names(json[u"memory"_s]),
        (QStringList {u"Total Physical Memory"_s, u"Wired: disabled for paging out"_s,
                      u"Active: recently referenced"_s, u"Inactive: recently not referenced"_s,
                      u"Free: fully available for allocation"_s}));
    EXPECT_TRUE(value(json[u"memory"_s], u"Total Physical Memory"_s).endsWith(u" MB"));
    EXPECT_EQ(json[u"network"_s].toArray().size(), 5);
}

/// The output without what is the machine's: who runs this.
QByteArray withoutUser(const QByteArray &output)
{
    static const QRegularExpression text(u"(User Name +)[^\n]*"_s);
    static const QRegularExpression json(u"(User Name\",\n *\"value\": \")[^\n]*\""_s);
    QString told = QString::fromUtf8(output);
    return told.replace(text, u"\\1USER"_s).replace(json, u"\\1USER\""_s).toUtf8();
}

TEST_F(SystemTest, whatIsToldOfTheSystemStaysAsItIs)
{
    varnelctl.environment.insert(u"TMPDIR"_s, u"/tmp"_s);
    const QStringList system {u"system"_s, u"macosx"_s, u"--system-root"_s, putSystem("10.7.5")};
    expectGolden(u"system-macosx.txt"_s, withoutUser(varnelctl.run(system).out), home);
    expectGolden(u"system-macosx.json"_s,
                 withoutUser(varnelctl.run(system + QStringList(u"--json"_s)).out), home);
}

TEST_F(SystemTest, oneCategoryStandsAloneInAnyLetterCase)
{
    for (const QString &name : {u"memory"_s, u"MEMORY"_s}) {
        const Outcome memory = varnelctl.run({u"system"_s, name, u"--json"_s});
        EXPECT_EQ(memory.status, 0);
        EXPECT_EQ(memory.json().keys(), (QStringList {u"memory"_s, u"schemaVersion"_s}));
    }
    EXPECT_TRUE(varnelctl.run({u"system"_s, u"Mac OS X"_s}).out.startsWith("Mac OS X\n"));
    EXPECT_TRUE(varnelctl.run({u"system"_s, u"network"_s})
                    .out.startsWith("Network\n  IP packets received"));
}

TEST_F(SystemTest, whatTheSystemDoesNotSayIsNull)
{
    const Outcome system =
        varnelctl.run({u"system"_s, u"macosx"_s, u"--json"_s, u"--system-root"_s, home.path()});
    EXPECT_EQ(system.status, 0);
    const QJsonValue rows = system.json().value(u"macosx"_s);
    EXPECT_EQ(names(rows)[0], u"Version Number");
    EXPECT_EQ(value(rows, u"Version Number"_s), u"(null)");
    EXPECT_EQ(value(rows, u"Copyright"_s), u"(null)");
}

TEST_F(SystemTest, wrongUsagePrintsNoData)
{
    for (const QStringList &wrong :
         {QStringList {u"disk"_s}, QStringList {u"memory"_s, u"network"_s},
          QStringList {u"--system-root"_s}, QStringList {u"--system-root="_s}}) {
        const Outcome outcome = varnelctl.run(QStringList {u"system"_s} + wrong);
        EXPECT_EQ(outcome.status, 2) << wrong.join(u' ').toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_FALSE(outcome.err.isEmpty());
    }
}

TEST_F(SystemTest, aSystemDiskThatIsNotThereIsAFailureOfThatCategoryOnly)
{
    const QStringList missing {u"--system-root"_s, home.path() + u"/none", u"--json"_s};
    const Outcome one = varnelctl.run(QStringList {u"system"_s, u"macosx"_s} + missing);
    EXPECT_EQ(one.status, 3);
    EXPECT_TRUE(one.out.isEmpty());
    EXPECT_TRUE(one.err.contains("/none: no such folder"));
    const Outcome all = varnelctl.run(QStringList {u"system"_s} + missing);
    EXPECT_EQ(all.status, 4);
    EXPECT_TRUE(all.json().value(u"macosx"_s).isNull());
    EXPECT_EQ(all.json().value(u"memory"_s).toArray().size(), 5);
}

TEST_F(SystemTest, theVersionIsThatOfTheDiskThatTheHomeLiesOn)
{
    const QString path = putHome(putSystem("10.7.5"));
    const Outcome system = toldOf(path);
    EXPECT_EQ(system.status, 0) << system.err.toStdString();
    const QJsonValue rows = system.json().value(u"macosx"_s);
    EXPECT_EQ(version(system), u"10.7.5");
    EXPECT_EQ(value(rows, u"User Name"_s), u"anna");
    EXPECT_EQ(value(rows, u"Home Directory"_s), path);
    EXPECT_FALSE(system.json().contains(u"macosxNote"_s));
    // A name that leads there is the same home.
    ASSERT_TRUE(QFile::link(path, home.path() + u"/link"));
    EXPECT_EQ(version(toldOf(home.path() + u"/link")), u"10.7.5");
}

TEST_F(SystemTest, aNamedSystemDiskOverrulesThatOfTheHome)
{
    const QString path = putHome(putSystem("10.7.5"));
    EXPECT_EQ(version(toldOf(path, {u"--system-root"_s, home.path()})), u"(null)");
}

TEST_F(SystemTest, linksOnTheDiskLeadToPlacesOnTheDisk)
{
    const QString root = putSystem("10.7.5");
    const QString path = putHome(root);
    const QString hosts = home.path() + u"/host";
    QDir().mkpath(hosts + u"/CoreServices");
    const QString file = root + u"/System/Library/CoreServices/SystemVersion.plist";
    const QString hostsFile = hosts + u"/CoreServices/SystemVersion.plist";
    writeFile(hostsFile, fileBytes(file).replace("10.7.5", "99.9.9"));
    const QByteArray disks = fileBytes(file);

    // The file, then a folder on the way, is a link that leads to the host if the host resolves it.
    ASSERT_TRUE(QFile::remove(file) && QFile::link(hostsFile, file));
    for (const QStringList &more : {QStringList(), QStringList {u"--system-root"_s, root}}) {
        EXPECT_EQ(version(toldOf(path, more)), u"(null)");
        EXPECT_TRUE(note(toldOf(path, more)).contains(u"SystemVersion.plist: No such file"));
    }
    ASSERT_TRUE(QDir(root + u"/System/Library").removeRecursively());
    ASSERT_TRUE(QDir().mkpath(root + u"/System") && QFile::link(hosts, root + u"/System/Library"));
    EXPECT_EQ(version(toldOf(path)), u"(null)");

    // Where the disk has a place of that name, that is what the link means.
    QDir().mkpath(root + hosts + u"/CoreServices");
    writeFile(root + hostsFile, disks);
    EXPECT_EQ(version(toldOf(path)), u"10.7.5");
    EXPECT_EQ(version(toldOf(path, {u"--system-root"_s, root})), u"10.7.5");
}

TEST_F(SystemTest, aVersionThatIsNotKnownIsExplainedBelowTheRows)
{
    QDir().mkpath(home.path() + u"/disk");
    const QString path = putHome(home.path() + u"/disk");
    EXPECT_TRUE(note(toldOf(path))
                    .startsWith(QString(
                        u"The system's version is not known: " + home.path()
                        + u"/disk/System/Library/CoreServices/SystemVersion.plist: No such file")))
        << note(toldOf(path)).toStdString();
    EXPECT_TRUE(note(toldOf(home.path())).contains(u"does not lie at DISK/Users/NAME"));
    const Outcome text = varnelctl.run({u"system"_s, u"--home"_s, home.path()});
    EXPECT_TRUE(QString::fromUtf8(text.out).contains(
        u"\n  The system's version is not known: the home does not lie at DISK/Users/NAME. Name the"
        u" folder at which the system's disk is mounted with --system-root.\n\nMemory\n"_s))
        << text.out.toStdString();
}

TEST_F(SystemTest, rootReadsTheDiskWithTheRightsOfTheHomesOwner)
{
    VARNEL_NEEDS_ROOT();
    const QString root = putSystem("10.7.5");
    const QString path = putHome(root);
    giveAll(path, stranger, stranger);
    EXPECT_EQ(version(toldOf(path)), u"10.7.5");
    const QString file = root + u"/System/Library/CoreServices/SystemVersion.plist";
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
    EXPECT_EQ(version(toldOf(path)), u"(null)");
    EXPECT_TRUE(note(toldOf(path)).contains(u"SystemVersion.plist: Permission denied"));
}

TEST_F(SystemTest, aDiskBelowAFolderOfTheAdministratorsIsReachedAllTheSame)
{
    VARNEL_NEEDS_ROOT();
    const QString root = putSystem("10.7.5");
    const QString path = putHome(root);
    giveAll(path, stranger, stranger);
    ASSERT_TRUE(
        QFile::setPermissions(home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(version(toldOf(path)), u"10.7.5");
    EXPECT_EQ(version(toldOf(path, {u"--system-root"_s, root})), u"10.7.5");
}

} // namespace
