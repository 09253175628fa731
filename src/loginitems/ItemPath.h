#pragma once

#include "plist/Object.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace varnel {

// Where the items of a Mac account's list lead: all of it bytes that others wrote. Each answer is a
// whole path from the root of that Mac's file system, without a slash at its end, in the words of
// the bytes (file names are not normalized); none where the bytes say no such path, or one of over
// 4096 bytes.

/// Of an alias record of version 2 or 3: the path beneath the volume, put to where the volume was
/// mounted. A record without either of them has none.
[[nodiscard]] std::optional<QString> pathOfAlias(const QByteArray &record);

/// Of bookmark data.
[[nodiscard]] std::optional<QString> pathOfBookmark(const QByteArray &data);

/// Of a `file:` URL of that Mac itself.
[[nodiscard]] std::optional<QString> pathOfFileUrl(const QByteArray &url);

/// Of the first `file:` URL in the bytes that tie an item to its application.
[[nodiscard]] std::optional<QString> pathOfBinding(const QByteArray &binding);

/// Of a whole item, by the first of these that has one: the alias, the bookmark, the binding, and
/// what came over from a list of before 10.5.
[[nodiscard]] std::optional<QString> pathOfItem(const plist::Object &item);

} // namespace varnel
