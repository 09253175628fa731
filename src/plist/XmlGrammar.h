#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <vector>

namespace varnel::plist {

enum class XmlElement : std::uint8_t {
    Plist,
    Dict,
    Array,
    Key,
    String,
    Integer,
    Real,
    Date,
    Data,
    True,
    False
};

[[nodiscard]] QByteArrayView nameOf(XmlElement element);

/// Nothing for a name that no property list has.
[[nodiscard]] std::optional<XmlElement> elementOf(QByteArrayView name);

/// Follows the elements of a property list and says which may stand where: one value in all, with
/// or without a <plist> around it; keys and values in turn; nothing inside what is no container.
class XmlGrammar {
public:
    bool open(XmlElement element);
    bool close();

    /// Elements that are open.
    [[nodiscard]] std::size_t depth() const { return frames.size(); }
    /// The innermost open element.
    [[nodiscard]] XmlElement innermost() const { return frames.back().element; }
    /// Whether text other than white space may stand here.
    [[nodiscard]] bool takesText() const;

private:
    struct Frame {
        XmlElement element {};
        /// Dict: a key waits for its value. Plist: its value is there.
        bool flag = false;
    };

    std::vector<Frame> frames;
};

} // namespace varnel::plist
