#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace varnel::cli {

/// What was typed after the command's name, sorted out.
struct Request {
    QStringList arguments;
    QMap<QString, QStringList> options; ///< by name; a switch stands with an empty list

    [[nodiscard]] bool has(const QString &option) const { return options.contains(option); }
    /// The last value given; null when the option was not given.
    [[nodiscard]] QString value(const QString &option) const
    {
        const QStringList values = options.value(option);
        return values.isEmpty() ? QString() : values.last();
    }
};

} // namespace varnel::cli
