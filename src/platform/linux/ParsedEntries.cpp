#include "platform/linux/ParsedEntries.h"

namespace varnel {

const std::optional<AutostartEntry> &ParsedEntries::entryOf(const QString &file,
                                                            const QByteArray &bytes)
{
    auto known = byFile.find(file);
    if (known == byFile.end() || known->bytes != bytes)
        known = byFile.insert(file, {bytes, parseAutostartEntry(bytes)});
    return known->entry;
}

} // namespace varnel
