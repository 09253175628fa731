#include "harness/Objects.h"

#include <QCryptographicHash>
#include <QXmlStreamReader>

#include <vector>

namespace varnel::fuzz {

namespace {

/// What stands beneath one key, told as a digest while it is read.
class Subtree {
public:
    void start(const QString &name) { add("<", name); }
    void end() { hash.addData(">"); }
    void text(const QString &text) { add("=", text); }
    [[nodiscard]] QByteArray taken()
    {
        const QByteArray digest = hash.result();
        hash.reset();
        return digest;
    }

private:
    void add(const char *what, const QString &text)
    {
        hash.addData(what);
        hash.addData(text.toUtf8());
    }

    QCryptographicHash hash {QCryptographicHash::Sha1};
};

bool isLeaf(QStringView name)
{
    return name != u"dict" && name != u"array" && name != u"plist";
}

} // namespace

std::optional<QList<RootEntry>> xmlObjects(const QByteArray &file)
{
    QXmlStreamReader xml(file);
    QList<RootEntry> entries;
    Subtree subtree;
    QString key;
    int depth = 0; // of dictionaries and arrays around
    QString leaf;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (isLeaf(xml.name()))
                leaf = QStringLiteral("");
            else if (xml.name() != u"plist" && ++depth > 1)
                subtree.start(xml.name().toString());
            break;
        case QXmlStreamReader::Characters:
            if (!leaf.isNull())
                leaf += xml.text();
            break;
        case QXmlStreamReader::EndElement:
            if (xml.name() == u"plist")
                break;
            if (isLeaf(xml.name())) {
                if (depth == 1 && xml.name() == u"key") {
                    key = leaf;
                    leaf = QString();
                    break;
                }
                subtree.start(xml.name().toString());
                subtree.text(leaf);
                subtree.end();
                leaf = QString();
            } else {
                if (--depth == 0)
                    break;
                subtree.end();
            }
            if (depth == 1)
                entries.append({key, subtree.taken()});
            break;
        default:
            break;
        }
    }
    if (xml.hasError())
        return std::nullopt;
    return entries;
}

std::optional<QList<RootEntry>> objectsOf(const QByteArray &file)
{
    if (file.startsWith("bplist"))
        return binaryObjects(file);
    return xmlObjects(file);
}

} // namespace varnel::fuzz
