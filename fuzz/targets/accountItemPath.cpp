// What tells where an item of a Mac account's list leads: any bytes, and alias records put together
// from the path that they should then say.

#include "harness/Input.h"
#include "harness/Require.h"
#include "loginitems/ItemPath.h"

#include <QtEndian>

using namespace varnel;
using namespace varnel::fuzz;

namespace {

void check(const std::optional<QString> &path)
{
    if (!path)
        return;
    require(path->startsWith(u'/'), "a path is whole");
    require(path->size() == 1 || !path->endsWith(u'/'), "no slash stands at its end");
    require(!path->contains(QChar(u'\0')), "a path can be a file's");
    require(path->toUtf8().size() <= 4096, "a path is short");
}

QByteArray big(quint16 number)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray tagged(quint16 tag, const QByteArray &value)
{
    return big(tag) + big(quint16(value.size())) + value + QByteArray(value.size() % 2, '\0');
}

/// Between tags of any kind.
void checkAlias(Input &input)
{
    constexpr qsizetype mostBytes = 255;
    const bool second = input.below(2) == 0;
    const QByteArray name = "a" + input.bytes(mostBytes).toHex();
    const QByteArray other = input.bytes(mostBytes);
    const auto tag = quint16(input.number(2));
    const bool isOurs = tag == 0x12 || tag == 0x13 || tag == 0xffff;
    const QByteArray between = isOurs ? QByteArray() : tagged(tag, other);
    const QByteArray tags = between + tagged(0x12, "/" + name) + between
        + tagged(0x13, "/Volumes/X") + between + big(0xffff) + big(0);
    const qsizetype header = second ? 150 : 58;
    const QByteArray record = QByteArray(4, '\0') + big(quint16(header + tags.size()))
        + big(second ? 2 : 3) + QByteArray(header - 8, '\x7f') + tags + input.rest();
    require(pathOfAlias(record) == u"/Volumes/X/" + QString::fromLatin1(name),
            "an alias is read as it was written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    if (input.below(2) == 0) {
        checkAlias(input);
        return 0;
    }
    const QByteArray bytes = input.rest();
    check(pathOfAlias(bytes));
    check(pathOfBookmark(bytes));
    check(pathOfFileUrl(bytes));
    check(pathOfBinding(bytes));
    if (const Result<plist::Object> item = plist::Object::fromBytes(bytes))
        check(pathOfItem(item.value()));
    return 0;
}
