#include "profiles/Profile.h"
#include "settings/Catalogue.h"
#include "support/PlistReferee.h"
#include "support/SettingsHome.h"
#include "unit/plist/BinaryBuilder.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::test;

namespace {

QByteArray json(const QByteArray &settings)
{
    return R"({"schemaVersion": 1, "settings": {)" + settings + "}}";
}

QByteArray propertyList(const QString &settings)
{
    return xmlPlist(u"<key>schemaVersion</key><integer>1</integer>"
                    u"<key>settings</key><dict>"_s
                    + settings + u"</dict>");
}

std::string complaint(const QByteArray &bytes)
{
    const Result<Profile> profile = readProfile(bytes);
    if (profile)
        return "none";
    EXPECT_EQ(profile.error().code, ErrorCode::Invalid);
    return profile.error().text.toStdString();
}

QList<std::pair<int, SettingValue>> values(const QByteArray &bytes)
{
    const Result<Profile> profile = readProfile(bytes);
    if (!profile) {
        ADD_FAILURE() << profile.error().text.toStdString();
        return {};
    }
    QList<std::pair<int, SettingValue>> found;
    for (const SettingChange &setting : profile.value().settings)
        found.append({setting.row->id, setting.newValue});
    return found;
}

const QList<std::pair<int, SettingValue>> lab {
    {1004, {64}}, {1008, {1}}, {1200, {0, u"1;0;0;1"_s}}, {1400, {0, u"shot"_s}}};

} // namespace

TEST(ProfileReader, settingsAreNamedByNumberOrNameAndValuesByLabelOrAsExchanged)
{
    EXPECT_EQ(values(json(R"("screenshot-prefix": "shot", "1008": "scale EFFECT",
                             "Dock-Size": 64, "1200": "Reading List, Bonjour")")),
              lab);
    EXPECT_EQ(values(json(R"("1004": "64", "minimize-effect": 1, "1400": "shot",
                             "bookmarks-bar": "1;0;0;1")")),
              lab);
    EXPECT_EQ(values(json(R"("1008": -1, "1004": -1, "1400": -1, "1200": "default")")),
              (QList<std::pair<int, SettingValue>> {
                  {1004, {-1}}, {1008, {2}}, {1200, {0, u"-1"_s}}, {1400, {0, u"-1"_s}}}));
    EXPECT_TRUE(values(json("")).isEmpty());
}

TEST(ProfileReader, theBytesTellTheFormat)
{
    const QString settings = u"<key>1004</key><integer>64</integer>"
                             u"<key>minimize-effect</key><string>Scale effect</string>"
                             u"<key>1200</key><string>1;0;0;1</string>"
                             u"<key>1400</key><string>shot</string>"_s;
    EXPECT_EQ(values(propertyList(settings)), lab);
    EXPECT_EQ(values("\xef\xbb\xbf \n\t"
                     + json(R"("1004": 64.0, "1008": 1, "1200": "1;0;0;1", "1400": "shot")")),
              lab);
    if (!PlistReferee::isHere())
        GTEST_SKIP() << "no python3";
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"binary"_s));
    PlistReferee::write(file.fileName(),
                        u"{'schemaVersion': 1, 'settings': {'1004': 64, '1008': 'Scale effect', "
                        u"'1200': '1;0;0;1', '1400': 'shot'}}"_s,
                        PlistReferee::Format::Binary);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(values(file.readAll()), lab);
}

TEST(ProfileReader, aWrongValueIsToldWithTheSettingsName)
{
    EXPECT_EQ(complaint(json(R"("1004": 300)")),
              "'300' is no value of dock-size; give a number from 16 to 128, or 'default'");
    EXPECT_EQ(complaint(json(R"("1008": "genie")")),
              "'genie' is no value of minimize-effect; choose 0 (Genie effect), 1 (Scale effect), "
              "2 (use default value)");
    const char *const notOfTheKind = "dock-size: its value must be a whole number or a text";
    for (const char *bad : {"true", "null", "48.5", "1e300", "[48]", "{}", "1e17"})
        EXPECT_EQ(complaint(json(QByteArray("\"1004\": ") + bad)), notOfTheKind) << bad;
    for (const char16_t *bad :
         {u"<true/>", u"<real>48.5</real>", u"<array><integer>48</integer></array>", u"<dict/>",
          u"<data>QQ==</data>", u"<date>2020-01-01T00:00:00Z</date>"})
        EXPECT_EQ(complaint(propertyList(u"<key>1004</key>"_s + QString::fromUtf16(bad))),
                  notOfTheKind);
    EXPECT_EQ(complaint(json(R"("1400": 5)")), "screenshot-prefix: its value must be a text");
    EXPECT_EQ(complaint(json(R"("1004": 99999999999)")).substr(0, 14), "'99999999999' ");
}

TEST(ProfileReader, whatIsNotKnownIsRefused)
{
    EXPECT_EQ(complaint(json(R"("dock-sise": 48)")), "unknown setting 'dock-sise'");
    EXPECT_EQ(complaint(json(R"("": 48)")), "unknown setting ''");
    EXPECT_EQ(complaint(R"({"schemaVersion": 1, "settings": {}, "setings": {}})"),
              "unknown member 'setings'");
    EXPECT_EQ(complaint(R"({"settings": {}})"), "schemaVersion is missing");
    EXPECT_EQ(complaint(R"({"schemaVersion": 1})"), "settings is missing");
    EXPECT_EQ(complaint(R"({"schemaVersion": 1, "settings": []})"),
              "settings must be an object (a dictionary)");
    EXPECT_EQ(complaint(R"({"schemaVersion": 2, "settings": {}})"),
              "schemaVersion 2 is newer than this program, which knows 1");
    for (const char *bad : {"0", "-1", "\"1\"", "1.5", "true", "null", "{\"a\": 1}"})
        EXPECT_EQ(complaint(QByteArray("{\"schemaVersion\": ") + bad + ", \"settings\": {}}"),
                  "schemaVersion must be a whole number from 1 on")
            << bad;
}

TEST(ProfileReader, aSettingStandsInAProfileOnce)
{
    const char *const twice = "dock-size stands there twice";
    EXPECT_EQ(complaint(json(R"("1004": 48, "dock-size": 48)")), twice);
    EXPECT_EQ(complaint(json(R"("1004": 48, "1004": 64)")), twice);
    EXPECT_EQ(complaint(json(R"("dock-size" : 48, "dock\u002dsize"
                                : 48)")),
              twice);
    EXPECT_EQ(complaint(propertyList(u"<key>1004</key><integer>48</integer>"
                                     u"<key>1004</key><integer>64</integer>"_s)),
              twice);
    EXPECT_EQ(complaint(R"({"schemaVersion": 1, "settings": {"1004": 48}, "settings": {}})"),
              "'settings' stands there twice");
    EXPECT_EQ(complaint(xmlPlist(u"<key>settings</key><dict/><key>settings</key><dict/>"_s)),
              "'settings' stands there twice");
    EXPECT_EQ(complaint(json(R"("1400": "\"1400\": {[", "1403": "a\\")")), "none")
        << "what stands in a text is no member";
}

TEST(ProfileReader, settingsThatShareAKeyMustAgree)
{
    EXPECT_EQ(complaint(json(R"("1600": "yes", "1603": "disable")")),
              "song-previews and half-stars are stored under one key and cannot differ");
    EXPECT_EQ(complaint(json(R"("1600": "yes", "1603": -1)")),
              "song-previews and half-stars are stored under one key and cannot differ");
    EXPECT_EQ(values(json(R"("1603": "enable", "1600": "yes")")).size(), 2);
}

TEST(ProfileReader, whatIsNoProfileIsTold)
{
    const char *const neither = "neither a JSON object nor a valid property list with a dictionary";
    for (const char *bytes : {"", "[]", "null", "48", "bplist00", "<plist><array/></plist>", "PK",
                              "<!DOCTYPE a [<!ENTITY b \"c\">]><plist><dict/></plist>"})
        EXPECT_EQ(complaint(bytes), neither) << bytes;
    EXPECT_EQ(complaint("{\"schemaVersion\": 1,\n\n \"settings\": }").substr(0, 8), "line 3: ");
    EXPECT_EQ(complaint("{\"schemaVersion\": 1, \"settings\": {}} x").substr(0, 8), "line 1: ");
    EXPECT_EQ(complaint(json("\"1400\": \"\xff\"")).substr(0, 8), "line 1: ") << "not UTF-8";
    EXPECT_EQ(complaint(json("\"\xc0\x80\": 1")).substr(0, 8), "line 1: ");
}

TEST(ProfileReader, whatIsBuiltToOverwhelmIsRefused)
{
    const QByteArray deep(100000, '[');
    EXPECT_EQ(complaint("{\"a\":" + deep).substr(0, 8), "line 1: ");
    QByteArray nested;
    for (int level = 0; level < 6000; ++level)
        nested += "<dict><key>a</key>";
    EXPECT_EQ(complaint("<plist>" + nested + "<true/>" + QByteArray("</dict>").repeated(6000)
                        + "</plist>"),
              "unknown member 'a'");

    EXPECT_EQ(complaint(json("\"1400\": \"" + QByteArray(300000, 'x') + '"')),
              "larger than any profile, which has 262144 bytes at most");
    EXPECT_LT(complaint(json('"' + QByteArray(200000, 'x') + "\": 1")).size(), 100U);
    EXPECT_LT(complaint(json("\"1004\": \"" + QByteArray(200000, '7') + '"')).size(), 400U);
    EXPECT_EQ(complaint(json("\"1400\": \"" + QByteArray(200000, 'x') + '"')), "none");

    EXPECT_EQ(complaint(json(QByteArray("\"1004\":48,").repeated(20000).chopped(1))),
              "dock-size stands there twice");
    QString many;
    for (int number = 0; number < 5000; ++number)
        many += u"<key>k"_s + QString::number(number) + u"</key><true/>";
    EXPECT_EQ(complaint(propertyList(many)), "more than 200 members");
}

TEST(ProfileReader, manyKeysOfOneLongTextTakeNoMoreThanTheFile)
{
    BinaryBuilder builder;
    const auto key = builder.ascii(QByteArray(50000, 'k'));
    const auto value = builder.boolean(true);
    const auto root = builder.dictionary({60000, {key, value}});
    const QByteArray file = builder.build(root);
    ASSERT_LT(file.size(), Profile::largestFile);
    EXPECT_EQ(complaint(file), "more than 200 members");
}
