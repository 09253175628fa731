#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace varnel {

class FileStore;

/// The file names of inserted login items, in the order of insertion.
///
/// A text file, one name a line. A name that would not come back from such a line stands between
/// quotation marks, its line feeds as "\n" and its backslashes doubled; no entry's name ends in a
/// quotation mark.
class LoginItemsOrder {
public:
    LoginItemsOrder(QString file, FileStore &files);

    [[nodiscard]] const QString &file() const { return path; }

    [[nodiscard]] QStringList names() const;
    Result<void> moveToEnd(const QStringList &names);
    Result<void> remove(const QStringList &names);
    using Change = std::function<QStringList(const QStringList &now)>;
    Result<void> change(const Change &change);

private:
    QString path;
    FileStore &files;
};

} // namespace varnel
