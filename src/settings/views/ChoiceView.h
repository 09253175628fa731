#pragma once

#include "settings/views/ChoiceField.h"
#include "settings/views/GenericView.h"

#include <vector>

namespace varnel {

/// Choice lists: one, or several under one another where settings belong together.
class ChoiceView : public GenericView {
    Q_OBJECT

public:
    /// `comboBoxNames` are the lists' object names, one for each setting.
    ChoiceView(const ViewContext &context, const QList<const SettingRow *> &settings,
               const Caption &caption, QStringList comboBoxNames);

    /// The choices last reported and last read.
    [[nodiscard]] int currentComboBoxValue(int place = 0) const;
    [[nodiscard]] int backupComboBoxValue(int place = 0) const;
    [[nodiscard]] int backupValueInt() const override { return backupComboBoxValue(); }

    void comboBoxChangeValue(int place = 0);

    void awakeFromNib() override;
    void readData(bool updateControls) override;
    void writeShownData() override;
    [[nodiscard]] SettingValue shownValue(int place) const override;
    void useDefaultValue(int place) override;

protected:
    void buildControls(QBoxLayout *column) override;

private:
    QComboBox *makeComboBox(int place);
    void buildNamedList(QBoxLayout *column, int place);

    std::vector<ChoiceField> fields;
    QStringList comboBoxNames;
};

} // namespace varnel
