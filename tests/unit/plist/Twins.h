#pragma once

#include "BinaryBuilder.h"
#include "Chance.h"

namespace varnel::test {

/// The same value as an object and as markup, put together without the program's own writers.
struct Twin {
    BinaryBuilder::Index object = 0;
    QByteArray markup;
};

[[nodiscard]] Twin ofValue(BinaryBuilder &b, const plist::NewValue &value);

/// Any of the types that both formats hold. The depth bounds how far it is nested.
[[nodiscard]] Twin randomTwin(BinaryBuilder &b, Chance &chance, int depth);

/// The same property list in both formats.
struct Document {
    QByteArray binary;
    QByteArray xml;
};

/// With keys k0, k1, ...: one at least.
[[nodiscard]] Document randomDocument(Chance &chance);

/// A random object over the ones that are there already, so that many are shared.
[[nodiscard]] BinaryBuilder::Index randomObject(BinaryBuilder &b, Chance &chance);

} // namespace varnel::test
