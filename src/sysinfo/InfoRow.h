#pragma once

#include <QList>
#include <QString>

namespace varnel {

/// One line of the name/value list.
struct InfoRow {
    QString name;
    QString value;

    bool operator==(const InfoRow &) const = default;
};

using InfoRows = QList<InfoRow>;

} // namespace varnel
