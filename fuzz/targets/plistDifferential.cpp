// Property lists of both formats, read by this program and by libplist: what one says, the other
// says too. Then one key is edited, and libplist must see that and nothing else.

#include "harness/Input.h"
#include "harness/LibplistLoss.h"
#include "harness/Require.h"
#include "plist/PropertyList.h"
#include "unit/plist/LibplistReading.h"

using namespace varnel;
using namespace varnel::fuzz;
using namespace varnel::plist;
using namespace varnel::test;

namespace {

void compare(const PropertyList &list, const LibplistReading::Dictionary &seen,
             const QStringList &above)
{
    for (auto entry = seen.begin(); entry != seen.end(); ++entry) {
        const QStringList path = above + QStringList {entry.key()};
        const Value value = list.value(path);
        const LibplistReading::Node &node = entry.value();
        require(value.kind == node.value.kind, "both see the same kind");
        require(sameContent(value, node.value), "both see the same content");
        if (value.kind == Kind::Dictionary)
            compare(list, node.entries, path);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray file = Input(data, size).rest();
    Result<PropertyList> opened = PropertyList::open(file);
    if (!opened || !libplistLosesNothing(file))
        return 0;
    const auto before = LibplistReading::of(file);
    require(before.has_value(), "libplist takes it too");
    compare(opened.value(), *before, {});

    PropertyList list = std::move(opened).value();
    const QString key = before->isEmpty() ? QStringLiteral("new") : before->firstKey();
    if (!list.set({key}, QStringLiteral("an edit")))
        return 0;
    auto after = LibplistReading::of(list.bytes());
    require(after.has_value(), "libplist takes the edited file");
    require(after->value(key).value.string == u"an edit", "libplist sees the edit");
    auto others = *before;
    others.remove(key);
    after->remove(key);
    require(*after == others, "libplist sees nothing else changed");
    return 0;
}
