#pragma once

#include "plist/BinaryReader.h"

#include <QByteArray>

#include <vector>

namespace varnel::plist {

/// Puts objects one after the other and their offsets into the table.
class BinaryOutput {
public:
    /// The trailer must say already how many objects there will be and where the table starts.
    BinaryOutput(const BinaryTrailer &trailer, std::uint64_t size);

    void beginObject();
    void append(QByteArrayView bytes);
    void appendReference(std::uint32_t number);
    [[nodiscard]] QByteArray finish();

private:
    const BinaryTrailer &trailer;
    QByteArray file;
    char *to;
    char *entry;
};

/// Gathers objects whose number nobody knows beforehand, and writes them as a property list.
class BinaryAssembly {
public:
    /// The bytes of an object that is no container; its number.
    std::uint32_t addScalar(QByteArrayView bytes);
    /// Marker and count of a container, and the numbers that it refers to: a dictionary's keys
    /// first.
    std::uint32_t addContainer(QByteArrayView header, const std::vector<std::uint32_t> &references);

    /// The property list; empty where it would not fit a readable file.
    [[nodiscard]] QByteArray finish(std::uint32_t root) const;

private:
    struct Part {
        qsizetype bytesEnd = 0;
        std::size_t referencesEnd = 0;
    };

    QByteArray heads; ///< of all objects, one behind the other
    std::vector<std::uint32_t> numbers; ///< the references of all containers
    std::vector<Part> parts;
};

} // namespace varnel::plist
