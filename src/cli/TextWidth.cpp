#include "cli/TextWidth.h"

#include "base/Literals.h"

#include <algorithm>
#include <array>

namespace varnel::cli {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The blocks that Unicode calls wide or fullwidth, drawn together where gaps are unassigned.
constexpr std::array<Range, 15> wideRanges {{
    {0x1100, 0x115f}, // Hangul initial consonants
    {0x2e80, 0x303e}, // CJK radicals, punctuation
    {0x3041, 0x33ff}, // kana, Bopomofo, compatibility
    {0x3400, 0x4dbf},
    {0x4e00, 0x9fff}, // CJK ideographs
    {0xa000, 0xa4cf}, // Yi
    {0xa960, 0xa97c},
    {0xac00, 0xd7a3}, // Hangul syllables
    {0xf900, 0xfaff},
    {0xfe30, 0xfe6f},
    {0xff00, 0xff60}, // fullwidth forms
    {0xffe0, 0xffe6},
    {0x1f300, 0x1f64f}, // emoji
    {0x1f900, 0x1f9ff},
    {0x20000, 0x3fffd},
}};

int characterWidth(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return 0;
    default:
        break;
    }
    const bool wide = std::any_of(wideRanges.begin(), wideRanges.end(), [&](const Range &range) {
        return character >= range.first && character <= range.last;
    });
    return wide ? 2 : 1;
}

bool steersTerminal(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    switch (QChar::direction(character)) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

} // namespace

int textWidth(QStringView text)
{
    int width = 0;
    for (const char32_t character : text.toUcs4())
        width += characterWidth(character);
    return width;
}

QString elided(const QString &text, int columns, const QString &ellipsis)
{
    if (textWidth(text) <= columns)
        return text;
    const int room = columns - textWidth(ellipsis);
    if (room < 0)
        return {};
    int width = 0;
    qsizetype kept = 0;
    for (const char32_t character : text.toUcs4()) {
        width += characterWidth(character);
        if (width > room)
            break;
        kept += QChar::requiresSurrogates(character) ? 2 : 1;
    }
    return text.left(kept) + ellipsis;
}

QString printable(const QString &text)
{
    QString out;
    for (const char32_t character : text.toUcs4()) {
        if (character == U'\n')
            out += u"\\n";
        else if (character == U'\t')
            out += u"\\t";
        else if (steersTerminal(character))
            out += u"\\u%1"_s.arg(uint(character), 4, 16, QChar(u'0'));
        else
            out += QChar::fromUcs4(character);
    }
    return out;
}

} // namespace varnel::cli
