#include "settings/views/ViewFactory.h"

#include "settings/Catalogue.h"
#include "settings/views/BookmarkBarView.h"
#include "settings/views/ChoiceView.h"
#include "settings/views/FolderView.h"
#include "settings/views/PrefixView.h"
#include "settings/views/SliderView.h"
#include "settings/views/StepperView.h"

#include <QHash>

namespace varnel {

namespace {

/// The lists of a view of several settings; its caption is its own, each setting's stands at its
/// list.
const QHash<QString, QStringList> &listNames()
{
    static const QHash<QString, QStringList> names {
        {QStringLiteral("LockDockView"),
         {QStringLiteral("contentsComboBox"), QStringLiteral("posComboBox"),
          QStringLiteral("sizeComboBox")}},
        {QStringLiteral("DisplayControlView"),
         {QStringLiteral("displayControlHiddenComboBox"),
          QStringLiteral("displayControlVisibleComboBox"), QStringLiteral("titleBarComboBox")}},
    };
    return names;
}

std::unique_ptr<GenericView> makeChoiceView(const ViewContext &context,
                                            const QList<const SettingRow *> &rows,
                                            const GenericView::Caption &caption)
{
    const QString &viewClass = rows.front()->viewClass;
    const RowCaption *several = captionOfSeveral(viewClass);
    return std::make_unique<ChoiceView>(
        context, rows, several ? GenericView::Caption {several->title, several->help} : caption,
        listNames().value(viewClass, {QStringLiteral("comboBox")}));
}

} // namespace

std::unique_ptr<GenericView> makeSettingView(const QString &viewClass, const ViewContext &context)
{
    const QList<const SettingRow *> rows = rowsOfView(viewClass);
    const GenericView::Caption caption {rows.front()->label, rows.front()->help};
    switch (rows.front()->control) {
    case ControlKind::ComboBox:
        break;
    case ControlKind::Slider:
        return std::make_unique<SliderView>(context, rows, caption);
    case ControlKind::Stepper:
        return std::make_unique<StepperView>(context, rows, caption);
    case ControlKind::TextField:
        return std::make_unique<PrefixView>(context, rows, caption);
    case ControlKind::FolderField:
        return std::make_unique<FolderView>(context, rows, caption);
    case ControlKind::CheckBoxes:
        return std::make_unique<BookmarkBarView>(context, rows, caption);
    }
    return makeChoiceView(context, rows, caption);
}

} // namespace varnel
