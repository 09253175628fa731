#pragma once

#include "plist/PropertyList.h"

#include <gtest/gtest.h>

namespace varnel::test {

/// The list in these bytes; a test that gives others has failed.
inline plist::PropertyList opened(const QByteArray &bytes)
{
    auto list = plist::PropertyList::open(bytes);
    EXPECT_TRUE(list.ok()) << bytes.left(300).toStdString();
    return list ? std::move(list).value() : plist::PropertyList::empty();
}

inline bool isUnloadable(const QByteArray &bytes)
{
    const auto list = plist::PropertyList::open(bytes);
    return !list.ok() && list.error().code == ErrorCode::Unloadable;
}

/// An XML list with these entries in its root dictionary.
inline QByteArray xmlWith(const QByteArray &entries)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n" + entries
        + "</dict>\n</plist>\n";
}

} // namespace varnel::test
