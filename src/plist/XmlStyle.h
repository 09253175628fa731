#pragma once

#include "plist/XmlLocation.h"

namespace varnel::plist {

/// The white space by which new lines are made to look like their neighbours. What a file writes on
/// one line stays on one line.
class XmlStyle {
public:
    XmlStyle(const XmlDocument &document, const XmlNode &dictionary);

    /// Before a new key of the dictionary.
    [[nodiscard]] const QString &beforeKey() const { return keySpace; }
    /// Between a new key and its value.
    [[nodiscard]] const QString &beforeValue() const { return valueSpace; }
    /// Before the end tag of the dictionary when it had no content.
    [[nodiscard]] const QString &beforeEnd() const { return endSpace; }
    /// The line break and indentation of a new value; empty where it stays on its line.
    [[nodiscard]] QString lineOfNewValue() const;
    /// One level of indentation.
    [[nodiscard]] const QString &indentation() const { return unit; }

private:
    QString keySpace;
    QString valueSpace;
    QString endSpace;
    QString unit;
};

/// The line break and the indentation of a value that is there, or of its key.
[[nodiscard]] QString lineOfValue(const XmlDocument &document, const XmlNode &dictionary,
                                  const XmlFound &found);

/// The line break and the indentation at the end of a run of white space; empty without a break.
[[nodiscard]] QString lastLine(const QString &space);

} // namespace varnel::plist
