#include "plist/ExpatLibrary.h"

#include "base/LateLibrary.h"

#include <optional>

namespace varnel::plist {

namespace {

std::optional<ExpatLibrary> load()
{
    LateLibrary library;
    ExpatLibrary expat {};
    library.open(QStringLiteral("expat"), 1);
    library.find(expat.currentByteCount, "XML_GetCurrentByteCount");
    library.find(expat.currentByteIndex, "XML_GetCurrentByteIndex");
    library.find(expat.parse, "XML_Parse");
    library.find(expat.create, "XML_ParserCreate");
    library.find(expat.destroy, "XML_ParserFree");
    library.find(expat.setAttlistDeclHandler, "XML_SetAttlistDeclHandler");
    library.find(expat.setCharacterDataHandler, "XML_SetCharacterDataHandler");
    library.find(expat.setElementHandler, "XML_SetElementHandler");
    library.find(expat.setEntityDeclHandler, "XML_SetEntityDeclHandler");
    library.find(expat.setSkippedEntityHandler, "XML_SetSkippedEntityHandler");
    library.find(expat.setUserData, "XML_SetUserData");
    library.find(expat.setXmlDeclHandler, "XML_SetXmlDeclHandler");
    library.find(expat.stop, "XML_StopParser");
    if (!library.isComplete())
        return std::nullopt;
    return expat;
}

} // namespace

const ExpatLibrary *ExpatLibrary::get()
{
    static const std::optional<ExpatLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace varnel::plist
