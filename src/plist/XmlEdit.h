#pragma once

#include "base/Result.h"
#include "plist/XmlLocation.h"

namespace varnel::plist {

/// Bytes to be put in the place of others.
struct XmlSplice {
    std::uint32_t start = 0;
    std::uint32_t end = 0;
    QByteArray bytes;
};

/// Puts a member, in the file's encoding, into a container at an offset of its content. Where it
/// would be all of the content, `beforeEnd` comes between it and the end tag.
[[nodiscard]] XmlSplice insertion(const XmlDocument &document, const XmlNode &container,
                                  std::uint32_t at, const QByteArray &member,
                                  const QString &beforeEnd);

/// Where a container's content ends but for white space.
[[nodiscard]] std::uint32_t endOfMembers(const XmlDocument &document, const XmlNode &container);

/// The splices, in order, that set a key (in every entry that has it, so that all readers see the
/// same) or add it behind the others. Invalid when the key or the value holds a character that XML
/// cannot hold.
[[nodiscard]] Result<std::vector<XmlSplice>> splicesToSet(const XmlDocument &document,
                                                          const XmlLocation &location,
                                                          const QString &key,
                                                          const NewValue &value);

/// The splices that take a key's entries out, each with the white space before it.
[[nodiscard]] std::vector<XmlSplice> splicesToRemove(const XmlDocument &document,
                                                     const XmlLocation &location);

/// The splices that put other markup, in the file's encoding, in the place of a key's values.
[[nodiscard]] std::vector<XmlSplice> splicesToReplace(const XmlLocation &location,
                                                      const QByteArray &markup);

/// Whether the file would stay small enough to be read, and not grow by a thousand copies where one
/// was meant.
[[nodiscard]] bool staysSmall(QByteArrayView file, const std::vector<XmlSplice> &splices);

/// The file with the splices done; every other byte is the same.
[[nodiscard]] QByteArray spliced(QByteArrayView file, const std::vector<XmlSplice> &splices);

} // namespace varnel::plist
