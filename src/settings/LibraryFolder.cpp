#include "settings/LibraryFolder.h"

#include "platform/FinderInfo.h"

namespace varnel {

namespace {

// The invisible flag is 0x4000 of the big-endian word at byte 8: a bit of that byte.
constexpr size_t flagsByte = 8;
constexpr std::uint8_t invisibleBit = 0x40;

} // namespace

bool isInvisible(const FinderInfo &finderInfo, const QString &path)
{
    const FinderInfo::Reading reading = finderInfo.read(path);
    return reading.error != 0 || (reading.bytes[flagsByte] & invisibleBit) != 0;
}

int setFileInvisibility(FinderInfo &finderInfo, const QString &path, bool invisible)
{
    const FinderInfo::Reading reading = finderInfo.read(path);
    if (reading.error != 0)
        return reading.error;
    FinderInfoBytes bytes = reading.bytes;
    const int flags = bytes[flagsByte];
    bytes[flagsByte] = std::uint8_t(invisible ? flags | invisibleBit : flags & ~invisibleBit);
    return bytes == reading.bytes ? 0 : finderInfo.write(path, bytes);
}

} // namespace varnel
