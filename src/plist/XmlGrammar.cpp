#include "plist/XmlGrammar.h"

namespace varnel::plist {

QByteArrayView nameOf(XmlElement element)
{
    // In the order of the elements.
    static constexpr QByteArrayView names[] = {"plist",  "dict",    "array", "key",
                                               "string", "integer", "real",  "date",
                                               "data",   "true",    "false"};
    return names[static_cast<std::size_t>(element)];
}

std::optional<XmlElement> elementOf(QByteArrayView name)
{
    // The first letters leave two to choose from at most.
    const auto either = [name](XmlElement one, XmlElement other) -> std::optional<XmlElement> {
        if (name == nameOf(one))
            return one;
        if (name == nameOf(other))
            return other;
        return {};
    };
    if (name.size() < 3)
        return {};
    switch (name.front()) {
    case 'k':
        return either(XmlElement::Key, XmlElement::Key);
    case 's':
        return either(XmlElement::String, XmlElement::String);
    case 'i':
        return either(XmlElement::Integer, XmlElement::Integer);
    case 'd':
        if (name[1] == 'i')
            return either(XmlElement::Dict, XmlElement::Dict);
        return either(XmlElement::Data, XmlElement::Date);
    case 'a':
        return either(XmlElement::Array, XmlElement::Array);
    case 't':
        return either(XmlElement::True, XmlElement::True);
    case 'f':
        return either(XmlElement::False, XmlElement::False);
    case 'r':
        return either(XmlElement::Real, XmlElement::Real);
    case 'p':
        return either(XmlElement::Plist, XmlElement::Plist);
    default:
        return {};
    }
}

bool XmlGrammar::open(XmlElement element)
{
    if (frames.empty()) {
        if (element == XmlElement::Key)
            return false;
    } else {
        Frame &parent = frames.back();
        switch (parent.element) {
        case XmlElement::Plist:
            if (parent.flag || element == XmlElement::Key || element == XmlElement::Plist)
                return false;
            parent.flag = true;
            break;
        case XmlElement::Dict:
            if (element == XmlElement::Plist || (element == XmlElement::Key) == parent.flag)
                return false;
            parent.flag = !parent.flag;
            break;
        case XmlElement::Array:
            if (element == XmlElement::Plist || element == XmlElement::Key)
                return false;
            break;
        default:
            return false;
        }
    }
    frames.push_back({element});
    return true;
}

bool XmlGrammar::close()
{
    const Frame frame = frames.back();
    frames.pop_back();
    if (frame.element == XmlElement::Dict)
        return !frame.flag;
    return frame.element != XmlElement::Plist || frame.flag;
}

bool XmlGrammar::takesText() const
{
    switch (frames.back().element) {
    case XmlElement::Plist:
    case XmlElement::Dict:
    case XmlElement::Array:
    case XmlElement::True:
    case XmlElement::False:
        return false;
    default:
        return true;
    }
}

} // namespace varnel::plist
