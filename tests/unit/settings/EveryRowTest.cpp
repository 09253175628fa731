// All fifty settings, one after the other, against a table that is written down by itself.

#include "settings/SettingAccess.h"
#include "SettingTable.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

const QString kept = QStringLiteral("'zz-kept': 'x'");
const QString keptXml = QStringLiteral("<key>zz-kept</key><string>x</string>");

std::string named(const ExpectedSetting &setting, const ExpectedCase &value)
{
    const QString text = QString::number(setting.id) + u" = " + QString::number(value.number)
        + u" \"" + value.text + u'"';
    return text.toStdString();
}

/// What a setting of a nested dictionary needs to find; nothing for the others.
QString startEntries(const ExpectedSetting &setting)
{
    if (setting.id != 1204)
        return keptXml;
    return u"<key>NSToolbar Configuration BrowserWindowToolbarIdentifier</key>"
           u"<dict><key>TB Icon Size Mode</key><integer>1</integer></dict>"_s
        + keptXml;
}

/// The single key of an ordinary setting and the Python literals of its choices, by index.
struct OrdinaryKey {
    QString key;
    QMap<int, QString> stored;
    int defaultIndex = 0;
};

std::optional<OrdinaryKey> ordinaryKey(const ExpectedSetting &setting)
{
    static const QRegularExpression entry(u"^'([^']+)': (True|False|\\d+|'[^']*')$"_s);
    const QList<int> special {1003, 1004, 1203, 1400, 1403};
    if (setting.file.isEmpty() || special.contains(setting.id))
        return std::nullopt;
    OrdinaryKey ordinary;
    for (const ExpectedCase &value : setting.cases) {
        if (value.holds.isEmpty()) {
            ordinary.defaultIndex = value.number;
            continue;
        }
        const QRegularExpressionMatch match = entry.match(value.holds);
        if (!match.hasMatch())
            return std::nullopt;
        ordinary.key = match.captured(1);
        ordinary.stored.insert(value.number, match.captured(2));
    }
    return ordinary;
}

bool isText(const QString &literal)
{
    return literal.startsWith(u'\'');
}

QString textOf(const QString &literal)
{
    return literal.mid(1, literal.size() - 2);
}

int numberOf(const QString &literal)
{
    return literal == u"True" ? 1 : literal == u"False" ? 0 : literal.toInt();
}

QStringList formsOfNumber(int number)
{
    const QString text = QString::number(number);
    QStringList forms {u"<integer>"_s + text + u"</integer>", u"<real>"_s + text + u".0</real>",
                       u"<real>"_s + text + u".75</real>", u"<string>"_s + text + u"</string>",
                       u"<string> "_s + text + u" items</string>"};
    if (number == 0 || number == 1)
        forms.append(number == 1 ? u"<true/>"_s : u"<false/>"_s);
    return forms;
}

/// Reads the setting of a file that holds the one key.
SettingReading readForm(const SettingsHome &home, const ExpectedSetting &setting,
                        const QString &key, const QString &form)
{
    home.put(setting.file, u"<key>"_s + key + u"</key>" + form);
    return home.read(setting.id);
}

/// Calls `check` for each ordinary setting.
template <typename Check> int forOrdinarySettings(Check check)
{
    int count = 0;
    for (const ExpectedSetting &setting : expectedSettings()) {
        if (const std::optional<OrdinaryKey> ordinary = ordinaryKey(setting)) {
            SCOPED_TRACE(setting.id);
            check(setting, *ordinary);
            ++count;
        }
    }
    return count;
}

} // namespace

TEST(EveryRow, StandsInTheCatalogueWithItsPlaceTextsAndChoices)
{
    ASSERT_EQ(expectedSettings().size(), 50);
    for (const ExpectedSetting &setting : expectedSettings()) {
        SCOPED_TRACE(setting.id);
        const SettingRow *row = findSetting(setting.id);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->viewClass, setting.viewClass);
        EXPECT_EQ(shortLocationString(*row), setting.place);
        EXPECT_EQ(locationString(*row), u"Quillet -> "_s + setting.place);
        EXPECT_EQ(row->file, setting.file.isEmpty() ? QString() : u'/' + setting.file);
        EXPECT_EQ(row->keywords, setting.keywords);
        QStringList labels;
        QStringList expectedLabels;
        for (const Choice &choice : row->choices)
            labels.append(choice.label);
        for (const ExpectedCase &value : setting.cases) {
            if (!value.label.isEmpty())
                expectedLabels.append(value.label);
        }
        EXPECT_EQ(labels, expectedLabels);
    }
}

TEST(EveryRow, WritingAValueLeavesExactlyThatInItsFile)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    QStringList results;
    QStringList expected;
    SettingsHome home;
    for (const ExpectedSetting &setting : expectedSettings()) {
        if (setting.file.isEmpty())
            continue; // keeps no preference
        home.put(setting.file, startEntries(setting));
        for (const ExpectedCase &value : setting.cases) {
            ASSERT_TRUE(home.write(setting.id, {value.number, value.text}).ok());
            results.append(home.path(QString::number(results.size())));
            QFile::copy(home.path(setting.file), results.last());
            expected.append(u'{' + (value.holds.isEmpty() ? QString() : value.holds + u", "_s)
                            + kept + u'}');
        }
    }
    ASSERT_EQ(results.size(), 148);
    EXPECT_EQ(PlistReferee::read(results), expected);
}

TEST(EveryRow, WhatWasWrittenReadsBackAsTheSameValue)
{
    SettingsHome home;
    for (const ExpectedSetting &setting : expectedSettings()) {
        if (setting.file.isEmpty())
            continue; // its default is never shown again
        home.put(setting.file, startEntries(setting));
        for (const ExpectedCase &value : setting.cases) {
            SCOPED_TRACE(named(setting, value));
            ASSERT_TRUE(home.write(setting.id, {value.number, value.text}).ok());
            const SettingReading reading = home.read(setting.id);
            EXPECT_EQ(reading.value, (SettingValue {value.number, value.text}));
            EXPECT_EQ(reading.found, &value != &setting.cases.last());
        }
    }
}

TEST(EveryRow, WritingOrRemovingRaisesTheRestartFlagOfTheRowAndNoOther)
{
    SettingsHome home;
    for (const ExpectedSetting &setting : expectedSettings()) {
        for (const ExpectedCase &value : setting.cases) {
            SCOPED_TRACE(named(setting, value));
            home.flags = {};
            (void)home.write(setting.id, {value.number, value.text});
            const bool removalOfBar = setting.id == 1200 && value.text == u"-1";
            EXPECT_EQ(home.flags, removalOfBar ? RestartFlags() : setting.restarts);
        }
    }
}

TEST(EveryRow, RaisingOneFlagLeavesTheOthersRaised)
{
    SettingsHome home;
    home.flags = RestartFlag::Mail;
    (void)home.write(1009, {0});
    EXPECT_EQ(home.flags, RestartFlags(RestartFlag::Mail | RestartFlag::Dock));
}

TEST(EveryRow, EveryValueHasItsSentence)
{
    for (const ExpectedSetting &setting : expectedSettings()) {
        for (const ExpectedCase &value : setting.cases) {
            SCOPED_TRACE(named(setting, value));
            EXPECT_EQ(actionString(*findSetting(setting.id), {value.number, value.text}),
                      value.action);
        }
    }
}

TEST(EveryRow, AnIndexOutOfRangeHasTheDefaultSentence)
{
    for (const ExpectedSetting &setting : expectedSettings()) {
        if (setting.otherAction.isEmpty())
            continue; // numbers and strings have no indices
        SCOPED_TRACE(setting.id);
        for (const int index : {-2, -1, int(setting.cases.size()), 250})
            EXPECT_EQ(actionString(*findSetting(setting.id), {index}), setting.otherAction);
    }
}

TEST(EveryRow, AnIndexOutOfRangeRemovesTheKey)
{
    SettingsHome home;
    forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
        for (const int index : {-1, 8}) {
            home.put(setting.file, keptXml);
            ASSERT_TRUE(home.write(setting.id, {0}).ok());
            ASSERT_TRUE(home.write(setting.id, {index}).ok());
            EXPECT_EQ(home.files.readValue(home.path(setting.file), {ordinary.key}).kind,
                      plist::Kind::Missing);
        }
    });
}

TEST(EveryRow, EveryStoredFormOfANumberSelectsItsChoice)
{
    SettingsHome home;
    const int count =
        forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
            for (auto stored = ordinary.stored.begin(); stored != ordinary.stored.end(); ++stored) {
                if (isText(stored.value()))
                    continue;
                for (const QString &form : formsOfNumber(numberOf(stored.value()))) {
                    SCOPED_TRACE(form.toStdString());
                    const SettingReading reading = readForm(home, setting, ordinary.key, form);
                    EXPECT_EQ(reading.value, SettingValue {stored.key()});
                    EXPECT_TRUE(reading.found);
                }
            }
        });
    EXPECT_EQ(count, 40);
}

TEST(EveryRow, AnyOtherNumberSelectsTheDefault)
{
    SettingsHome home;
    forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
        for (const QString &form : {u"<integer>5</integer>"_s, u"<integer>-1</integer>"_s,
                                    u"<real>-7.5</real>"_s, u"<string>5 yes</string>"_s})
            EXPECT_EQ(readForm(home, setting, ordinary.key, form).value,
                      SettingValue {ordinary.defaultIndex});
    });
}

TEST(EveryRow, AMissingKeyOrFileSelectsTheDefault)
{
    SettingsHome home;
    forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
        QFile::remove(home.path(setting.file));
        const SettingReading noFile = home.read(setting.id);
        EXPECT_EQ(noFile.value, SettingValue {ordinary.defaultIndex});
        EXPECT_FALSE(noFile.found);
        home.put(setting.file, keptXml);
        const SettingReading noKey = home.read(setting.id);
        EXPECT_EQ(noKey.value, SettingValue {ordinary.defaultIndex});
        EXPECT_FALSE(noKey.found);
    });
}

TEST(EveryRow, AValueOfAForeignTypeSelectsTheDefault)
{
    SettingsHome home;
    forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
        for (const QString &form : {u"<array><integer>1</integer></array>"_s, u"<dict/>"_s,
                                    u"<data>AQ==</data>"_s, u"<date>2011-07-20T12:00:00Z</date>"_s})
            EXPECT_EQ(readForm(home, setting, ordinary.key, form).value,
                      SettingValue {ordinary.defaultIndex});
    });
}

TEST(EveryRow, AStoredTextSelectsItsChoiceInAnyLetterCaseExceptTheFileFormat)
{
    SettingsHome home;
    int texts = 0;
    forOrdinarySettings([&](const ExpectedSetting &setting, const OrdinaryKey &ordinary) {
        for (auto stored = ordinary.stored.begin(); stored != ordinary.stored.end(); ++stored) {
            if (!isText(stored.value()))
                continue;
            ++texts;
            const QString text = textOf(stored.value());
            const auto read = [&](const QString &form) {
                return readForm(home, setting, ordinary.key, u"<string>"_s + form + u"</string>")
                    .value.number;
            };
            EXPECT_EQ(read(text), stored.key());
            EXPECT_EQ(read(text.toUpper()),
                      setting.id == 1402 ? ordinary.defaultIndex : stored.key());
            EXPECT_EQ(read(text + u' '), ordinary.defaultIndex);
            EXPECT_EQ(read(u"nonsense"_s), ordinary.defaultIndex);
        }
    });
    EXPECT_EQ(texts, 3 + 3 + 2 + 7);
}
