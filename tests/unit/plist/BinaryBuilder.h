#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace varnel::test {

/// Puts binary property lists together object by object, valid ones and others. It shares no code
/// with the program.
class BinaryBuilder {
public:
    using Index = quint32;

    /// An object as its bytes.
    Index raw(const QByteArray &object);

    Index boolean(bool value);
    Index integer(unsigned width, quint64 value);
    Index wideInteger(quint64 high, quint64 low);
    Index real(double value);
    Index shortReal(float value);
    Index date(double secondsSince2001);
    Index data(const QByteArray &value);
    Index ascii(const QByteArray &value);
    Index utf16(const QString &value);
    Index uid(unsigned width, quint64 value);
    Index array(const QList<Index> &elements) { return container(0xa, elements); }
    Index set(const QList<Index> &elements) { return container(0xc, elements); }
    Index dictionary(const QList<std::pair<Index, Index>> &entries);

    /// For an index that is not yet known: a container whose references are told later.
    Index container(unsigned type, const QList<Index> &references);
    void setReferences(Index object, const QList<Index> &references);

    [[nodiscard]] Index count() const { return static_cast<Index>(objects.size()); }

    /// The file. Widths of 0 mean the least that fits.
    [[nodiscard]] QByteArray build(Index root, unsigned referenceWidth = 0,
                                   unsigned offsetWidth = 0) const;

    /// A dictionary with ASCII keys.
    Index dictionaryOf(const QList<std::pair<QByteArray, Index>> &entries);

private:
    struct Object {
        QByteArray bytes;
        unsigned type = 0; ///< of a container, else 0
        QList<Index> references;
    };
    Index add(Object object);
    static QByteArray counted(unsigned type, qsizetype count);

    QList<Object> objects;
};

QByteArray bigEndian(quint64 value, unsigned width);

} // namespace varnel::test
