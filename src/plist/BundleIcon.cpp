#include "plist/BundleIcon.h"

#include "base/Text.h"
#include "platform/FileReader.h"
#include "plist/PropertyList.h"

namespace varnel {

namespace {

/// Null when the bundle names no icon.
QString iconName(const FileReader &files, const QString &bundle)
{
    Result<QByteArray> bytes = files.read(bundle + u"/Contents/Info.plist");
    if (!bytes)
        return {};
    const Result<plist::PropertyList> info = plist::PropertyList::open(std::move(bytes).value());
    if (!info)
        return {};
    return info.value().text({QStringLiteral("CFBundleIconFile")});
}

} // namespace

QString bundleIconPath(const FileReader &files, const QString &bundle)
{
    const QString path = fillIn(u"%@/Contents/Resources/%@", {bundle, iconName(files, bundle)});
    return files.exists(path) ? path : path + u".icns";
}

} // namespace varnel
