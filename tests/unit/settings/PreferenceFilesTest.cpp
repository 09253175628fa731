#include "settings/PreferenceFiles.h"

#include "support/FailingFileStore.h"
#include "support/LogCapture.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString name = QStringLiteral("com.example.app.plist");
const QString key = QStringLiteral("size");

/// What an XML value reads as, taken as an integer.
std::optional<int> numberFrom(const QString &xml)
{
    const SettingsHome home;
    home.put(name, u"<key>size</key>"_s + xml);
    return home.files.readNumberPlistValue(home.path(name), key);
}

const QList<QByteArray> &unloadableFiles()
{
    static const QList<QByteArray> all {
        QByteArray(),
        QByteArray("not a property list"),
        QByteArray("bplist00"),
        xmlPlist(u"<key>size</key><integer>1</integer>"_s).chopped(12),
        QByteArray("<plist version=\"1.0\"><array><string>size</string></array></plist>"),
        QByteArray("<plist version=\"1.0\"><string>size</string></plist>"),
    };
    return all;
}

} // namespace

TEST(PreferenceFiles, AKeyOfAFileThatDoesNotExistIsNotFound)
{
    const SettingsHome home;
    EXPECT_EQ(home.files.readStringPlistValue(home.path(name), key), std::nullopt);
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), std::nullopt);
    EXPECT_EQ(home.files.readValue(home.path(name), {key}).kind, plist::Kind::Missing);
    EXPECT_FALSE(home.has(name));
}

TEST(PreferenceFiles, WritingAKeyCreatesAMissingFileWithThatOneKey)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    SettingsHome home;
    const QString text = home.path(u"text.plist"_s);
    const QString number = home.path(u"number.plist"_s);
    const QString flag = home.path(u"flag.plist"_s);
    ASSERT_TRUE(home.files.writeStringPlistValue(text, key, u"<&>\"ü\U0001F600"_s).ok());
    ASSERT_TRUE(home.files.writeNumberPlistValue(number, key, -48).ok());
    ASSERT_TRUE(home.files.writeBoolPlistValue(flag, key, false).ok());
    EXPECT_EQ(PlistReferee::read({text, number, flag}),
              (QStringList {u"{'size': '<&>\"ü\U0001F600'}"_s, u"{'size': -48}"_s,
                            u"{'size': False}"_s}));
    EXPECT_TRUE(home.bytes(u"text.plist"_s).startsWith("<?xml"));
}

TEST(PreferenceFiles, RemovingAKeyFromAMissingFileLeavesNoFileBehind)
{
    SettingsHome home;
    EXPECT_TRUE(home.files.deletePlistValue(home.path(name), key).ok());
    EXPECT_FALSE(home.has(name));
}

TEST(PreferenceFiles, RemovingAKeyKeepsEveryOtherKeyOfTheFileUnchanged)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    SettingsHome home;
    for (const auto format : {PlistReferee::Format::Xml, PlistReferee::Format::Binary}) {
        PlistReferee::write(
            home.path(name),
            u"{'size': 1, 'a': [1, 2.5, b'x'], 'd': {'size': 2}, 't': date(2011, 7, 20)}"_s,
            format);
        ASSERT_TRUE(home.files.deletePlistValue(home.path(name), key).ok());
        EXPECT_EQ(
            PlistReferee::read(home.path(name)),
            u"{'a': [1, 2.5, b'x'], 'd': {'size': 2}, 't': datetime.datetime(2011, 7, 20, 0, 0)}"_s);
    }
}

TEST(PreferenceFiles, RemovingAKeyThatIsNotThereLeavesTheFileUntouched)
{
    SettingsHome home;
    home.put(name, u"<key>other</key><true/>"_s);
    const QByteArray before = home.bytes(name);
    EXPECT_TRUE(home.files.deletePlistValue(home.path(name), key).ok());
    EXPECT_EQ(home.bytes(name), before);
}

TEST(PreferenceFiles, ABooleanReadsAsOneOrZero)
{
    EXPECT_EQ(numberFrom(u"<true/>"_s), 1);
    EXPECT_EQ(numberFrom(u"<false/>"_s), 0);
}

TEST(PreferenceFiles, RealsAreTruncatedTowardsZero)
{
    EXPECT_EQ(numberFrom(u"<real>2.9</real>"_s), 2);
    EXPECT_EQ(numberFrom(u"<real>-2.9</real>"_s), -2);
    EXPECT_EQ(numberFrom(u"<real>1e300</real>"_s), std::numeric_limits<int>::max());
    EXPECT_EQ(numberFrom(u"<real>nan</real>"_s), 0);
}

TEST(PreferenceFiles, StringsGiveTheirLeadingNumberOrZero)
{
    EXPECT_EQ(numberFrom(u"<string>48</string>"_s), 48);
    EXPECT_EQ(numberFrom(u"<string> -7 pixels</string>"_s), -7);
    EXPECT_EQ(numberFrom(u"<string>YES</string>"_s), 0);
    EXPECT_EQ(numberFrom(u"<string></string>"_s), 0);
}

TEST(PreferenceFiles, WideIntegersAreCutTo32Bits)
{
    EXPECT_EQ(numberFrom(u"<integer>4294967297</integer>"_s), 1);
    EXPECT_EQ(numberFrom(u"<integer>2147483648</integer>"_s), std::numeric_limits<int>::min());
    EXPECT_EQ(numberFrom(u"<integer>-4294967298</integer>"_s), -2);
}

TEST(PreferenceFiles, WhatHasNoIntegerValueReadsAsMissing)
{
    for (const QString &form :
         {u"<array/>"_s, u"<dict/>"_s, u"<data></data>"_s, u"<date>2011-07-20T00:00:00Z</date>"_s})
        EXPECT_EQ(numberFrom(form), std::nullopt) << form.toStdString();
}

TEST(PreferenceFiles, AnObjectThatIsNoStringIsFoundInItsTextForm)
{
    const SettingsHome home;
    home.put(name, u"<key>size</key><integer>5</integer><key>none</key><string></string>"_s);
    EXPECT_EQ(home.files.readStringPlistValue(home.path(name), key), u"5"_s);
    EXPECT_EQ(home.files.readStringPlistValue(home.path(name), u"none"_s), QStringLiteral(""));
}

TEST(PreferenceFiles, AFileThatCannotBeLoadedReadsAsMissingAndIsNamedInTheLog)
{
    for (const QByteArray &content : unloadableFiles()) {
        const SettingsHome home;
        home.putBytes(name, content);
        const LogCapture log;
        EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), std::nullopt);
        EXPECT_EQ(home.files.readStringPlistValue(home.path(name), key), std::nullopt);
        ASSERT_EQ(log.texts().size(), 1);
        EXPECT_TRUE(log.texts(u"varnel.io"_s).first().contains(home.path(name)));
    }
}

TEST(PreferenceFiles, AFileThatCannotBeLoadedIsLeftByteForByteAlone)
{
    for (const QByteArray &content : unloadableFiles()) {
        SettingsHome home;
        home.putBytes(name, content);
        const LogCapture log;
        const QList<Result<void>> outcomes {
            home.files.writeNumberPlistValue(home.path(name), key, 2),
            home.files.writeStringPlistValue(home.path(name), key, u"x"_s),
            home.files.writeBoolPlistValue(home.path(name), key, true),
            home.files.deletePlistValue(home.path(name), key),
            home.files.changeExisting(home.path(name), {key, key}, qint64(1)),
        };
        for (const Result<void> &outcome : outcomes) {
            ASSERT_FALSE(outcome.ok());
            EXPECT_EQ(outcome.error().code, ErrorCode::Unloadable);
            EXPECT_TRUE(outcome.error().text.contains(home.path(name)));
        }
        EXPECT_EQ(log.texts(u"varnel.io"_s).size(), outcomes.size());
        EXPECT_EQ(home.bytes(name), content);
    }
}

TEST(PreferenceFiles, WritingWhatIsThereAlreadyReplacesNothing)
{
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>48</integer>"_s);
    const QByteArray before = home.bytes(name);
    const QDateTime stamp = QDateTime::fromSecsSinceEpoch(1000000000);
    QFile file(home.path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(stamp, QFileDevice::FileModificationTime));
    file.close();
    EXPECT_TRUE(home.files.writeNumberPlistValue(home.path(name), key, 48).ok());
    EXPECT_EQ(home.bytes(name), before);
    EXPECT_EQ(QFileInfo(home.path(name)).lastModified(), stamp);
}

TEST(PreferenceFiles, ANumberInPlaceOfABooleanIsAChangeOfType)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>1</integer>"_s);
    ASSERT_TRUE(home.files.writeBoolPlistValue(home.path(name), key, true).ok());
    EXPECT_EQ(PlistReferee::read(home.path(name)), u"{'size': True}"_s);
    ASSERT_TRUE(home.files.writeNumberPlistValue(home.path(name), key, 1).ok());
    EXPECT_EQ(PlistReferee::read(home.path(name)), u"{'size': 1}"_s);
}

TEST(PreferenceFiles, AChangeInsideADictionaryNeedsTheFileAndTheDictionary)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    SettingsHome home;
    const QString path = home.path(name);
    EXPECT_TRUE(home.files.changeExisting(path, {u"outer"_s, key}, qint64(2)).ok());
    EXPECT_FALSE(home.has(name));
    home.put(name, u"<key>outer</key><string>no dictionary</string>"_s);
    const QByteArray before = home.bytes(name);
    EXPECT_TRUE(home.files.changeExisting(path, {u"outer"_s, key}, qint64(2)).ok());
    EXPECT_TRUE(home.files.changeExisting(path, {u"none"_s, key}, std::nullopt).ok());
    EXPECT_EQ(home.bytes(name), before);
    home.put(name, u"<key>outer</key><dict><key>a</key><true/></dict>"_s);
    EXPECT_TRUE(home.files.changeExisting(path, {u"outer"_s, key}, qint64(2)).ok());
    EXPECT_EQ(PlistReferee::read(path), u"{'outer': {'a': True, 'size': 2}}"_s);
    EXPECT_TRUE(home.files.changeExisting(path, {u"outer"_s, key}, std::nullopt).ok());
    EXPECT_EQ(PlistReferee::read(path), u"{'outer': {'a': True}}"_s);
}

TEST(PreferenceFiles, SeveralChangesAreOneReplacementOfTheFile)
{
    SettingsHome home;
    FailingFileStore store(home.store);
    PreferenceFiles files(store);
    ASSERT_TRUE(files
                    .change(home.path(name), {{{u"a"_s}, qint64(1)}, {{u"b"_s}, qint64(2)}},
                            PreferenceFiles::IfMissing::Create)
                    .ok());
    EXPECT_EQ(store.calls, QStringList {u"update "_s + home.path(name)});
    EXPECT_EQ(files.readNumberPlistValue(home.path(name), u"a"_s), 1);
    EXPECT_EQ(files.readNumberPlistValue(home.path(name), u"b"_s), 2);
}

TEST(PreferenceFiles, AFailureOfTheStoreIsTheOutcomeOfTheWriteAndAMissingKeyForARead)
{
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>1</integer>"_s);
    FailingFileStore store(home.store);
    PreferenceFiles files(store);
    store.failOperation(1, {ErrorCode::NotPermitted, u"no"_s});
    store.failOperation(2, {ErrorCode::NotPermitted, u"no"_s});
    const Result<void> written = files.writeNumberPlistValue(home.path(name), key, 2);
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().code, ErrorCode::NotPermitted);
    EXPECT_EQ(files.readNumberPlistValue(home.path(name), key), std::nullopt);
    EXPECT_EQ(files.readNumberPlistValue(home.path(name), key), 1);
}

TEST(PreferenceFiles, EveryReadOpensTheFileAgain)
{
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>1</integer>"_s);
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), 1);
    home.put(name, u"<key>size</key><integer>2</integer>"_s);
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), 2);
}

TEST(PreferenceFiles, TheReadsOfAPassShareTheFileAndTheNextPassOpensItAgain)
{
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>1</integer>"_s);
    FailingFileStore store(home.store);
    PreferenceFiles files(store);
    {
        const PreferenceFiles::ReadPass pass(files);
        const PreferenceFiles::ReadPass inner(files);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(files.readNumberPlistValue(home.path(name), key), 1);
            EXPECT_EQ(files.readNumberPlistValue(home.path(u"none.plist"_s), key), std::nullopt);
        }
    }
    EXPECT_EQ(store.calls.size(), 2);
    home.put(name, u"<key>size</key><integer>2</integer>"_s);
    const PreferenceFiles::ReadPass pass(files);
    EXPECT_EQ(files.readNumberPlistValue(home.path(name), key), 2);
}

TEST(PreferenceFiles, AWriteWithinAPassIsSeenByTheReadsThatFollow)
{
    SettingsHome home;
    home.put(name, u"<key>size</key><integer>1</integer>"_s);
    const PreferenceFiles::ReadPass pass(home.files);
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), 1);
    ASSERT_TRUE(home.files.writeNumberPlistValue(home.path(name), key, 2).ok());
    EXPECT_EQ(home.files.readNumberPlistValue(home.path(name), key), 2);
}
