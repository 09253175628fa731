#pragma once

#include "settings/BarItems.h"
#include "settings/views/ControlState.h"
#include "settings/views/GenericView.h"

#include <array>

namespace varnel {

/// The four items of the browser's bookmarks bar, a box for each and one for the default.
class BookmarkBarView : public GenericView {
    Q_OBJECT

public:
    enum Item { ReadingList, TopSites, AddressBook, Bonjour, ItemCount = BarItems::count };

    BookmarkBarView(const ViewContext &context, const QList<const SettingRow *> &settings,
                    const Caption &caption);

    [[nodiscard]] QString getReadingListViewDescription() const;
    [[nodiscard]] QString getTopSitesViewDescription() const;
    [[nodiscard]] QString getAddressBookViewDescription() const;
    [[nodiscard]] QString getBonjourViewDescription() const;

    [[nodiscard]] int currentCheckBoxValue(Item item) const { return reportedItems[item]; }
    [[nodiscard]] int currentDefaultCheckBoxValue() const { return reportedDefault; }

    /// Enables or disables the four item boxes.
    void checkDefaultCheckbox(bool enable);

    void readingListCheckBoxChangeValue() { itemCheckBoxChangeValue(ReadingList); }
    void topSitesCheckBoxChangeValue() { itemCheckBoxChangeValue(TopSites); }
    void addressBookCheckBoxChangeValue() { itemCheckBoxChangeValue(AddressBook); }
    void bonjourCheckBoxChangeValue() { itemCheckBoxChangeValue(Bonjour); }
    void defaultCheckBoxChangeValue();

    void readData(bool updateControls) override;
    void writeShownData() override;
    [[nodiscard]] SettingValue shownValue(int place) const override;
    void useDefaultValue(int place) override;

protected:
    void buildControls(QBoxLayout *column) override;

private:
    QCheckBox *makeItemBox(Item item);
    void itemCheckBoxChangeValue(Item item);
    void showItems(const BarItems &shown);
    void takeBoxStates();
    [[nodiscard]] QString itemDigits() const;

    std::array<ControlState<QCheckBox, bool>, ItemCount> items;
    ControlState<QCheckBox, bool> defaultBox;
    std::array<int, ItemCount> reportedItems {};
    int reportedDefault = 0;
};

} // namespace varnel
