#pragma once

#include "base/Literals.h"
#include "plist/PropertyList.h"

#include <random>

namespace varnel::test {

/// Random numbers, texts and values, the same for the same seed.
class Chance {
public:
    explicit Chance(unsigned seed) : engine(seed) { }
    unsigned below(unsigned end) { return static_cast<unsigned>(engine() % end); }
    quint64 wide() { return quint64 {engine()} << 32 | engine(); }

    QString text()
    {
        static const char16_t letters[] = u"ab &<>'\"é€\n\t\r\ufeff";
        QString text;
        for (unsigned i = below(20); i > 0; --i)
            text += QChar(letters[below(sizeof letters / 2 - 1)]);
        if (below(8) == 0)
            text += u"\U0001f600"_s;
        return text;
    }

    plist::NewValue newValue()
    {
        switch (below(4)) {
        case 0:
            return below(2) == 0;
        case 1:
            return static_cast<qint64>(wide()) >> below(64);
        case 2:
            return text();
        default:
            QStringList list;
            for (unsigned i = below(4); i > 0; --i)
                list.append(text());
            return list;
        }
    }

private:
    std::mt19937 engine;
};

[[nodiscard]] inline bool holds(const plist::PropertyList &list, const QString &key,
                                const plist::NewValue &wanted)
{
    const plist::Value read = list.value({key});
    if (const auto *boolean = std::get_if<bool>(&wanted))
        return read.kind == plist::Kind::Boolean && read.boolean == *boolean;
    if (const auto *integer = std::get_if<qint64>(&wanted))
        return read.kind == plist::Kind::Integer && read.integer == *integer;
    if (const auto *string = std::get_if<QString>(&wanted))
        return read.kind == plist::Kind::String && read.string == *string;
    return read.kind == plist::Kind::StringArray && read.strings == std::get<QStringList>(wanted);
}

} // namespace varnel::test
