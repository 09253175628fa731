#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace varnel::fuzz {

/// What the fuzzer hands in, taken from the front piece by piece. Where nothing is left, pieces are
/// zero or empty.
class Input {
public:
    Input(const std::uint8_t *data, std::size_t size)
        : left(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))
    {
    }

    [[nodiscard]] bool isEmpty() const { return left.isEmpty(); }

    std::uint8_t byte()
    {
        if (left.isEmpty())
            return 0;
        const auto first = static_cast<std::uint8_t>(left.front());
        left = left.sliced(1);
        return first;
    }

    unsigned below(unsigned end) { return byte() % end; }

    quint64 number(unsigned width)
    {
        quint64 value = 0;
        for (unsigned i = 0; i < width; ++i)
            value = value << 8 | byte();
        return value;
    }

    /// At most that many bytes.
    QByteArray bytes(qsizetype length)
    {
        const QByteArrayView taken = left.first(qMin(length, left.size()));
        left = left.sliced(taken.size());
        return taken.toByteArray();
    }

    /// Text of up to 255 code units, as a length and UTF-8 or, where the length is odd, UTF-16: so
    /// that halves of surrogate pairs come too. Never null.
    QString text()
    {
        const std::uint8_t length = byte();
        QString text = QStringLiteral("");
        if (length % 2 == 0)
            return text + QString::fromUtf8(bytes(length / 2));
        for (int i = 0; i < length / 2 && !left.isEmpty(); ++i)
            text.append(QChar(static_cast<char16_t>(number(2))));
        return text;
    }

    /// All that is left.
    QByteArray rest() { return bytes(left.size()); }

private:
    QByteArrayView left;
};

} // namespace varnel::fuzz
