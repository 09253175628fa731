#include "cli/Varnelctl.h"

#include <QJsonArray>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace varnel::test;
using namespace testing;

namespace {

struct Edit {
    const char *test;
    const char16_t *argument; ///< of set
    const char16_t *file;
    const char *changes; ///< as the independent reader tells them
};

void PrintTo(const Edit &edit, std::ostream *out)
{
    *out << edit.test;
}

// Old value first, then the new one; null where there is none.
const Edit edits[] {
    {"integer", u"1004=64", u"com.apple.dock.plist",
     R"({"tilesize": [{"type": "int", "value": 48}, {"type": "int", "value": 64}]})"},
    {"string", u"1008=Scale effect", u"com.apple.dock.plist",
     R"({"mineffect": [{"type": "str", "value": "genie"}, {"type": "str", "value": "scale"}]})"},
    {"boolean", u"1009=yes", u"com.apple.dock.plist",
     R"({"autohide": [{"type": "bool", "value": false}, {"type": "bool", "value": true}]})"},
    {"newKey", u"1010=use 2D Dock", u"com.apple.dock.plist",
     R"({"no-glass": [null, {"type": "bool", "value": true}]})"},
    {"removal", u"1005=default", u"com.apple.dock.plist",
     R"({"orientation": [{"type": "str", "value": "bottom"}, null]})"},
    {"amongReals", u"1100=yes", u"com.apple.finder.plist",
     R"({"QuitMenuItem": [{"type": "bool", "value": false}, {"type": "bool", "value": true}]})"},
    {"nested", u"1204=yes", u"com.apple.Safari.plist",
     R"({"NSToolbar Configuration BrowserWindowToolbarIdentifier/TB Display Mode": [{"type": "int", "value": 2}, {"type": "int", "value": 0}]})"},
    {"nestedRemoval", u"1204=default", u"com.apple.Safari.plist",
     R"({"NSToolbar Configuration BrowserWindowToolbarIdentifier/TB Display Mode": [{"type": "int", "value": 2}, null]})"},
    {"array", u"1200=0;0;0;1", u"com.apple.Safari.plist",
     R"({"ProxiesInBookmarksBar": [{"type": "list", "value": ["Reading List", "Top Sites"]}, {"type": "list", "value": ["Bonjour"]}]})"},
    {"integerNotBoolean", u"1202=no", u"com.apple.Safari.plist",
     R"({"IncludeDevelopMenu": [{"type": "int", "value": 1}, {"type": "int", "value": 0}]})"},
    {"twoKeys", u"1201=yes", u"com.apple.Safari.plist",
     R"({"IncludeDebugMenu": [null, {"type": "int", "value": 1}], "IncludeInternalDebugMenu": [{"type": "int", "value": 0}, {"type": "int", "value": 1}]})"},
    {"global", u"1300=when scrolling", u".GlobalPreferences.plist",
     R"({"AppleShowScrollBars": [{"type": "str", "value": "Always"}, {"type": "str", "value": "WhenScrolling"}]})"},
};

class EditTest : public TestWithParam<std::tuple<Edit, std::string>> { };

TEST_P(EditTest, anIndependentReaderSeesNothingElseChanged)
{
    if (QStandardPaths::findExecutable(u"python3"_s).isEmpty())
        GTEST_SKIP() << "no python3";
    const Edit &edit = std::get<0>(GetParam());
    const QString format = QString::fromStdString(std::get<1>(GetParam()));
    const QString name = QString::fromUtf16(edit.file);
    TemporaryHome home;
    installSamples(home, format);
    const Varnelctl varnelctl(home);

    const Outcome outcome = varnelctl.run({u"set"_s, QString::fromUtf16(edit.argument)});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();

    const QString sample = QStringLiteral(TEST_DATA) + u"/preferences/" + format + u'/';
    for (const char16_t *each : {u".GlobalPreferences.plist", u"com.apple.dock.plist",
                                 u"com.apple.finder.plist", u"com.apple.Safari.plist"}) {
        const QString file = QString::fromUtf16(each);
        if (file == name)
            continue;
        EXPECT_EQ(fileBytes(home.preference(file)), fileBytes(sample + file));
    }
    const Outcome changes = runProgram(
        u"python3"_s,
        {QStringLiteral(CLI_TESTS) + u"/plist_changes.py", sample + name, home.preference(name)},
        varnelctl.environment);
    EXPECT_EQ(changes.err.toStdString(), "");
    EXPECT_EQ(changes.out.trimmed().toStdString(), edit.changes);
    EXPECT_EQ(fileBytes(home.preference(name)).startsWith("bplist00"), format == u"binary")
        << "the format is kept";
}

INSTANTIATE_TEST_SUITE_P(Samples, EditTest, Combine(ValuesIn(edits), Values("binary", "xml")),
                         [](const auto &values) {
                             return std::get<0>(values.param).test
                                 + ("In" + std::get<1>(values.param));
                         });

TEST(XmlEditTest, everyByteButTheValuesStays)
{
    TemporaryHome home;
    installSample(home, u"xml"_s, u"com.apple.dock.plist"_s);
    const QString file = home.preference(u"com.apple.dock.plist"_s);
    QByteArray wanted = fileBytes(file);
    ASSERT_EQ(wanted.count("<integer>48</integer>"), 1);
    wanted.replace("<integer>48</integer>", "<integer>64</integer>");
    EXPECT_EQ(Varnelctl(home).run({u"set"_s, u"1004=64"_s}).status, 0);
    EXPECT_EQ(fileBytes(file).toStdString(), wanted.toStdString());
}

TEST(UndoEditTest, settingTheOldValueAgainGivesTheSameDocument)
{
    if (QStandardPaths::findExecutable(u"python3"_s).isEmpty())
        GTEST_SKIP() << "no python3";
    for (const char16_t *format : {u"binary", u"xml"}) {
        TemporaryHome home;
        installSamples(home, QString::fromUtf16(format));
        const Varnelctl varnelctl(home);
        for (const char16_t *value : {u"1204=yes", u"1204=no", u"1200=-1", u"1200=1;1;0;0"})
            EXPECT_EQ(varnelctl.run({u"set"_s, QString::fromUtf16(value)}).status, 0);
        const Outcome changes =
            runProgram(u"python3"_s,
                       {QStringLiteral(CLI_TESTS) + u"/plist_changes.py",
                        QStringLiteral(TEST_DATA) + u"/preferences/" + QString::fromUtf16(format)
                            + u"/com.apple.Safari.plist",
                        home.preference(u"com.apple.Safari.plist"_s)},
                       varnelctl.environment);
        EXPECT_EQ(changes.out.trimmed().toStdString(), "{}");
    }
}

} // namespace
