#include "profiles/ProfileWriter.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"
#include "support/PlistReferee.h"
#include "unit/plist/Referees.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

/// Values of every kind that a setting can have, the default last.
QList<SettingValue> valuesOf(const SettingRow &row)
{
    QList<SettingValue> values;
    if (row.kind == ValueKind::Choice) {
        for (int index = 0; index < row.choices.size(); ++index)
            values.append(SettingValue {index});
        return values;
    }
    if (row.kind == ValueKind::Number)
        return {{row.minimum}, {row.maximum}, {-1}};
    if (row.mechanism == Mechanism::BarItems)
        return {{0, u"1;0;0;1"_s}, {0, u"0;0;0;0"_s}, {0, u"1;1;1;1"_s}, {0, u"-1"_s}};
    return {{0, u""_s},
            {0, u"default"_s},
            {0, u" <&>\"'\\ \r\n\t/~ "_s},
            {0, u"画像 \U0001f4f7 \u00e9"_s},
            {0, u"48"_s},
            {0, u"-1"_s}};
}

Profile one(const SettingRow &row, const SettingValue &value)
{
    return {{SettingChange {&row, {}, value}}};
}

std::string named(const SettingRow &row, const SettingValue &value)
{
    return QString(row.name + u" = " + exchangedText(row, value)).toStdString();
}

void expectReadAs(const QByteArray &bytes, const Profile &profile, const std::string &what)
{
    const Result<Profile> read = readProfile(bytes);
    ASSERT_TRUE(read) << what << ": " << read.error().text.toStdString();
    EXPECT_TRUE(read.value() == profile) << what << '\n' << bytes.toStdString();
}

/// All settings, each with one of its values; a setting with fewer values has its last.
Profile all(qsizetype which)
{
    Profile profile;
    for (const SettingRow &row : catalogue()) {
        const QList<SettingValue> values = valuesOf(row);
        profile.settings.append({&row, {}, values[std::min(which, values.size() - 1)]});
    }
    return profile;
}

} // namespace

TEST(ProfileWriter, everyValueOfEverySettingReadsBackInBothFormats)
{
    ASSERT_EQ(catalogue().size(), 50);
    for (const SettingRow &row : catalogue()) {
        for (const SettingValue &value : valuesOf(row)) {
            const Profile profile = one(row, value);
            EXPECT_TRUE(checkForProfile(profile.settings.first())) << named(row, value);
            expectReadAs(profileJson(profile), profile, named(row, value));
            const Result<QByteArray> list = profilePropertyList(profile);
            ASSERT_TRUE(list) << named(row, value);
            expectReadAs(list.value(), profile, named(row, value));
        }
    }
}

TEST(ProfileWriter, allSettingsReadBackTogetherAlsoThroughOtherPrograms)
{
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    const QTemporaryDir folder;
    for (qsizetype which = 0; which < 3; ++which) {
        const Profile profile = all(which);
        expectReadAs(profileJson(profile), profile, "JSON");
        const Result<QByteArray> list = profilePropertyList(profile);
        ASSERT_TRUE(list);
        expectReadAs(list.value(), profile, "XML");
        EXPECT_TRUE(readByLibplist(list.value()));

        QFile xml(folder.filePath(u"xml"_s));
        ASSERT_TRUE(xml.open(QIODevice::WriteOnly | QIODevice::Truncate));
        xml.write(list.value());
        xml.close();
        QFile binary(folder.filePath(u"binary"_s));
        PlistReferee::write(binary.fileName(), PlistReferee::read(xml.fileName()),
                            PlistReferee::Format::Binary);
        ASSERT_TRUE(binary.open(QIODevice::ReadOnly));
        expectReadAs(binary.readAll(), profile, "binary");
    }
}

TEST(ProfileWriter, valuesAreWrittenAsAPersonWouldWriteThem)
{
    const Profile profile {{{findSetting(1004), {}, {-1}},
                            {findSetting(1007), {}, {0}},
                            {findSetting(1200), {}, {0, u"1;0;0;1"_s}},
                            {findSetting(1203), {}, {18}},
                            {findSetting(1400), {}, {0, u"a \"b\""_s}}}};
    EXPECT_EQ(profileJson(profile).toStdString(), R"({
    "schemaVersion": 1,
    "settings": {
        "bookmarks-bar": "Reading List, Bonjour",
        "dock-size": -1,
        "history-items": 18,
        "minimize-into-icon": "minimize windows into their application icon",
        "screenshot-prefix": "a \"b\""
    }
}
)");
}

TEST(ProfileWriter, aValueThatNoControlOffersCannotStandInAProfile)
{
    const auto reason = [](int id, const SettingValue &value) {
        const Result<void> fits = checkForProfile({findSetting(id), {}, value});
        return fits ? std::string("none") : fits.error().text.toStdString();
    };
    EXPECT_EQ(reason(1004, {300}),
              "'300' is no value of dock-size; give a number from 16 to 128, or 'default'");
    EXPECT_EQ(reason(1400, {0, QString(QChar(0xd800))}),
              "screenshot-prefix: its text is no Unicode");
    EXPECT_EQ(reason(1400, {0, QString(QChar(1))}), "none");
    EXPECT_FALSE(profilePropertyList({{{findSetting(1400), {}, {0, QString(QChar(1))}}}}));
}
