#include "settings/views/DefaultBox.h"

#include <QCheckBox>

namespace varnel {

QCheckBox *makeDefaultBox(QWidget *parent, const QString &settingLabel)
{
    auto *box = new QCheckBox(QStringLiteral("use default value"), parent);
    box->setObjectName(QStringLiteral("checkBox"));
    // The words alone would not tell several such boxes of a page apart.
    box->setAccessibleName(settingLabel + u": " + box->text());
    return box;
}

} // namespace varnel
