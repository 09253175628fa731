// A desktop entry: what is read of it stays when our own key is written into it; and an entry made
// for a path leads back to that path.

#include "harness/Input.h"
#include "harness/Require.h"
#include "platform/linux/AutostartEntry.h"

#include <climits>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

bool sameButPath(const AutostartEntry &one, const AutostartEntry &other)
{
    return one.name == other.name && one.icon == other.icon && one.exec == other.exec
        && one.onlyShowIn == other.onlyShowIn && one.notShowIn == other.notShowIn
        && one.tryExec == other.tryExec && one.off == other.off;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QString path = u'/' + input.text();
    const QByteArray bytes = input.rest();
    const bool isPlain = path.isValidUtf16() && !path.contains(QChar(u'\0'));

    const std::optional<AutostartEntry> entry = parseAutostartEntry(bytes);
    if (entry && isPlain) {
        const std::optional<AutostartEntry> written = parseAutostartEntry(withOwnPath(bytes, path));
        require(written.has_value(), "an entry with our key is an entry");
        require(written->ownPath == path, "our key says what was written");
        require(sameButPath(*written, *entry), "our key changes nothing else");
    }
    if (isPlain) {
        const std::optional<AutostartEntry> fresh = parseAutostartEntry(newAutostartEntry(path));
        require(fresh.has_value() && !fresh->off, "a new entry starts something");
        require(fresh->ownPath == path, "a new entry names its path");
        require(path.size() > PATH_MAX || fresh->exec == QStringList {path},
                "a new entry starts its path");
    }
    return 0;
}
