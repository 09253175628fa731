#pragma once

#include "base/Result.h"
#include "plist/Object.h"

#include <QJsonObject>
#include <QString>

#include <optional>
#include <vector>

namespace varnel {

class FileStore;

/// An item of a Mac account's list as it was when it was taken out.
struct KeptAccountItem {
    plist::Object object;
    std::optional<plist::Place> place;
};

/// The items that were taken out of a Mac account's list, one file for each application, in a
/// folder of the program's own. What stands in such a file and can't be read stays there.
class KeptAccountItems {
public:
    /// The folder ends in a slash; it must exist before the first keep().
    KeptAccountItems(QString folder, FileStore &files);

    [[nodiscard]] const QString &folder() const { return folderPath; }
    [[nodiscard]] QString fileOf(const QString &path) const;

    /// What was taken out together and last, in the list's order. Empty where nothing is kept; an
    /// error where that can't be told.
    [[nodiscard]] Result<std::vector<KeptAccountItem>> last(const QString &path) const;

    /// Keeps these beside what is kept already.
    Result<void> keep(const QString &path, const std::vector<KeptAccountItem> &items);

    /// Gives up what last() answers.
    Result<void> forgetLast(const QString &path);

private:
    [[nodiscard]] std::optional<QJsonObject> parse(const QString &path,
                                                   const QByteArray &bytes) const;
    [[nodiscard]] Error unreadable(const QString &path) const;

    QString folderPath;
    FileStore &files;
};

} // namespace varnel
