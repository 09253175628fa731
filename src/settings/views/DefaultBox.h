#pragma once

#include <QString>

class QCheckBox;
class QWidget;

namespace varnel {

/// What stands for "use default value" where a setting exchanges a text.
[[nodiscard]] inline QString defaultText()
{
    return QStringLiteral("-1");
}

/// The box "use default value" of a control that has no such choice in itself.
[[nodiscard]] QCheckBox *makeDefaultBox(QWidget *parent, const QString &settingLabel);

} // namespace varnel
