#include "ui/VarnelStyle.h"

#include "ui/StyleDrawing.h"
#include "ui/Theme.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QHeaderView>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QStyleOption>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <QVariant>

#include <algorithm>

namespace varnel {

namespace {

constexpr auto partProperty = "varnelPart";
constexpr int sortArrowSize = 12;

using StyleDrawing::ButtonKind;

ButtonKind buttonKind(const QStyleOption &option, const QWidget *widget)
{
    const VarnelStyle::Part part = VarnelStyle::part(widget);
    if (part == VarnelStyle::Part::DangerButton)
        return ButtonKind::Danger;
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    const bool isDefault = button && button->features.testFlag(QStyleOptionButton::DefaultButton);
    return part == VarnelStyle::Part::AccentButton || isDefault ? ButtonKind::Accent
                                                                : ButtonKind::Plain;
}

/// The bar spans the view and not the cell, so that it stands clear of both edges.
QRectF sourceListBarRect(const QStyleOption &option, const QWidget *widget)
{
    QRectF bar = option.rect;
    if (const auto *view = qobject_cast<const QAbstractScrollArea *>(widget)) {
        bar.setLeft(Theme::gapSmall);
        bar.setRight(view->viewport()->width() - Theme::gapSmall);
    }
    return bar.adjusted(0, 1, 0, -1);
}

bool wordyButton(const QStyleOption *option)
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    return button && !button->text.isEmpty();
}

bool sameGrounds(const QPalette &one, const QPalette &other)
{
    const auto roles = {QPalette::Window, QPalette::Base, QPalette::Button};
    return std::all_of(roles.begin(), roles.end(), [&](QPalette::ColorRole role) {
        return one.color(QPalette::Active, role) == other.color(QPalette::Active, role);
    });
}

/// The current row that is not selected: nothing else would say where the keyboard is.
void drawSourceListFocus(const QStyleOption &option, QPainter *painter, const QTreeView &tree,
                         const QRectF &bar)
{
    const QModelIndex row = tree.indexAt(option.rect.center());
    if (!tree.hasFocus() || !row.isValid() || row != tree.currentIndex()
        || tree.selectionModel()->isSelected(row))
        return;
    QStyleOption ring = option;
    ring.rect = bar.toAlignedRect();
    StyleDrawing::focusRing(painter, ring, Theme::floatingRadius);
}

/// The part of the ring round the current row that lies in one of its cells.
void drawRowFocus(const QStyleOption &option, QPainter *painter, const QTableView &table)
{
    const QModelIndex cell = table.indexAt(option.rect.center());
    if (!cell.isValid() || cell.row() != table.currentIndex().row())
        return;
    const QHeaderView &columns = *table.horizontalHeader();
    const int place = columns.visualIndex(cell.column());
    const int beyond = Theme::gap; // no end within this cell
    StyleDrawing::ringPart(
        painter, option,
        QRectF(option.rect)
            .adjusted(place > 0 ? -beyond : 0, 0, place < columns.count() - 1 ? beyond : 0, 0));
}

} // namespace

VarnelStyle::VarnelStyle() : QProxyStyle(QStringLiteral("Fusion")) { }

void VarnelStyle::setPart(QWidget *widget, Part part)
{
    widget->setProperty(partProperty, static_cast<int>(part));
}

VarnelStyle::Part VarnelStyle::part(const QWidget *widget)
{
    return widget ? static_cast<Part>(widget->property(partProperty).toInt()) : Part::None;
}

void VarnelStyle::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    // No desktop has said anything: the toolkit's own grey buttons would look disabled here.
    if (sameGrounds(palette, baseStyle()->standardPalette()))
        palette = Theme::lightPalette();
    Theme::tunePalette(palette);
}

QPalette VarnelStyle::standardPalette() const
{
    return Theme::lightPalette();
}

void VarnelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        StyleDrawing::buttonPanel(painter, *option, buttonKind(*option, widget));
        return;
    case PE_FrameLineEdit:
        StyleDrawing::fieldPanel(painter, *option,
                                 part(widget) == Part::SearchField ? Theme::floatingRadius
                                                                   : Theme::controlRadius);
        return;
    case PE_PanelLineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->lineWidth > 0) {
            proxy()->drawPrimitive(PE_FrameLineEdit, option, painter, widget);
            return;
        }
        break;
    case PE_Frame:
        StyleDrawing::box(painter, option->rect, 0, Qt::transparent,
                          Theme::hairline(option->palette));
        return;
    case PE_FrameFocusRect:
        // Buttons, choice lists and tabs show it on their ground.
        if (!drawItemPart(element, *option, painter, widget)
            && !qobject_cast<const QPushButton *>(widget)
            && !qobject_cast<const QComboBox *>(widget) && !qobject_cast<const QTabBar *>(widget))
            StyleDrawing::focusRing(painter, *option, Theme::controlRadius);
        return;
    case PE_IndicatorHeaderArrow:
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
            header && widget) {
            // Level with the word, which stands in the middle of the header's height.
            QStyleOptionHeader level = *header;
            level.rect =
                QRect(header->rect.right() - sortArrowSize,
                      (widget->height() - sortArrowSize) / 2 + 1, sortArrowSize, sortArrowSize);
            QProxyStyle::drawPrimitive(element, &level, painter, widget);
            return;
        }
        break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        StyleDrawing::checkBox(painter, *option);
        return;
    default:
        if (drawItemPart(element, *option, painter, widget))
            return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

bool VarnelStyle::drawItemPart(PrimitiveElement element, const QStyleOption &option,
                               QPainter *painter, const QWidget *widget) const
{
    switch (part(widget)) {
    case Part::SourceList:
        return drawSourceListPart(element, option, painter, widget);
    case Part::List:
        return drawListPart(element, option, painter, widget);
    default:
        return false;
    }
}

/// A whole row is chosen, so the row shows the focus and not one of its cells.
bool VarnelStyle::drawListPart(PrimitiveElement element, const QStyleOption &option,
                               QPainter *painter, const QWidget *widget) const
{
    const bool selected = option.state.testFlag(State_Selected);
    switch (element) {
    case PE_FrameFocusRect:
        return true;
    case PE_PanelItemViewItem:
        if (selected)
            painter->fillRect(option.rect, Theme::selectionFill(widget->hasFocus()));
        else if (const auto *table = qobject_cast<const QTableView *>(widget);
                 table && table->hasFocus())
            drawRowFocus(option, painter, *table);
        return selected;
    default:
        return false;
    }
}

bool VarnelStyle::drawSourceListPart(PrimitiveElement element, const QStyleOption &option,
                                     QPainter *painter, const QWidget *widget) const
{
    // A cell paints inside of itself only; a tree's bar begins before it, in the row.
    const auto barElement =
        qobject_cast<const QTreeView *>(widget) ? PE_PanelItemViewRow : PE_PanelItemViewItem;
    switch (element) {
    case PE_PanelItemViewRow:
    case PE_PanelItemViewItem:
        if (element == barElement) {
            const QRectF bar = sourceListBarRect(option, widget);
            StyleDrawing::sourceListBar(painter, option, bar, widget->hasFocus());
            if (const auto *tree = qobject_cast<const QTreeView *>(widget))
                drawSourceListFocus(option, painter, *tree, bar);
        }
        return true;
    case PE_FrameFocusRect: // the bar says it, by its colour
    case PE_IndicatorBranch:
        return true;
    default:
        return false;
    }
}

void VarnelStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    switch (element) {
    case CE_PushButtonLabel:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
            QStyleOptionButton inked = *button;
            inked.palette.setColor(QPalette::ButtonText,
                                   StyleDrawing::buttonText(*option, buttonKind(*option, widget)));
            QProxyStyle::drawControl(element, &inked, painter, widget);
            return;
        }
        break;
    case CE_TabBarTabShape:
        if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option)) {
            StyleDrawing::tab(painter, *tab);
            return;
        }
        break;
    case CE_HeaderSection:
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option)) {
            const bool last = header->position == QStyleOptionHeader::End
                || header->position == QStyleOptionHeader::OnlyOneSection;
            StyleDrawing::headerGround(painter, *option, !last);
            return;
        }
        break;
    case CE_HeaderEmptyArea:
        StyleDrawing::headerGround(painter, *option, false);
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void VarnelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     QPainter *painter, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_Slider && slider && slider->orientation == Qt::Horizontal
        && slider->tickPosition == QSlider::NoTicks) {
        StyleDrawing::slider(painter, *slider,
                             proxy()->subControlRect(control, option, SC_SliderGroove, widget),
                             proxy()->subControlRect(control, option, SC_SliderHandle, widget));
        return;
    }
    if (control == CC_ScrollBar && slider) {
        StyleDrawing::scrollBar(painter, *slider,
                                subControlRect(control, option, SC_ScrollBarSlider, widget));
        return;
    }
    if (const auto *list = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        control == CC_ComboBox && list && !list->editable) {
        drawChoiceList(*list, painter, widget);
        return;
    }
    if (const auto *spin = qstyleoption_cast<const QStyleOptionSpinBox *>(option);
        control == CC_SpinBox && spin) {
        // Like every other field: the toolkit's own edge is thicker, and lost on a dark ground.
        if (spin->state.testFlag(State_Enabled))
            StyleDrawing::box(painter, spin->rect, Theme::controlRadius,
                              spin->palette.color(QPalette::Base), Qt::transparent);
        QStyleOptionSpinBox inside = *spin;
        inside.frame = false;
        QProxyStyle::drawComplexControl(control, &inside, painter, widget);
        StyleDrawing::fieldEdge(painter, *option, Theme::controlRadius);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void VarnelStyle::drawChoiceList(const QStyleOptionComboBox &list, QPainter *painter,
                                 const QWidget *widget) const
{
    // The toolkit draws it into a picture first, which loses its last row or column of pixels, and
    // the edge with it, where the list begins amid a pixel of the screen.
    QStyleOptionButton panel;
    panel.QStyleOption::operator=(list);
    // The toolkit calls a list with the focus selected; on its plain ground that would be a white
    // ring.
    panel.state.setFlag(State_Selected, false);
    if (list.state.testFlag(State_On))
        panel.state = (panel.state | State_Sunken) & ~State_MouseOver;
    proxy()->drawPrimitive(PE_PanelButtonCommand, &panel, painter, widget);
    if (!list.subControls.testFlag(SC_ComboBoxArrow))
        return;
    QStyleOption arrow = static_cast<const QStyleOption &>(list);
    arrow.rect = proxy()->subControlRect(CC_ComboBox, &list, SC_ComboBoxArrow, widget);
    arrow.palette.setColor(QPalette::WindowText, list.palette.color(QPalette::ButtonText));
    proxy()->drawPrimitive(PE_IndicatorArrowDown, &arrow, painter, widget);
}

QRect VarnelStyle::subElementRect(SubElement element, const QStyleOption *option,
                                  const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (element == SE_LineEditContents && frame && frame->lineWidth > 0)
        return rect.adjusted(Theme::gapTiny, 0, -Theme::gapTiny, 0);
    return rect;
}

QRect VarnelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                  SubControl part, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_ScrollBar && slider)
        return StyleDrawing::scrollBarPart(*slider, part);
    const QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return rect.adjusted(Theme::gapTiny, 0, 0, 0); // in line with the fields' words
    return rect;
}

QSize VarnelStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                    const QSize &size, const QWidget *widget) const
{
    const QSize fitting = QProxyStyle::sizeFromContents(type, option, size, widget);
    const auto atLeast = [&fitting](int height) {
        return QSize(fitting.width(), std::max(fitting.height(), height));
    };
    switch (type) {
    case CT_PushButton:
        return wordyButton(option) ? atLeast(Theme::controlHeight) + QSize(Theme::gap, 0)
                                   : atLeast(Theme::controlHeight);
    case CT_ComboBox:
        return atLeast(Theme::controlHeight) + QSize(Theme::gapTiny, 0);
    case CT_LineEdit:
    case CT_SpinBox:
        return atLeast(Theme::controlHeight);
    case CT_ItemViewItem:
        if (part(widget) == Part::SourceList)
            return atLeast(Theme::sourceListRowHeight);
        return part(widget) == Part::List ? atLeast(Theme::listRowHeight) : fitting;
    default:
        return fitting;
    }
}

int VarnelStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                             const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return StyleDrawing::scrollBarWidth;
    case PM_TabBarIconSize:
        return Theme::tabIconSize;
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
    case PM_ButtonIconSize:
        return Theme::listIconSize;
    case PM_TabBarTabHSpace:
        return Theme::gapHuge;
    case PM_TabBarTabVSpace:
        return Theme::gapLarge;
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
        return 0; // the chosen tab's word does not jump
    case PM_HeaderMargin:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return Theme::gapSmall;
    case PM_FocusFrameHMargin:
        if (part(widget) == Part::List)
            return Theme::gapSmall - 1; // a cell's text begins under its header's
        return QProxyStyle::pixelMetric(metric, option, widget);
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
        return widget && widget->isWindow() ? Theme::pageMargin : Theme::gap;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int VarnelStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *answer) const
{
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_ItemView_ShowDecorationSelected:
        if (part(widget) == Part::SourceList)
            return 1; // the row is told that it is selected, not only the cell
        break;
    case SH_Table_GridLineColor:
        if (option) {
            // An opaque colour is asked for, as a number.
            const QColor line = Theme::over(Theme::hairline(option->palette),
                                            option->palette.color(QPalette::Base));
            return static_cast<int>(line.rgb());
        }
        break;
    default:
        break;
    }
    return QProxyStyle::styleHint(hint, option, widget, answer);
}

} // namespace varnel
