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

/// The characters that Unicode names bidirectional controls.
bool isDirectionMark(char32_t character)
{
    return character == 0x061c || character == 0x200e || character == 0x200f
        || (character >= 0x202a && character <= 0x202e)
        || (character >= 0x2066 && character <= 0x2069);
}

bool steersTerminal(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return isDirectionMark(character);
    }
}

/// All of them have numbers of four digits.
QString escaped(char32_t character)
{
    return u"\\u%1"_s.arg(uint(character), 4, 16, QChar(u'0'));
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

QByteArray printableJson(const QByteArray &json)
{
    const auto isPlain = [](char byte) { return byte >= 0 && byte <= '~'; };
    if (std::all_of(json.begin(), json.end(), isPlain))
        return json;
    QString out;
    for (const QChar character : QString::fromUtf8(json)) {
        // What is below stands for itself in no text of a document, and does between them.
        if (character > u'~' && steersTerminal(character.unicode()))
            out += escaped(character.unicode());
        else
            out += character;
    }
    return out.toUtf8();
}

QString printable(const QString &text)
{
    const auto isPlain = [](QChar character) { return character >= u' ' && character <= u'~'; };
    if (std::all_of(text.begin(), text.end(), isPlain))
        return text;
    QString out;
    for (const char32_t character : text.toUcs4()) {
        if (character == U'\n')
            out += u"\\n";
        else if (character == U'\t')
            out += u"\\t";
        else if (steersTerminal(character))
            out += escaped(character);
        else
            out += QChar::fromUcs4(character);
    }
    return out;
}

} // namespace varnel::cli
