#pragma once

#include "plist/XmlParser.h"

namespace varnel::plist {

/// Reads the XML that nearly all property lists are written in, several times as fast as the full
/// parser: UTF-8, the usual first lines, tags without attributes or blanks, text with the five
/// named entities, comments between and inside elements.
///
/// True says that the full parser would have accepted the text and told the listener the same.
/// False says nothing: a carriage return, a numbered character, a mistake. Then the full
/// parser must decide, with a listener that has heard nothing yet.
[[nodiscard]] bool parsePlainXml(QByteArrayView file, XmlListener &listener);

/// The same for a part of a file that stands inside a dictionary or an array; the listener hears of
/// such a one around it.
[[nodiscard]] bool parsePlainMembers(QByteArrayView file, std::uint32_t start, std::uint32_t end,
                                     XmlElement around, XmlListener &listener);

} // namespace varnel::plist
