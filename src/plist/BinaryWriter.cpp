#include "plist/BinaryWriter.h"

#include "plist/BigEndian.h"
#include "plist/BinaryEncoding.h"
#include "plist/BinaryNumbering.h"

#include <cstring>
#include <limits>

namespace varnel::plist {

namespace {

/// The encoded objects of a new key and value; an array's elements follow the array.
class NewObjects {
public:
    NewObjects(const BinaryEdit &edit, std::uint32_t firstNumber) : first(firstNumber)
    {
        if (!edit.value)
            return;
        if (edit.addsKey()) {
            key = number();
            objects.push_back(encodeString(edit.key));
        }
        value = number();
        if (const auto *strings = std::get_if<QStringList>(edit.value)) {
            elements = static_cast<std::uint32_t>(strings->size());
            for (const QString &string : *strings)
                objects.push_back(encodeString(string));
        } else {
            objects.push_back(encodeScalar(*edit.value));
        }
        isArray = std::holds_alternative<QStringList>(*edit.value);
    }

    std::uint32_t first;
    std::vector<QByteArray> objects; ///< without the array itself
    std::uint32_t key = 0;
    std::uint32_t value = 0;
    std::uint32_t elements = 0;
    bool isArray = false;

    [[nodiscard]] std::uint64_t count() const { return objects.size() + (isArray ? 1 : 0); }

private:
    [[nodiscard]] std::uint32_t number() const
    {
        return first + static_cast<std::uint32_t>(objects.size());
    }
};

/// Puts objects one after the other and their offsets into the table.
class Output {
public:
    Output(const BinaryTrailer &trailer, std::uint64_t size)
        : trailer(trailer), file(static_cast<qsizetype>(size), Qt::Uninitialized), to(file.data()),
          entry(file.data() + trailer.tableStart)
    {
        append("bplist00");
    }

    void beginObject()
    {
        writeBigEndian(entry, static_cast<std::uint64_t>(to - file.data()), trailer.offsetWidth);
        entry += trailer.offsetWidth;
    }
    void append(QByteArrayView bytes)
    {
        std::memcpy(to, bytes.data(), static_cast<std::size_t>(bytes.size()));
        to += bytes.size();
    }
    void appendReference(std::uint32_t number)
    {
        writeBigEndian(to, number, trailer.referenceWidth);
        to += trailer.referenceWidth;
    }
    QByteArray finish()
    {
        trailer.write(entry);
        return std::move(file);
    }

private:
    const BinaryTrailer &trailer;
    QByteArray file;
    char *to;
    char *entry;
};

class Rewriting {
public:
    Rewriting(const BinaryReader &reader, const BinaryEdit &edit)
        : reader(reader), dictionaries(editedDictionaries(reader, edit)),
          numbering(reader, dictionaries), added(edit, numbering.count()), trailer(reader.trailer())
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
            return Error {ErrorCode::Failed, QStringLiteral("the property list gets too big")};
        trailer.objectCount = static_cast<std::uint32_t>(count);
        trailer.tableStart = static_cast<std::uint32_t>(tableStart);
        trailer.root = numbering.editedNumber(0);
        Output output(trailer, size);
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
        for (const EditedDictionary &dictionary : dictionaries) {
            size += static_cast<std::uint64_t>(header(dictionary).size())
                + dictionary.references.size() * trailer.referenceWidth;
        }
        if (added.isArray) {
            size += static_cast<std::uint64_t>(arrayHeader().size())
                + std::uint64_t {added.elements} * trailer.referenceWidth;
        }
        for (const QByteArray &object : added.objects)
            size += static_cast<std::uint64_t>(object.size());
        return size;
    }

    static QByteArray header(const EditedDictionary &dictionary)
    {
        return encodeHeader(BinaryType::Dictionary, dictionary.references.size() / 2);
    }
    [[nodiscard]] QByteArray arrayHeader() const
    {
        return encodeHeader(BinaryType::Array, added.elements);
    }

    void write(Output &output) const
    {
        for (std::uint32_t i = 0; i < reader.trailer().objectCount; ++i) {
            if (numbering.isKept(i))
                writeKept(reader.object(i), output);
            else if (const auto step = numbering.replacement(i))
                writeEdited(*step, output);
        }
        for (std::size_t step = 0; step < dictionaries.size(); ++step) {
            if (numbering.isKept(dictionaries[step].original))
                writeEdited(step, output);
        }
        writeAdded(output);
    }

    void writeKept(const BinaryObject &object, Output &output) const
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

    void writeEdited(std::size_t step, Output &output) const
    {
        output.beginObject();
        output.append(header(dictionaries[step]));
        for (const std::uint32_t reference : dictionaries[step].references) {
            if (reference == EditedDictionary::nextDictionary)
                output.appendReference(numbering.editedNumber(step + 1));
            else if (reference == EditedDictionary::newKey)
                output.appendReference(added.key);
            else if (reference == EditedDictionary::newValue)
                output.appendReference(added.value);
            else
                output.appendReference(numbering.number(reference));
        }
    }

    void writeAdded(Output &output) const
    {
        std::uint32_t number = added.first;
        const auto writeArray = [&] {
            output.beginObject();
            output.append(arrayHeader());
            for (std::uint32_t n = 1; n <= added.elements; ++n)
                output.appendReference(added.value + n);
            ++number;
        };
        for (const QByteArray &object : added.objects) {
            if (added.isArray && number == added.value)
                writeArray();
            output.beginObject();
            output.append(object);
            ++number;
        }
        if (added.isArray && number == added.value)
            writeArray();
    }

    const BinaryReader &reader;
    std::vector<EditedDictionary> dictionaries;
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
