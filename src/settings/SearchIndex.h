#pragma once

#include <QList>
#include <QString>

namespace varnel {

struct SettingRow;

/// A setting as the search knows it.
struct SearchEntry {
    int id = 0;
    QString text;

    bool operator==(const SearchEntry &) const = default;
};

/// A row to show for a search.
struct SearchResult {
    int id = 0;
    QString text; ///< as it stands in the index
    qsizetype matchLength = 0; ///< never 0

    bool operator==(const SearchResult &) const = default;
};

/// The search texts, one for each setting that can be found, in the order in which the modules give
/// them. That is the order of results, too.
[[nodiscard]] const QList<SearchEntry> &searchIndex();

/// The settings whose text contains what was typed, as one piece, without regard to letter case and
/// locale. Nothing is trimmed or split into words; an empty text finds nothing.
[[nodiscard]] QList<SearchResult> findSettings(const QString &typed);

/// The settings that the window calls so: labels that begin with what was typed first, then labels,
/// help, short names, groups and choices that contain it, each in the order of the pages; so many
/// at most. For a text that the search texts do not contain.
[[nodiscard]] QList<const SettingRow *> settingsCalled(const QString &typed, qsizetype most = 5);

/// The same without the settings whose view an earlier result shows already: of several that one
/// view carries, only the first stands.
[[nodiscard]] QList<SearchResult> findViews(const QString &typed);

} // namespace varnel
