#include "plist/BinaryWriter.h"

#include "plist/BinaryAssembly.h"
#include "plist/BinaryEncoding.h"
#include "plist/BinaryNumbering.h"
#include "plist/Errors.h"

#include <algorithm>
#include <limits>

namespace varnel::plist {

namespace {

/// A new key and the objects of a new value, which come behind all others.
class NewObjects {
public:
    NewObjects(const BinaryEdit &edit, std::uint32_t firstNumber)
        : value(firstNumber), objects(edit.value)
    {
        if (edit.addsKey()) {
            encodedKey = encodeString(*edit.key);
            key = value++;
        }
    }

    std::uint32_t key = 0;
    std::uint32_t value = 0; ///< the number of the fragment's first object

    [[nodiscard]] std::uint64_t count() const
    {
        return (encodedKey.isEmpty() ? 0U : 1U)
            + std::uint64_t {objects ? objects->trailer().objectCount : 0};
    }

    [[nodiscard]] std::uint64_t size(unsigned referenceWidth) const
    {
        auto size = static_cast<std::uint64_t>(encodedKey.size());
        if (!objects)
            return size;
        for (std::uint32_t i = 0; i < objects->trailer().objectCount; ++i) {
            const BinaryObject object = objects->object(i);
            size += static_cast<std::uint64_t>(headOf(object).size());
            size += std::uint64_t {object.referenceCount()} * referenceWidth;
        }
        return size;
    }

    void write(BinaryOutput &output) const
    {
        if (!encodedKey.isEmpty()) {
            output.beginObject();
            output.append(encodedKey);
        }
        if (!objects)
            return;
        for (std::uint32_t i = 0; i < objects->trailer().objectCount; ++i) {
            const BinaryObject object = objects->object(i);
            output.beginObject();
            output.append(headOf(object));
            for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
                output.appendReference(value + objects->child(object, n));
        }
    }

private:
    /// All of an object but its references.
    [[nodiscard]] QByteArrayView headOf(const BinaryObject &object) const
    {
        const QByteArrayView whole = objects->whole(object);
        return object.isContainer() ? whole.first(object.body - object.start) : whole;
    }

    QByteArray encodedKey;
    const BinaryReader *objects;
};

class Rewriting {
public:
    Rewriting(const BinaryReader &reader, const BinaryEdit &edit)
        : reader(reader), containers(editedContainers(reader, edit)), numbering(reader, containers),
          added(edit, numbering.count()), trailer(reader.trailer())
    {
    }

    Result<QByteArray> run()
    {
        const std::uint64_t count = numbering.count() + added.count();
        trailer.referenceWidth = std::max(trailer.referenceWidth, bytesFor(count));
        const std::uint64_t tableStart = BinaryTrailer::headerSize + objectBytes();
        trailer.offsetWidth = std::max(trailer.offsetWidth, bytesFor(tableStart));
        const std::uint64_t size = tableStart + count * trailer.offsetWidth + BinaryTrailer::size;
        if (size > std::numeric_limits<std::uint32_t>::max())
            return tooBig();
        trailer.objectCount = static_cast<std::uint32_t>(count);
        trailer.tableStart = static_cast<std::uint32_t>(tableStart);
        trailer.root = numbering.editedNumber(0);
        BinaryOutput output(trailer, size);
        write(output);
        return output.finish();
    }

private:
    [[nodiscard]] std::uint64_t objectBytes() const
    {
        std::uint64_t size = 0;
        for (std::uint32_t i = 0; i < reader.trailer().objectCount; ++i) {
            if (!numbering.isKept(i))
                continue;
            const BinaryObject object = reader.object(i);
            const std::uint64_t references = object.referenceCount();
            size += object.end - object.start;
            size += references * (trailer.referenceWidth - reader.trailer().referenceWidth);
        }
        for (const EditedContainer &container : containers) {
            size += static_cast<std::uint64_t>(header(container).size())
                + container.references.size() * trailer.referenceWidth;
        }
        size += added.size(trailer.referenceWidth);
        return size;
    }

    static QByteArray header(const EditedContainer &container)
    {
        return encodeHeader(container.type,
                            container.references.size()
                                / (container.type == BinaryType::Dictionary ? 2 : 1));
    }

    void write(BinaryOutput &output) const
    {
        for (std::uint32_t i = 0; i < reader.trailer().objectCount; ++i) {
            if (numbering.isKept(i))
                writeKept(reader.object(i), output);
            else if (const auto step = numbering.replacement(i))
                writeEdited(*step, output);
        }
        for (std::size_t step = 0; step < containers.size(); ++step) {
            if (numbering.isKept(containers[step].original))
                writeEdited(step, output);
        }
        added.write(output);
    }

    void writeKept(const BinaryObject &object, BinaryOutput &output) const
    {
        output.beginObject();
        if (!object.isContainer()) {
            output.append(reader.whole(object));
            return;
        }
        output.append(reader.whole(object).first(object.body - object.start));
        for (std::uint32_t n = 0; n < object.referenceCount(); ++n)
            output.appendReference(numbering.number(reader.child(object, n)));
    }

    void writeEdited(std::size_t step, BinaryOutput &output) const
    {
        output.beginObject();
        output.append(header(containers[step]));
        for (const std::uint32_t reference : containers[step].references) {
            if (reference == EditedContainer::nextContainer)
                output.appendReference(numbering.editedNumber(step + 1));
            else if (reference == EditedContainer::newKey)
                output.appendReference(added.key);
            else if (reference == EditedContainer::newValue)
                output.appendReference(added.value);
            else
                output.appendReference(numbering.number(reference));
        }
    }

    const BinaryReader &reader;
    std::vector<EditedContainer> containers;
    BinaryNumbering numbering;
    NewObjects added;
    BinaryTrailer trailer;
};

} // namespace

Result<QByteArray> rewrite(const BinaryReader &reader, const BinaryEdit &edit)
{
    return Rewriting(reader, edit).run();
}

} // namespace varnel::plist
