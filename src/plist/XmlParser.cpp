#include "plist/XmlParser.h"

#include "plist/ExpatLibrary.h"

#include <algorithm>

namespace varnel::plist {

namespace {

constexpr qsizetype smallestPiece = qsizetype {64} * 1024;
constexpr qsizetype largestPiece = qsizetype {256} * 1024 * 1024;

class Parser {
public:
    Parser(const ExpatLibrary &expat, const char *encoding, XmlListener &listener)
        : expat(expat), parser(expat.create(encoding), expat.destroy), listener(listener)
    {
        expat.setUserData(parser.get(), this);
        expat.setElementHandler(parser.get(), &Parser::onStart, &Parser::onEnd);
        expat.setEntityDeclHandler(parser.get(), &Parser::onEntityDeclaration);
        expat.setAttlistDeclHandler(parser.get(), &Parser::onAttributeDeclaration);
        expat.setSkippedEntityHandler(parser.get(), &Parser::onSkippedEntity);
        expat.setXmlDeclHandler(parser.get(), &Parser::onXmlDeclaration);
        updateTextHandler();
    }

    /// Where the bytes fed next stand in the file, so that offsets can be told.
    void setOrigin(qint64 fileOffset) { origin = fileOffset - fed; }

    bool feed(QByteArrayView bytes)
    {
        // The parser starts a token again when more of it arrives. The pieces grow while one token
        // does not end, so that a long one is not read over and over.
        qsizetype piece = smallestPiece;
        while (!bytes.isEmpty()) {
            const XML_Index before = expat.currentByteIndex(parser.get());
            const QByteArrayView next = bytes.first(std::min(piece, bytes.size()));
            if (!parse(next, false))
                return false;
            bytes = bytes.sliced(next.size());
            const bool stuck = expat.currentByteIndex(parser.get()) == before;
            piece = stuck ? std::min(2 * piece, largestPiece) : smallestPiece;
        }
        return true;
    }

    bool finish() { return parse({}, true); }

private:
    bool parse(QByteArrayView bytes, bool isLast)
    {
        fed += bytes.size();
        return expat.parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), isLast)
            == XML_STATUS_OK
            && !stopped;
    }

    static Parser &self(void *data) { return *static_cast<Parser *>(data); }

    void proceed(bool agreed)
    {
        if (agreed)
            updateTextHandler();
        else
            stop();
    }
    void stop()
    {
        // The parser may still deliver what it has begun, as the end of an empty-element tag.
        stopped = true;
        expat.stop(parser.get(), XML_FALSE);
    }
    void updateTextHandler()
    {
        expat.setCharacterDataHandler(parser.get(),
                                      listener.wantsText() ? &Parser::onText : nullptr);
    }
    [[nodiscard]] std::uint32_t start() const
    {
        return static_cast<std::uint32_t>(expat.currentByteIndex(parser.get()) + origin);
    }
    [[nodiscard]] std::uint32_t end() const
    {
        return start() + static_cast<std::uint32_t>(expat.currentByteCount(parser.get()));
    }

    static void onStart(void *data, const XML_Char *name, const XML_Char **)
    {
        Parser &it = self(data);
        if (it.stopped)
            return;
        const auto element = elementOf(name);
        it.proceed(element && it.listener.startElement(*element, it.start(), it.end()));
    }
    static void onEnd(void *data, const XML_Char *)
    {
        Parser &it = self(data);
        if (!it.stopped)
            it.proceed(it.listener.endElement(it.start(), it.end()));
    }
    static void onText(void *data, const XML_Char *text, int length)
    {
        Parser &it = self(data);
        if (!it.stopped && !it.listener.text(QByteArrayView(text, length)))
            it.stop();
    }
    static void onEntityDeclaration(void *data, const XML_Char *, int, const XML_Char *, int,
                                    const XML_Char *, const XML_Char *, const XML_Char *,
                                    const XML_Char *)
    {
        self(data).stop();
    }
    static void onAttributeDeclaration(void *data, const XML_Char *, const XML_Char *,
                                       const XML_Char *, const XML_Char *, int)
    {
        // Each element would have to be given every attribute that was declared.
        self(data).stop();
    }
    static void onSkippedEntity(void *data, const XML_Char *, int) { self(data).stop(); }
    static void onXmlDeclaration(void *data, const XML_Char *, const XML_Char *encoding, int)
    {
        if (encoding)
            self(data).listener.encodingDeclared(encoding);
    }

    const ExpatLibrary &expat;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser;
    XmlListener &listener;
    qint64 fed = 0;
    qint64 origin = 0;
    bool stopped = false;
};

} // namespace

bool parseXml(QByteArrayView file, XmlListener &listener)
{
    const ExpatLibrary *expat = ExpatLibrary::get();
    if (expat == nullptr)
        return false;
    Parser parser(*expat, nullptr, listener);
    return parser.feed(file) && parser.finish();
}

bool parseXml(QByteArrayView file, const XmlPart &part, XmlEncoding encoding, XmlListener &listener)
{
    const ExpatLibrary *expat = ExpatLibrary::get();
    if (expat == nullptr)
        return false;
    const auto around = [&](const char *text) {
        return encoding.encode(QString::fromLatin1(text));
    };
    Parser parser(*expat, encoding.parserName(), listener);
    if (!parser.feed(around(part.before)))
        return false;
    parser.setOrigin(part.start);
    return parser.feed(file.sliced(part.start, part.end - part.start))
        && parser.feed(around(part.behind)) && parser.finish();
}

} // namespace varnel::plist
