#pragma once

#include "base/Result.h"

namespace varnel::plist {

inline Error unloadable()
{
    return {ErrorCode::Unloadable, QStringLiteral("not a valid property list with a dictionary")};
}

inline Error noDictionary()
{
    return {ErrorCode::NotFound, QStringLiteral("no dictionary on the way to the key")};
}

inline Error noArray()
{
    return {ErrorCode::NotFound, QStringLiteral("no array at the key")};
}

inline Error tooBig()
{
    return {ErrorCode::Failed, QStringLiteral("the property list gets too big")};
}

inline Error notInFormat()
{
    return {ErrorCode::Invalid, QStringLiteral("the file's format cannot hold the object")};
}

inline Error notReadBack()
{
    return {ErrorCode::Failed, QStringLiteral("the edited property list does not read back")};
}

inline Error notInXml()
{
    return {ErrorCode::Invalid, QStringLiteral("the text holds a character that XML cannot hold")};
}

} // namespace varnel::plist
