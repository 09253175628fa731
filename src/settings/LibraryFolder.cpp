#include "settings/LibraryFolder.h"

namespace varnel {

namespace {

// The invisible flag is 0x4000 of the big-endian word at byte 8: a bit of that byte.
constexpr size_t flagsByte = 8;
constexpr std::uint8_t invisibleBit = 0x40;

bool isInvisible(const FinderInfo::Reading &reading)
{
    return reading.error != 0 || (reading.bytes[flagsByte] & invisibleBit) != 0;
}

} // namespace

SettingReading libraryReading(const FinderInfo::Reading &reading)
{
    return {{isInvisible(reading) ? 0 : 1}, reading.error == 0};
}

FinderInfoBytes withInvisibility(FinderInfoBytes bytes, bool invisible)
{
    const int flags = bytes[flagsByte];
    bytes[flagsByte] = std::uint8_t(invisible ? flags | invisibleBit : flags & ~invisibleBit);
    return bytes;
}

bool isInvisible(const FinderInfo &finderInfo, const QString &path)
{
    return isInvisible(finderInfo.read(path));
}

int setFileInvisibility(FinderInfo &finderInfo, const QString &path, bool invisible)
{
    const FinderInfo::Reading reading = finderInfo.read(path);
    if (reading.error != 0)
        return reading.error;
    const FinderInfoBytes bytes = withInvisibility(reading.bytes, invisible);
    return bytes == reading.bytes ? 0 : finderInfo.write(path, bytes);
}

} // namespace varnel
