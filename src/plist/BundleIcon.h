#pragma once

#include <QString>

namespace varnel {

class FileReader;

/// The path of a bundle's icon file: "CFBundleIconFile" of its "Contents/Info.plist", in
/// "Contents/Resources/", with
/// ".icns" appended when no file of that name stands there. Without the key the name is "(null)":
/// the path is always formed, and nothing need stand at it.
[[nodiscard]] QString bundleIconPath(const FileReader &files, const QString &bundle);

} // namespace varnel
