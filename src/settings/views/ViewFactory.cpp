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

/// What a view of several settings says of itself; each setting's own words stand at its list.
struct ChoiceGroup {
    GenericView::Caption caption;
    QStringList comboBoxNames;
};

const QHash<QString, ChoiceGroup> &choiceGroups()
{
    static const QHash<QString, ChoiceGroup> groups {
        {QStringLiteral("LockDockView"),
         {{QStringLiteral("Lock the Dock"),
           QStringLiteral("What can no longer be changed by dragging")},
          {QStringLiteral("contentsComboBox"), QStringLiteral("posComboBox"),
           QStringLiteral("sizeComboBox")}}},
        {QStringLiteral("DisplayControlView"),
         {{QStringLiteral("Controls over the film"),
           QStringLiteral("When the display control and the title bar are seen")},
          {QStringLiteral("displayControlHiddenComboBox"),
           QStringLiteral("displayControlVisibleComboBox"), QStringLiteral("titleBarComboBox")}}},
    };
    return groups;
}

std::unique_ptr<GenericView> makeChoiceView(const ViewContext &context,
                                            const QList<const SettingRow *> &rows,
                                            const GenericView::Caption &caption)
{
    const auto group = choiceGroups().constFind(rows.front()->viewClass);
    if (group == choiceGroups().constEnd())
        return std::make_unique<ChoiceView>(context, rows, caption,
                                            QStringList(QStringLiteral("comboBox")));
    return std::make_unique<ChoiceView>(context, rows, group->caption, group->comboBoxNames);
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
