#include "plist/ObjectFold.h"

#include "plist/BinaryFragment.h"
#include "plist/XmlParser.h"
#include "plist/XmlPlainParser.h"

#include <string>

namespace varnel::plist {

namespace {

class BinaryFold {
public:
    BinaryFold(const BinaryReader &reader, ObjectSink &sink)
        : reader(reader), sink(sink), numbers(reader.trailer().objectCount, none)
    {
    }

    std::uint32_t run()
    {
        open.push_back({0, 0});
        while (!open.empty()) {
            Frame &frame = open.back();
            const BinaryObject object = reader.object(frame.index);
            while (frame.next < object.referenceCount()
                   && numbers[reader.child(object, frame.next)] != none)
                ++frame.next;
            if (frame.next < object.referenceCount()) {
                open.push_back({reader.child(object, frame.next), 0});
                continue;
            }
            numbers[frame.index] = close(object);
            open.pop_back();
        }
        return numbers[0];
    }

private:
    static constexpr std::uint32_t none = 0xffffffff;

    struct Frame {
        std::uint32_t index = 0;
        std::uint32_t next = 0; ///< the reference that is looked at next
    };

    std::uint32_t close(const BinaryObject &object)
    {
        if (!object.isContainer())
            return sink.scalar(scalarOf(reader, object));
        std::vector<std::uint32_t> members;
        members.reserve(object.referenceCount());
        for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
            members.push_back(numbers[reader.child(object, n)]);
        return sink.container(typeOf(object.type()), members);
    }

    const BinaryReader &reader;
    ObjectSink &sink;
    std::vector<std::uint32_t> numbers;
    std::vector<Frame> open;
};

class XmlFold : public XmlListener {
public:
    explicit XmlFold(ObjectSink &sink) : sink(sink) { }

    [[nodiscard]] std::uint32_t result() const { return last; }

    bool startElement(XmlElement element, std::uint32_t, std::uint32_t) override
    {
        if (!grammar.open(element))
            return false;
        collected.clear();
        if (isContainer(element))
            open.emplace_back();
        return true;
    }

    bool endElement(std::uint32_t, std::uint32_t) override
    {
        const XmlElement element = grammar.innermost();
        if (isContainer(element)) {
            closeContainer(element);
        } else {
            const Scalar scalar = scalarOf(element, asView());
            if (element == XmlElement::Key)
                addKey(scalar);
            else
                add(sink.scalar(scalar), scalar);
        }
        return grammar.close();
    }

    bool text(QByteArrayView piece) override
    {
        collected.append(piece.data(), static_cast<std::size_t>(piece.size()));
        return true;
    }

    [[nodiscard]] bool wantsText() const override
    {
        return grammar.depth() != 0 && grammar.takesText();
    }

    void encodingDeclared(QByteArrayView) override { }

private:
    struct Frame {
        std::vector<std::uint32_t> keys;
        std::vector<std::uint32_t> values;
        bool isUidKey = false; ///< the last key
        std::optional<WideInteger> uid; ///< what the dictionary is if nothing else stands in it
    };

    static bool isContainer(XmlElement element)
    {
        return element == XmlElement::Dict || element == XmlElement::Array;
    }

    [[nodiscard]] QByteArrayView asView() const
    {
        return {collected.data(), static_cast<qsizetype>(collected.size())};
    }

    void addKey(const Scalar &key)
    {
        open.back().keys.push_back(sink.scalar(key));
        open.back().isUidKey = key.string == u"CF$UID";
    }

    void add(std::uint32_t number, const Scalar &scalar)
    {
        last = number;
        if (open.empty())
            return;
        Frame &frame = open.back();
        frame.values.push_back(number);
        frame.uid.reset();
        if (frame.isUidKey && scalar.type == ObjectType::Integer && scalar.unclear.isNull()
            && scalar.integer.fitsUnsigned() && scalar.integer.low <= 0xffffffff)
            frame.uid = scalar.integer;
    }

    void closeContainer(XmlElement element)
    {
        Frame frame = std::move(open.back());
        open.pop_back();
        if (element == XmlElement::Array) {
            add(sink.container(ObjectType::Array, frame.values), {});
        } else if (frame.values.size() == 1 && frame.uid) {
            Scalar uid;
            uid.type = ObjectType::Uid;
            uid.integer = *frame.uid;
            add(sink.scalar(uid), {});
        } else {
            frame.keys.insert(frame.keys.end(), frame.values.begin(), frame.values.end());
            add(sink.container(ObjectType::Dictionary, frame.keys), {});
        }
    }

    ObjectSink &sink;
    XmlGrammar grammar;
    std::string collected;
    std::vector<Frame> open;
    std::uint32_t last = 0;
};

/// Says whether the plain parser takes a text, so that the sink need not hear twice of what it
/// leaves in the middle.
class Trial : public XmlListener {
public:
    bool startElement(XmlElement, std::uint32_t, std::uint32_t) override { return true; }
    bool endElement(std::uint32_t, std::uint32_t) override { return true; }
    bool text(QByteArrayView) override { return true; }
    [[nodiscard]] bool wantsText() const override { return false; }
    void encodingDeclared(QByteArrayView) override { }
};

} // namespace

ObjectType typeOf(BinaryType container)
{
    switch (container) {
    case BinaryType::Dictionary:
        return ObjectType::Dictionary;
    case BinaryType::Set:
        return ObjectType::Set;
    case BinaryType::OrderedSet:
        return ObjectType::OrderedSet;
    default:
        return ObjectType::Array;
    }
}

std::uint32_t fold(const Object &object, ObjectSink &sink)
{
    if (object.format() == Format::Binary)
        return BinaryFold(readerOf(object.toBytes()), sink).run();
    XmlFold reading(sink);
    Trial trial;
    // What was read once can be read again.
    if (parsePlainXml(object.toBytes(), trial))
        static_cast<void>(parsePlainXml(object.toBytes(), reading));
    else
        static_cast<void>(parseXml(object.toBytes(), reading));
    return reading.result();
}

} // namespace varnel::plist
