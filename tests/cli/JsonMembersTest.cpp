#include "cli/JsonMembers.h"
#include "cli/HomeWorker.h"
#include "cli/ManyHomes.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <limits>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace varnel::cli;

namespace {

QJsonObject everyKind()
{
    QString controls = u"\"quoted\" back\\slash / \u007f\u009b\u202eBüro \U0001F58B"_s;
    for (char16_t control = 0; control < u' '; ++control)
        controls += QChar(control);
    QJsonValue deep = 1;
    for (int i = 0; i < 100; ++i)
        deep = i % 2 == 0 ? QJsonValue(QJsonArray {deep}) : QJsonObject {{u"k"_s, deep}};
    return {{u"array"_s, QJsonArray {1, u"two"_s, QJsonValue::Null, true, false, QJsonArray()}},
            {u"deep"_s, deep},
            {u"empty"_s, QJsonObject()},
            {u"fraction"_s, QJsonArray {0.5, -1e300, 1e15, -0.0, 1e21}},
            {u"large"_s, QJsonArray {qint64(1) << 53, std::numeric_limits<qint64>::max()}},
            {u"letters"_s, controls},
            {u"negative"_s, QJsonArray {-1, 0, qint64(999'999'999'999'999)}},
            {u"none"_s, QJsonArray()},
            {u"object"_s, QJsonObject {{u"b"_s, 1}, {u"a"_s, QJsonObject {{u"c"_s, 2}}}}},
            {u"plain"_s, u"line\nfeed\ttab\r\b\f \"quoted\" back\\slash"_s},
            {controls, 1},
            {QString(), 2}};
}

/// As a list of homes with this one alone has it, by way of the whole document.
QByteArray elementByQt(const QJsonObject &object)
{
    const QJsonDocument document(QJsonObject {{u"homes"_s, QJsonArray {object}}});
    QByteArray text = document.toJson(QJsonDocument::Indented);
    const QByteArray before = "{\n    \"homes\": [\n";
    const QByteArray after = "\n    ]\n}\n";
    return text.sliced(before.size(), text.size() - before.size() - after.size());
}

/// The document of one home, of whose worker `say` writes the lines.
QByteArray documentSaidBy(const QByteArray &lines)
{
    const auto work = [&] {
        constexpr int answers = STDERR_FILENO + 1;
        const ssize_t written = ::write(answers, lines.constData(), size_t(lines.size()));
        HomeOutcome outcome;
        outcome.status = written == lines.size() ? ExitStatus::Done : ExitStatus::Failed;
        return outcome;
    };
    HomeWorker worker(work, false, true, Style());
    Console console;
    ManyHomes homes(true, console);
    homes.run(
        {u"/nowhere/anna"_s}, [&](const QString &) { return [&] { return worker.outcome(); }; }, 0);
    return homes.document({});
}

QJsonObject onlyHome(const QByteArray &document)
{
    const QJsonObject object = QJsonDocument::fromJson(document).object();
    const QJsonArray homes = object.value(u"homes"_s).toArray();
    EXPECT_EQ(homes.size(), 1) << document.toStdString();
    EXPECT_EQ(object.keys(), (QStringList {u"homes"_s, u"schemaVersion"_s}));
    return homes.first().toObject();
}

TEST(JsonMembersTest, membersStandAsTheDocumentWouldHaveThem)
{
    QJsonObject ascii = everyKind();
    ascii.remove(u"letters"_s);
    for (const QString &key : ascii.keys())
        if (key.contains(QChar(0x202e)))
            ascii.remove(key);
    EXPECT_EQ(elementOfHomes(jsonMembers(ascii)), elementByQt(ascii));
}

TEST(JsonMembersTest, aToldMemberStandsAsThatOfThisProcess)
{
    const QJsonObject object = everyKind();
    JsonMembers heard;
    for (auto member = object.begin(); member != object.end(); ++member) {
        const QByteArray line = toldMember(member.key(), member.value());
        EXPECT_TRUE(line.startsWith('"'));
        EXPECT_FALSE(line.contains('\n'));
        heard.insert(heardMembers(line));
    }
    EXPECT_EQ(heard, jsonMembers(object));
}

TEST(JsonMembersTest, whatQtWouldNotHaveWrittenStandsAsWhatItReads)
{
    for (const char *line : {R"("a":{"c":1,"b":2})",
                             R"("a":{"b":1,"b":2})",
                             R"("a" : [ 1 , 2 ])",
                             R"("a":1,"b":2)",
                             R"("a":"\u0041\/")",
                             R"("a":1.0)",
                             R"("a":1e2)",
                             R"("a":-0)",
                             R"("\u0061":1)",
                             R"("a":12345678901234567890)",
                             "\"a\":\"B\xc3\xbcro\"",
                             "\"a\":\"\xe2\x80\xae\"",
                             R"("b":1,"a":2,"b":3)",
                             R"("a":{"":1})",
                             R"("a":{"":1,"":2})",
                             R"("":{})",
                             R"("a":"\x")",
                             "\"a\":\"\x01\"",
                             "\"a\":\"\x1b[2J\"",
                             "\"a\":\"\x7f\""}) {
        const QJsonDocument read = QJsonDocument::fromJson('{' + QByteArray(line) + '}');
        EXPECT_FALSE(read.object().isEmpty()) << line;
        EXPECT_EQ(heardMembers(line), jsonMembers(read.object())) << line;
    }
}

TEST(JsonMembersTest, whatIsNoMemberIsNotTaken)
{
    for (const char *line : {"\"",
                             "\"a",
                             "\"a\"",
                             "\"a\":",
                             "\"a\":}",
                             "\"a\":[",
                             "\"a\":[1",
                             "\"a\":[1,",
                             "\"a\":[1,]",
                             "\"a\":]",
                             "\"a\":[}",
                             "\"a\":{]",
                             "\"a\":{\"b\"}",
                             "\"a\":{\"b\":}",
                             "\"a\":{1:2}",
                             "\"a\":{\"b\":1,}",
                             "\"a\":[1 2]",
                             "\"a\":[1]]",
                             "\"a\":1}",
                             "\"a\":[1]}],\"b\":[{",
                             "\"a\":tru",
                             "\"a\":nul",
                             "\"a\":truefalse",
                             "\"a\":-",
                             "\"a\":01",
                             "\"a\":1-",
                             "\"a\":\"\\",
                             "\"a\":\"\\\"",
                             "\"a\":\"\xff\"",
                             "\"a\":\"\xc3\"",
                             "\"a\":'b'",
                             "\"a\":1,",
                             "\"a\":1 //",
                             "\"a\":NaN"})
        EXPECT_TRUE(heardMembers(line).isEmpty()) << line;
    EXPECT_TRUE(heardMembers("\"a\":" + QByteArray(100'000, '[')).isEmpty());
    EXPECT_TRUE(heardMembers(QByteArray("\"a\":[\0]", 7)).isEmpty());
}

TEST(JsonMembersTest, aWorkerGivesNoOtherHomeNameOrStatus)
{
    const QJsonObject home = onlyHome(documentSaidBy(
        "\"home\":\"/root\"\n\"status\":0.5\n\"note\":\"\xe2\x80\xae\"\n\"note2\":[1]\n"));
    EXPECT_EQ(home.value(u"home"_s), u"/nowhere/anna"_s);
    EXPECT_EQ(home.value(u"status"_s), int(ExitStatus::Done));
    EXPECT_EQ(home.value(u"note2"_s), QJsonArray {1});
}

TEST(JsonMembersTest, aWorkerDoesNotLeaveItsHomesObject)
{
    const QByteArray document = documentSaidBy(
        "\"a\":1},{\"home\":\"/root\"\n\"b\":[]}]}\n\"c\":2\n\"d\":\"\xe2\x80\xae\"\n");
    const QJsonObject home = onlyHome(document);
    EXPECT_EQ(home.keys(), (QStringList {u"c"_s, u"d"_s, u"home"_s, u"status"_s}));
    EXPECT_TRUE(document.contains("\"d\": \"\\u202e\"")) << document.toStdString();
}

} // namespace
