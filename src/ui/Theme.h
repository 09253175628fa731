#pragma once

#include <QColor>
#include <QFont>

#include <functional>

class QAbstractItemView;
class QApplication;
class QLineEdit;
class QPainter;
class QPalette;
class QPointF;
class QPushButton;
class QRect;
class QWidget;

/// The one place for colours, measures and type sizes. Colours follow the palette that is passed
/// in, so that a widget under a dark desktop, or a test, gets the right ones without being told.
namespace varnel::Theme {

/// Measures in logical pixels. Every gap is one of the first five.
inline constexpr int gapTiny = 4;
inline constexpr int gapSmall = 8;
inline constexpr int gap = 16;
inline constexpr int gapLarge = 24;
inline constexpr int gapHuge = 32;
inline constexpr int pageMargin = 24;
inline constexpr int fieldWidth = 260;
/// Buttons, fields and choice lists beside each other are of one height.
inline constexpr int controlHeight = 28;
inline constexpr int footerButtonWidth = 44;
inline constexpr int footerButtonHeight = 36;
inline constexpr int listRowHeight = 28;
inline constexpr int sourceListRowHeight = 32;
inline constexpr int bandHeight = 90;
/// No text on the band stands lower than this above its lower edge, where the blue is too dark
/// for the ink.
inline constexpr int bandTextFloor = 24;
inline constexpr int listIconSize = 16;
inline constexpr int tabIconSize = 20;
inline constexpr int bandIconSize = 48;
inline constexpr int floatingRadius = 6;
inline constexpr int controlRadius = 4;
inline constexpr int pendingDotSize = 8;
inline constexpr int windowWidth = 960;
inline constexpr int windowHeight = 660;
inline constexpr int windowMinimumWidth = 820;
inline constexpr int windowMinimumHeight = 560;

[[nodiscard]] bool isDark(const QPalette &palette);

/// Every second settings row: its ground, and the line round it.
[[nodiscard]] QColor rowShading(const QPalette &palette);
[[nodiscard]] QColor rowStroke(const QPalette &palette);
/// Lines that part one region from another.
[[nodiscard]] QColor hairline(const QPalette &palette);
/// The edge of a button, a field or a box.
[[nodiscard]] QColor controlEdge(const QPalette &palette);

/// The band's two ends, translucent: they are drawn over bandGround. Start is the lower edge.
[[nodiscard]] QColor bandGround(const QPalette &palette);
[[nodiscard]] QColor bandStart(const QPalette &palette);
[[nodiscard]] QColor bandEnd(const QPalette &palette);
[[nodiscard]] QColor bandInk(const QPalette &palette);

/// Help and captions: 4.5:1 at least on the base, on the window and on a shaded row. Also the
/// palette's PlaceholderText under the program's style.
[[nodiscard]] QColor mutedText(const QPalette &palette);
/// The accent as a line, a dot or a link upon the base.
[[nodiscard]] QColor accent(const QPalette &palette);
/// The accent as a ground under accentText: the filled button, the selected row.
[[nodiscard]] QColor accentFill();
[[nodiscard]] QColor accentText();
/// The ground of a selected row; greyer while the keyboard is elsewhere.
[[nodiscard]] QColor selectionFill(bool viewHasFocus);
/// For what deletes, and for what failed.
[[nodiscard]] QColor danger(const QPalette &palette);
/// For what can't be undone.
[[nodiscard]] QColor caution(const QPalette &palette);

/// The colour that is seen when `upper`, perhaps translucent, lies on the opaque `ground`.
[[nodiscard]] QColor over(const QColor &upper, const QColor &ground);
/// Contrast of two opaque colours, 1 to 21, by relative luminance.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

enum class TextRole { Body, RowTitle, Help, PageTitle, BandName };

/// A font of the type scale, made from the desktop's.
[[nodiscard]] QFont font(TextRole role, const QFont &desktop);
/// Gives the widget the role's font, and muted ink when it is help.
void setTextRole(QWidget *widget, TextRole role);

/// Rows of 32 and a rounded, filled selection.
void makeSourceList(QAbstractItemView *view);
/// Rows of 28, alternating, with no grid. The view has its model already.
void makeList(QAbstractItemView *view);
/// Filled with the accent while enabled. A dialog's default button is so without being told.
void makeAccentButton(QPushButton *button);
/// Red: for Delete.
void makeDangerButton(QPushButton *button);
/// Rounder corners, a magnifying glass and a button that clears it; `cleared` is called when that
/// was pressed.
void makeSearchField(QLineEdit *field, const std::function<void()> &cleared);

/// Paints the ground of a shaded settings row, whose left edge runs on outside of `bounds`.
void drawShadedRow(QPainter *painter, const QRect &bounds, const QPalette &palette);
/// Paints the mark of a pending change round that point; upon a selection in the selection's ink.
void drawPendingDot(QPainter *painter, const QPointF &centre, const QPalette &palette,
                    bool selected = false);
/// Paints the blue band, the darker end at its lower edge.
void drawBand(QPainter *painter, const QRect &band, const QPalette &palette);

/// Puts the program's own colours (accent, shading, muted and disabled ink) into a palette whose
/// window, base and text are somebody else's.
void tunePalette(QPalette &palette);

/// The palettes that pictures are taken with, and what a desktop without a palette gets (light).
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

/// Gives the program its style. Call once, before the first widget is made.
void apply(QApplication &application);

} // namespace varnel::Theme
