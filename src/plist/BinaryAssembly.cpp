#include "plist/BinaryAssembly.h"

#include <cstring>
#include <limits>

namespace varnel::plist {

BinaryOutput::BinaryOutput(const BinaryTrailer &trailer, std::uint64_t size)
    : trailer(trailer), file(static_cast<qsizetype>(size), Qt::Uninitialized), to(file.data()),
      entry(file.data() + trailer.tableStart)
{
    append("bplist00");
}

void BinaryOutput::beginObject()
{
    writeBigEndian(entry, static_cast<std::uint64_t>(to - file.data()), trailer.offsetWidth);
    entry += trailer.offsetWidth;
}

void BinaryOutput::append(QByteArrayView bytes)
{
    std::memcpy(to, bytes.data(), static_cast<std::size_t>(bytes.size()));
    to += bytes.size();
}

void BinaryOutput::appendReference(std::uint32_t number)
{
    writeBigEndian(to, number, trailer.referenceWidth);
    to += trailer.referenceWidth;
}

QByteArray BinaryOutput::finish()
{
    trailer.write(entry);
    return std::move(file);
}

std::uint32_t BinaryAssembly::addScalar(QByteArrayView bytes)
{
    return addContainer(bytes, {});
}

std::uint32_t BinaryAssembly::addContainer(QByteArrayView header,
                                           const std::vector<std::uint32_t> &references)
{
    heads.append(header);
    numbers.insert(numbers.end(), references.begin(), references.end());
    parts.push_back({heads.size(), numbers.size()});
    return static_cast<std::uint32_t>(parts.size() - 1);
}

QByteArray BinaryAssembly::finish(std::uint32_t root) const
{
    static constexpr char noHead[6] = {};
    BinaryTrailer trailer;
    trailer.head = QByteArrayView(noHead, sizeof noHead);
    trailer.referenceWidth = bytesFor(parts.size());
    const std::uint64_t tableStart = BinaryTrailer::headerSize
        + static_cast<std::uint64_t>(heads.size()) + numbers.size() * trailer.referenceWidth;
    trailer.offsetWidth = bytesFor(tableStart);
    const std::uint64_t size =
        tableStart + parts.size() * trailer.offsetWidth + BinaryTrailer::size;
    if (size > std::numeric_limits<std::uint32_t>::max())
        return {};
    trailer.objectCount = static_cast<std::uint32_t>(parts.size());
    trailer.root = root;
    trailer.tableStart = static_cast<std::uint32_t>(tableStart);
    BinaryOutput output(trailer, size);
    Part done;
    for (const Part &part : parts) {
        output.beginObject();
        output.append(QByteArrayView(heads).sliced(done.bytesEnd, part.bytesEnd - done.bytesEnd));
        for (; done.referencesEnd < part.referencesEnd; ++done.referencesEnd)
            output.appendReference(numbers[done.referencesEnd]);
        done.bytesEnd = part.bytesEnd;
    }
    return output.finish();
}

} // namespace varnel::plist
