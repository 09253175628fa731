#pragma once

#include "cli/Console.h"

#include <QList>
#include <QString>

#include <vector>

namespace varnel::cli {

/// Lines of columns under headings, for people. Columns are as wide as their longest cell; what is
/// too wide for the terminal loses its end, the last column first.
class Table {
public:
    enum class Look { Plain, Quiet, Strong };
    struct Cell {
        QString text;
        Look look = Look::Plain;
    };

    void addHeading(const QString &text);
    void addRow(const QList<Cell> &cells);
    /// A sentence below the rows, in no column. It is never cut; the terminal breaks it.
    void addNote(const QString &text, Look look = Look::Quiet);

    [[nodiscard]] QString text(const Style &style) const;

private:
    struct Line {
        QString heading; ///< null for a row and for a note
        QString note; ///< null but for a note
        Look look = Look::Plain; ///< of a note
        QList<Cell> cells;
    };
    [[nodiscard]] std::vector<int> columnWidths(const Style &style) const;
    [[nodiscard]] QString rowText(const QList<Cell> &cells, const std::vector<int> &widths,
                                  const Style &style) const;

    QList<Line> lines;
};

} // namespace varnel::cli
