#include "doctor/OddValues.h"
#include "settings/Catalogue.h"
#include "settings/PreferenceContent.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;

namespace {

/// What is odd in a file for a setting, as "key: text".
QStringList odd(QStringView setting, const QByteArray &members)
{
    const Result<PreferenceContent> content = PreferenceContent::of(
        u"file"_s, QByteArray("<plist version=\"1.0\"><dict>" + members + "</dict></plist>"));
    EXPECT_TRUE(content);
    QStringList texts;
    for (const OddValue &value : oddValues(*findSetting(setting), [&](const QStringList &keyPath) {
             return content.value().value(keyPath);
         }))
        texts.append(value.key + u": " + value.text);
    return texts;
}

} // namespace

TEST(OddValues, whatIsMissingOrAChoiceIsNotOdd)
{
    EXPECT_EQ(odd(u"lock-dock-size", {}), QStringList());
    EXPECT_EQ(odd(u"lock-dock-size", "<key>size-immutable</key><true/>"), QStringList());
    EXPECT_EQ(odd(u"lock-dock-size", "<key>size-immutable</key><integer>0</integer>"),
              QStringList());
    EXPECT_EQ(odd(u"1402", "<key>type</key><string>png</string>"), QStringList());
}

TEST(OddValues, whatNoChoiceWritesIsOdd)
{
    EXPECT_EQ(odd(u"lock-dock-size", "<key>size-immutable</key><integer>2</integer>"),
              QStringList(u"size-immutable: 2"_s));
    EXPECT_EQ(odd(u"lock-dock-size", "<key>size-immutable</key><array/>"),
              QStringList(u"size-immutable: ( )"_s));
    EXPECT_EQ(odd(u"1402", "<key>type</key><string>nosuchtype</string>"),
              QStringList(u"type: nosuchtype"_s));
}

TEST(OddValues, aTextIsNoChoiceOfNumbersWhateverItReadsAs)
{
    for (const QByteArray text : {"YES", "true", "1", "0", ""})
        EXPECT_EQ(odd(u"lock-dock-size", "<key>size-immutable</key><string>" + text + "</string>"),
                  QStringList(QString(u"size-immutable: " + QString::fromUtf8(text))));
    EXPECT_EQ(odd(u"dock-size", "<key>tilesize</key><string>48</string>"),
              QStringList(u"tilesize: 48"_s));
}

TEST(OddValues, aNumberIsOddOutOfTheRangeOfItsControlAndWhereItIsNone)
{
    EXPECT_EQ(odd(u"dock-size", "<key>tilesize</key><real>48.0</real>"), QStringList());
    EXPECT_EQ(odd(u"dock-size", "<key>tilesize</key><integer>100000</integer>"),
              QStringList(u"tilesize: 100000"_s));
    EXPECT_EQ(odd(u"dock-size", "<key>tilesize</key><dict/>"),
              QStringList(u"tilesize: (no text form)"_s));
}

TEST(OddValues, aTextIsOddWhereItIsNone)
{
    EXPECT_EQ(odd(u"screenshot-prefix", "<key>name</key><string>shot</string>"), QStringList());
    EXPECT_EQ(odd(u"screenshot-prefix", "<key>name</key><integer>7</integer>"),
              QStringList(u"name: 7"_s));
}

TEST(OddValues, eachKeyOfASettingCounts)
{
    const SettingRow *bar = findSetting(1200);
    ASSERT_NE(bar, nullptr);
    const QByteArray key = "<key>" + bar->keys.first().toUtf8() + "</key>";
    EXPECT_EQ(odd(u"1200", key + "<array><string>Bonjour</string></array>"), QStringList());
    EXPECT_EQ(odd(u"1200", key + "<array><string>Elsewhere</string></array>").size(), 1);
    EXPECT_EQ(odd(u"1200", key + "<string>Bonjour</string>").size(), 1);

    for (const SettingRow &row : catalogue()) {
        if (row.file.isNull() || row.mechanism == Mechanism::NestedChoice)
            continue;
        QByteArray members;
        for (const QString &each : row.keys)
            members += "<key>" + each.toUtf8() + "</key><dict/>";
        EXPECT_EQ(odd(row.name, members).size(), row.keys.size()) << row.name.toStdString();
    }
}

TEST(OddValues, aLongValueIsCutAndStandsOnOneLine)
{
    const QStringList texts =
        odd(u"1402", "<key>type</key><string>one\ntwo " + QByteArray(500, 'x') + "</string>");
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(texts.first().startsWith(u"type: one two xxx"));
    EXPECT_TRUE(texts.first().endsWith(u"xxx..."));
    EXPECT_LT(texts.first().size(), 80);
}
