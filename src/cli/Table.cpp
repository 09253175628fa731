#include "cli/Table.h"

#include "cli/TextWidth.h"

#include <algorithm>
#include <numeric>

namespace varnel::cli {

namespace {

constexpr int indent = 2;
constexpr int gap = 2;
constexpr int narrowest = 8; ///< what a column keeps while others can give

QString painted(const QString &text, Table::Look look, const Style &style)
{
    if (!style.colour || look == Table::Look::Plain || text.isEmpty())
        return text;
    return (look == Table::Look::Strong ? u"\033[1m" : u"\033[2m") + text + u"\033[0m";
}

} // namespace

void Table::addHeading(const QString &text)
{
    lines.append({printable(text), {}, Look::Plain, {}});
}

void Table::addNote(const QString &text, Look look)
{
    lines.append({{}, printable(text), look, {}});
}

void Table::addRow(const QList<Cell> &cells)
{
    Line line;
    for (const Cell &cell : cells)
        line.cells.append({printable(cell.text), cell.look});
    lines.append(line);
}

std::vector<int> Table::columnWidths(const Style &style) const
{
    std::vector<int> widths;
    for (const Line &line : lines) {
        widths.resize(std::max(widths.size(), size_t(line.cells.size())));
        for (qsizetype i = 0; i < line.cells.size(); ++i)
            widths[size_t(i)] = std::max(widths[size_t(i)], textWidth(line.cells[i].text));
    }
    if (style.columns <= 0 || widths.empty())
        return widths;
    int excess = std::accumulate(widths.begin(), widths.end(), 0) + indent
        + gap * int(widths.size() - 1) - style.columns;
    for (auto width = widths.rbegin(); width != widths.rend() && excess > 0; ++width) {
        const int given = std::clamp(*width - narrowest, 0, excess);
        *width -= given;
        excess -= given;
    }
    return widths;
}

QString Table::rowText(const QList<Cell> &cells, const std::vector<int> &widths,
                       const Style &style) const
{
    QString out(indent, u' ');
    for (qsizetype i = 0; i < cells.size(); ++i) {
        QString shown = elided(cells[i].text, widths[size_t(i)], style.ellipsis);
        const bool last = i == cells.size() - 1;
        if (last) {
            while (shown.endsWith(u' '))
                shown.chop(1);
            out += painted(shown, cells[i].look, style);
        } else {
            const int blanks = widths[size_t(i)] - textWidth(shown) + gap;
            out += painted(shown, cells[i].look, style) + QString(blanks, u' ');
        }
    }
    return out + u'\n';
}

QString Table::text(const Style &style) const
{
    const std::vector<int> widths = columnWidths(style);
    QString out;
    for (const Line &line : lines) {
        if (!line.note.isNull()) {
            out += QString(indent, u' ') + painted(line.note, line.look, style) + u'\n';
            continue;
        }
        if (line.heading.isNull()) {
            out += rowText(line.cells, widths, style);
            continue;
        }
        if (!out.isEmpty())
            out += u'\n';
        out += painted(line.heading, Look::Strong, style) + u'\n';
    }
    return out;
}

} // namespace varnel::cli
