#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace varnel {

/// Which of the four items the bookmarks bar shows: Reading List, Top Sites, Address Book, Bonjour.
/// Exchanged as the text "1;0;0;1", stored as an array of the names.
struct BarItems {
    static constexpr int count = 4;
    std::array<bool, count> shown {};

    /// The four names, in their order.
    [[nodiscard]] static const QStringList &allNames();

    /// A stored array; names are compared without regard to letter case, unknown ones are skipped.
    [[nodiscard]] static BarItems fromNames(const QStringList &names);
    /// An exchanged text; what is not a "1" in its place is not shown.
    [[nodiscard]] static BarItems fromText(const QString &text);

    [[nodiscard]] QStringList names() const;
    [[nodiscard]] QString text() const;
};

} // namespace varnel
