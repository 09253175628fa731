#include "plist/XmlGrammar.h"

namespace varnel::plist {

std::optional<XmlElement> elementOf(QByteArrayView name)
{
    struct Named {
        QByteArrayView name;
        XmlElement element;
    };
    // The most frequent first.
    static constexpr Named names[] = {
        {"key", XmlElement::Key},         {"string", XmlElement::String},
        {"integer", XmlElement::Integer}, {"dict", XmlElement::Dict},
        {"true", XmlElement::True},       {"false", XmlElement::False},
        {"real", XmlElement::Real},       {"array", XmlElement::Array},
        {"data", XmlElement::Data},       {"date", XmlElement::Date},
        {"plist", XmlElement::Plist},
    };
    for (const Named &named : names) {
        if (named.name == name)
            return named.element;
    }
    return {};
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
