#pragma once

#include <expat.h>

namespace varnel::plist {

/// The calls of expat that this program makes, looked up when first asked for. Most files are read
/// without it (XmlPlainParser), and most runs of the terminal program end without having loaded it.
struct ExpatLibrary {
    // Spelt out: newer headers warn of these two, and older libraries have no others.
    int (*currentByteCount)(XML_Parser);
    XML_Index (*currentByteIndex)(XML_Parser);
    decltype(&XML_Parse) parse;
    decltype(&XML_ParserCreate) create;
    decltype(&XML_ParserFree) destroy;
    decltype(&XML_SetAttlistDeclHandler) setAttlistDeclHandler;
    decltype(&XML_SetCharacterDataHandler) setCharacterDataHandler;
    decltype(&XML_SetElementHandler) setElementHandler;
    decltype(&XML_SetEntityDeclHandler) setEntityDeclHandler;
    decltype(&XML_SetSkippedEntityHandler) setSkippedEntityHandler;
    decltype(&XML_SetUserData) setUserData;
    decltype(&XML_SetXmlDeclHandler) setXmlDeclHandler;
    decltype(&XML_StopParser) stop;

    /// Null where the library is not installed.
    [[nodiscard]] static const ExpatLibrary *get();
};

} // namespace varnel::plist
