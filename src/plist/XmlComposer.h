#pragma once

#include "base/Result.h"
#include "plist/Value.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

namespace varnel::plist {

/// Composes a new property list from its first line to its last, as XML with a dictionary at its
/// root, indented by tabulators. For files of this program's own; files of others are edited.
class XmlComposer {
public:
    XmlComposer();

    // What stands in a dictionary comes with its key; the elements of an array have none.
    void beginDictionary(const QString &key);
    void beginDictionary();
    void beginArray(const QString &key);
    /// Ends what was begun last.
    void end();
    void add(const QString &key, const NewValue &value);
    /// To the second, in UTC.
    void add(const QString &key, const QDateTime &date);

    /// The document, everything that was begun ended; Invalid when a text holds a character that
    /// XML cannot hold.
    [[nodiscard]] Result<QByteArray> finish();

private:
    void line(QStringView markup);
    void key(const QString &name);
    void begin(const QString &element);

    QString text;
    QStringList open; ///< the elements that are not ended
    bool sound = true;
};

} // namespace varnel::plist
