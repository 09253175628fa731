#include "base/LateLibrary.h"

#include "base/Logging.h"

namespace varnel {

void LateLibrary::open(const QString &name, int version)
{
    library.setFileNameAndVersion(name, version);
    if (!library.load())
        fail(library.errorString());
}

QFunctionPointer LateLibrary::address(const char *symbol)
{
    if (!complete)
        return nullptr;
    const QFunctionPointer found = library.resolve(symbol);
    if (found == nullptr)
        fail(library.fileName() + u": no " + QString::fromLatin1(symbol));
    return found;
}

void LateLibrary::fail(const QString &why)
{
    // Only the first failure is worth telling.
    if (complete)
        varnelLog(lcIo, why);
    complete = false;
}

} // namespace varnel
