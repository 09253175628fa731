#pragma once

#include "settings/RestartFlags.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace varnel::test {

/// A value of a setting: what its file then holds, and how it is described.
struct ExpectedCase {
    int number;
    QString text;
    QString label; ///< of choices
    QString holds; ///< the entries of the file's dictionary as Python prints them; empty when the
                   ///< key is removed; for 1302 "visible" or "invisible"
    QString action;
};

/// What is to be true of a setting, written down without a look at the catalogue.
struct ExpectedSetting {
    int id;
    QString viewClass;
    QString place; ///< the short location
    QString file; ///< empty for 1302
    RestartFlags restarts;
    QStringList keywords;
    QString otherAction; ///< of an index without a text of its own; choices only
    QList<ExpectedCase> cases; ///< in writing order, the default last
};

[[nodiscard]] const QList<ExpectedSetting> &expectedSettings();

} // namespace varnel::test
