#include "plist/XmlComposer.h"
#include "Opened.h"
#include "Referees.h"

using namespace Qt::StringLiterals;
using namespace varnel;
using namespace varnel::plist;
using namespace varnel::test;

TEST(XmlComposer, WritesWhatOtherReadersRead)
{
    XmlComposer composer;
    composer.add(u"yes"_s, true);
    composer.add(u"<number>"_s, qint64(-5));
    composer.add(u"list"_s, QStringList {u"a & b"_s, u""_s});
    composer.beginArray(u"array"_s);
    composer.beginDictionary();
    composer.add(u"text"_s, u" \r\n é\U0001f4f7 "_s);
    composer.end();
    composer.end();
    composer.beginDictionary(u"empty"_s);
    composer.end();
    composer.add(u"since"_s, QDateTime::fromString(u"2001-01-01T01:01:00+01:00"_s, Qt::ISODate));
    const Result<QByteArray> bytes = composer.finish();
    ASSERT_TRUE(bytes);

    const QMap<QByteArray, QByteArray> expected {
        {"yes", "true"},
        {"<number>", "int -5"},
        {"list", "[string a & b,string ,]"},
        {"array", "[{text=string  \r\n \xc3\xa9\xf0\x9f\x93\xb7 ,},]"},
        {"empty", "{}"},
        {"since", "date 60 0"}};
    EXPECT_EQ(readByLibplist(bytes.value()), expected) << bytes.value().toStdString();
    EXPECT_EQ(opened(bytes.value()).value({u"<number>"_s}).integer, -5);
    EXPECT_TRUE(bytes.value().contains("\n\t<key>list</key>\n\t<array>\n\t\t<string>"));
}

TEST(XmlComposer, EndsWhatWasBegun)
{
    XmlComposer composer;
    composer.beginDictionary(u"a"_s);
    composer.beginArray(u"b"_s);
    const Result<QByteArray> bytes = composer.finish();
    ASSERT_TRUE(bytes);
    EXPECT_EQ(opened(bytes.value()).value({u"a"_s, u"b"_s}).kind, Kind::StringArray);
}

TEST(XmlComposer, RefusesWhatXmlCannotHold)
{
    XmlComposer inValue;
    inValue.add(u"a"_s, QString(QChar(1)));
    EXPECT_EQ(inValue.finish().error().code, ErrorCode::Invalid);
    XmlComposer inKey;
    inKey.beginDictionary(QString(QChar(0xd800)));
    EXPECT_EQ(inKey.finish().error().code, ErrorCode::Invalid);
}
