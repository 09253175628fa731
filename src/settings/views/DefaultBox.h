#pragma once

#include <QString>

class QCheckBox;
class QWidget;

namespace varnel {

/// The box "use default value" of a control that has no such choice in itself.
[[nodiscard]] QCheckBox *makeDefaultBox(QWidget *parent, const QString &settingLabel);

} // namespace varnel
