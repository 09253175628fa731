#include "plist/ObjectConversion.h"

#include "plist/BinaryAssembly.h"
#include "plist/BinaryEncoding.h"
#include "plist/BinaryFragment.h"
#include "plist/Errors.h"
#include "plist/ObjectComparison.h"
#include "plist/XmlEncoding.h"

namespace varnel::plist {

namespace {

/// Characters. More than programs keep under one key, and little enough to be held in memory.
constexpr qsizetype longestMarkup = qsizetype {16} * 1024 * 1024;

/// As writers do, it writes scalars that say the same once.
class BinarySink : public ObjectSink {
public:
    std::uint32_t scalar(const Scalar &scalar) override
    {
        const auto bytes = binaryOf(scalar);
        if (!bytes) {
            sound = false;
            return 0;
        }
        const auto known = scalars.constFind(*bytes);
        if (known != scalars.constEnd())
            return *known;
        return *scalars.insert(*bytes, assembly.addScalar(*bytes));
    }

    std::uint32_t container(ObjectType type, const std::vector<std::uint32_t> &members) override
    {
        const bool isDictionary = type == ObjectType::Dictionary;
        return assembly.addContainer(
            encodeHeader(isDictionary ? BinaryType::Dictionary : BinaryType::Array,
                         members.size() / (isDictionary ? 2 : 1)),
            members);
    }

    /// Empty where the list can't hold what was told.
    [[nodiscard]] QByteArray fragment(std::uint32_t root) const
    {
        const QByteArray list = sound ? assembly.finish(root) : QByteArray();
        return list.isEmpty() ? list : fragmentOf(readerOf(list), root);
    }

private:
    BinaryAssembly assembly;
    QHash<QByteArray, std::uint32_t> scalars;
    bool sound = true;
};

/// Writes the objects of a fragment as markup, from the root down.
class MarkupWriter {
public:
    MarkupWriter(const BinaryReader &reader, const QString &line, const QString &indentation)
        : reader(reader), line(line), indentation(indentation)
    {
    }

    /// Nothing where XML can't hold it.
    std::optional<QString> run()
    {
        if (!begin(0))
            return {};
        while (!open.empty()) {
            Frame &frame = open.back();
            if (frame.next == frame.object.count) {
                const bool isDictionary = frame.object.isDictionary();
                open.pop_back();
                text += lineBreak()
                    + (isDictionary ? QStringView(u"</dict>") : QStringView(u"</array>"));
                continue;
            }
            const std::uint32_t n = frame.next++;
            const BinaryObject object = frame.object;
            const bool isDictionary = object.isDictionary();
            text += lineBreak();
            if (isDictionary && !addKey(reader.child(object, n)))
                return {};
            if (!begin(reader.child(object, isDictionary ? object.count + n : n))
                || text.size() > longestMarkup)
                return {};
        }
        return text;
    }

private:
    struct Frame {
        BinaryObject object;
        std::uint32_t next = 0; ///< the member that is written next
    };

    [[nodiscard]] QString lineBreak() const
    {
        if (line.isEmpty())
            return line;
        return line + indentation.repeated(static_cast<qsizetype>(open.size()));
    }

    bool addKey(std::uint32_t index)
    {
        const auto key = escapeXml(scalarOf(reader, reader.object(index)).string);
        if (!key)
            return false;
        text += u"<key>" + *key + u"</key>" + lineBreak();
        return true;
    }

    /// Writes a scalar, or the start of a container.
    bool begin(std::uint32_t index)
    {
        const BinaryObject object = reader.object(index);
        if (!object.isContainer()) {
            const auto markup = xmlOf(scalarOf(reader, object), lineBreak());
            text += markup.value_or(QString());
            return markup.has_value();
        }
        const bool isDictionary = object.isDictionary();
        if (!isDictionary && object.type() != BinaryType::Array)
            return false;
        if (object.count == 0) {
            text += isDictionary ? QStringView(u"<dict/>") : QStringView(u"<array/>");
            return true;
        }
        text += isDictionary ? QStringView(u"<dict>") : QStringView(u"<array>");
        open.push_back({object, 0});
        return true;
    }

    const BinaryReader &reader;
    const QString &line;
    const QString &indentation;
    QString text;
    std::vector<Frame> open;
};

} // namespace

Result<Object> asBinary(const Object &object)
{
    if (object.format() == Format::Binary)
        return object;
    BinarySink sink;
    const std::uint32_t root = fold(object, sink);
    const QByteArray fragment = sink.fragment(root);
    if (fragment.isEmpty())
        return notInFormat();
    Object converted = objectOfFragment(fragment);
    if (!sayTheSameInOrder(object, converted))
        return notInFormat();
    return converted;
}

Result<Object> asXml(const Object &object, const QString &line, const QString &indentation)
{
    const Result<Object> binary = asBinary(object);
    if (!binary)
        return binary.error();
    const BinaryReader reader = readerOf(binary.value().toBytes());
    const auto markup = MarkupWriter(reader, line, indentation).run();
    if (!markup)
        return notInFormat();
    // What looks like another type in XML is not what was asked for.
    Object converted = objectOfFragment(markup->toUtf8());
    if (!sayTheSameInOrder(object, converted))
        return notInFormat();
    return converted;
}

} // namespace varnel::plist
