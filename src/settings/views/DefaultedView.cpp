#include "settings/views/DefaultedView.h"

#include "settings/ValueText.h"
#include "settings/views/DefaultBox.h"

#include <QBoxLayout>

namespace varnel {

void DefaultedView::checkBoxChangeValue()
{
    if (checkBox.value() == reportedBox)
        return;
    setDefaultCheckBoxStat();
    takeBoxState();
    reportOldValue();
    if (!reportedBox) {
        showPendingState();
        return;
    }
    const SettingValue value = defaultValue(setting());
    changeValue(getViewID(), value.number, value.text);
}

void DefaultedView::useDefaultValue(int)
{
    showBox(true);
    checkBoxChangeValue();
}

SettingValue DefaultedView::shownValue(int) const
{
    return boxIsOn() ? defaultValue(setting()) : controlValue();
}

void DefaultedView::reportOldValue()
{
    // A number has no text and a text no number.
    backupValue(getViewID(), backupValueInt(), backupValueStr());
}

QBoxLayout *DefaultedView::boxLine(int width)
{
    QCheckBox *box = makeDefaultBox(this, setting().label);
    checkBox.attach(box, this, [this] { checkBoxChangeValue(); });
    return noteLine(box, width);
}

} // namespace varnel
