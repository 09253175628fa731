#pragma once

#include "plist/XmlScan.h"

#include <QStringList>

namespace varnel::plist {

/// A file that was found valid, its encoding and its root dictionary.
struct XmlDocument {
    QByteArray file;
    XmlEncoding encoding;
    XmlNode root;

    static constexpr qint64 tooLarge = 0xffffffff; ///< bytes; offsets are of 32 bits

    /// Nothing when the file is no valid property list with a dictionary at its root. Memory is
    /// taken at once for as many entries as are expected.
    [[nodiscard]] static std::optional<XmlDocument> open(QByteArray file,
                                                         std::size_t expectedEntries = 0);
};

/// An entry of a dictionary, and its value.
struct XmlFound {
    std::size_t entry = 0;
    XmlNode node;
    Decoded decoded;
};

/// An entry of a dictionary, or an element of an array.
struct XmlMember {
    QString key; ///< null for an element
    XmlNode node;
};

/// The n-th of either.
[[nodiscard]] std::optional<XmlMember> memberAt(const XmlDocument &document,
                                                const XmlNode &container, std::size_t n);

/// The keys of a dictionary, in order.
[[nodiscard]] QStringList keysOf(const XmlDocument &document, const XmlNode &dictionary);

/// The entries with a key, in order.
[[nodiscard]] std::vector<XmlFound> findAll(const XmlDocument &document, const XmlNode &dictionary,
                                            const QString &key);
/// Of several entries with a key the last counts, as for most readers.
[[nodiscard]] std::optional<XmlFound> findLast(const XmlDocument &document,
                                               const XmlNode &dictionary, const QString &key);

/// The way to a key: the dictionaries from the root on, and the entry taken in each but the last.
class XmlLocation {
public:
    /// Nothing when a dictionary on the way is missing. The document must outlive the location.
    [[nodiscard]] static std::optional<XmlLocation> find(const XmlDocument &document,
                                                         const QStringList &path);

    [[nodiscard]] std::size_t depth() const { return nested.size() + 1; }
    [[nodiscard]] const XmlNode &dictionary(std::size_t level) const
    {
        return level == 0 ? *root : nested[level - 1].node;
    }
    [[nodiscard]] const XmlNode &innermost() const { return dictionary(nested.size()); }
    /// The entry of a level's dictionary that leads to the next level.
    [[nodiscard]] std::size_t step(std::size_t level) const { return nested[level].entry; }
    /// The entries of the innermost dictionary that have the path's last key.
    [[nodiscard]] const std::vector<XmlFound> &found() const { return matches; }

private:
    const XmlNode *root = nullptr;
    std::vector<XmlFound> nested;
    std::vector<XmlFound> matches;
};

} // namespace varnel::plist
