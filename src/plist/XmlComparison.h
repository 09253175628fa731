#pragma once

#include "plist/XmlInsertion.h"

namespace varnel::plist {

/// What an edit wants to stand somewhere: a value in whatever words, or just these bytes.
class XmlWanted {
public:
    explicit XmlWanted(const NewValue &value) : value(&value) { }
    explicit XmlWanted(const QByteArray &markup) : markup(&markup) { }

    [[nodiscard]] bool isSaidBy(QByteArrayView file, const XmlNode &node,
                                const Decoded &decoded) const;

private:
    const NewValue *value = nullptr;
    const QByteArray *markup = nullptr;
};

/// Whether an edited document says what was asked and nothing else: the path's last key has its new
/// value (or is gone: null) wherever it stood, and every other entry of the dictionaries on the way
/// has the same bytes. Linear in the size of the files.
[[nodiscard]] bool differsOnlyBy(const QStringList &path, const XmlWanted *wanted,
                                 const XmlDocument &before, const XmlLocation &place,
                                 const XmlDocument &after);

/// Whether every byte but the splice's is the same.
[[nodiscard]] bool othersAreSame(QByteArrayView before, QByteArrayView after,
                                 const XmlSplice &splice);

/// Whether one member was put into, or taken out of, the dictionary at a location, or the array
/// under its key, and nothing else has changed: all other members of the containers on the way
/// start where they did, or as far behind that as the file has grown, and every byte outside of the
/// splice is the same. What is new has the path's last key, in a dictionary, and is just the
/// markup.
[[nodiscard]] bool differsOnlyByMember(const XmlMemberEdit &edit, bool inArray,
                                       const QStringList &path, const QByteArray &markup,
                                       const XmlDocument &before, const XmlLocation &place,
                                       const XmlDocument &after);

} // namespace varnel::plist
