#pragma once

#include "plist/Object.h"
#include "plist/XmlEdit.h"
#include "plist/XmlStyle.h"

namespace varnel::plist {

/// One member, an entry of a dictionary or an element of an array, that a splice puts in or takes
/// out.
struct XmlMemberEdit {
    XmlSplice splice;
    std::size_t member = 0; ///< its number after the one, before the other
    bool adds = false;
};

/// An entry for a key that the dictionary does not have, its value's markup already in the file's
/// encoding. Invalid when XML can't hold the key.
[[nodiscard]] Result<XmlMemberEdit> insertionOfKey(const XmlDocument &document,
                                                   const XmlNode &dictionary, const QString &key,
                                                   const QByteArray &markup,
                                                   const std::optional<Place> &place);

/// An element before the one that has the index, or at the end.
[[nodiscard]] XmlMemberEdit insertionOfElement(const XmlDocument &document, const XmlNode &array,
                                               std::size_t index, const QByteArray &markup,
                                               const std::optional<Place> &place);

/// Takes out an element with the white space before it.
[[nodiscard]] std::optional<XmlMemberEdit>
removalOfElement(const XmlDocument &document, const XmlNode &array, std::size_t index);

/// What is written between a member and the one before it, or the start tag around both.
[[nodiscard]] std::optional<QString> textBeforeMember(const XmlDocument &document,
                                                      const XmlNode &container, std::size_t member);

} // namespace varnel::plist
