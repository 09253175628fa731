#include "settings/views/BookmarkBarView.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "settings/ValueText.h"
#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QVBoxLayout>

namespace varnel {

namespace {

/// The boxes' object names, in the items' order.
QString itemBoxName(BookmarkBarView::Item item)
{
    static const QStringList names {
        QStringLiteral("readingListCheckBox"), QStringLiteral("topSitesCheckBox"),
        QStringLiteral("addressBookCheckBox"), QStringLiteral("bonjourCheckBox")};
    return names.at(item);
}

} // namespace

BookmarkBarView::BookmarkBarView(const ViewContext &context,
                                 const QList<const SettingRow *> &settings, const Caption &caption)
    : GenericView(context, settings, caption)
{
}

QString BookmarkBarView::getReadingListViewDescription() const
{
    return setting().keywords.value(ReadingList);
}

QString BookmarkBarView::getTopSitesViewDescription() const
{
    return setting().keywords.value(TopSites);
}

QString BookmarkBarView::getAddressBookViewDescription() const
{
    return setting().keywords.value(AddressBook);
}

QString BookmarkBarView::getBonjourViewDescription() const
{
    return setting().keywords.value(Bonjour);
}

void BookmarkBarView::checkDefaultCheckbox(bool enable)
{
    varnelLog(lcSettings, QStringLiteral("checkDefaultCheckbox"));
    for (auto &item : items)
        item.setEnabled(enable);
}

void BookmarkBarView::readData(bool updateControls)
{
    const SettingReading reading = readSetting();
    if (updateControls) {
        defaultBox.show(!reading.found);
        showItems(reading.found ? BarItems::fromText(reading.value.text) : BarItems());
        checkDefaultCheckbox(reading.found);
    }
    takeBoxStates();
    if (!reading.found) {
        setBackupValueStr(defaultText());
        return;
    }
    varnelLog(lcSettings,
              fillIn(u"currentDefaultCheckBoxValue: %ld", {QString::number(reportedDefault)}));
    setBackupValueStr(itemDigits());
}

void BookmarkBarView::showItems(const BarItems &shown)
{
    for (std::size_t item = 0; item < ItemCount; ++item)
        items[item].show(shown.shown[item]);
}

void BookmarkBarView::takeBoxStates()
{
    for (std::size_t item = 0; item < ItemCount; ++item)
        reportedItems[item] = items[item].value() ? 1 : 0;
    reportedDefault = defaultBox.value() ? 1 : 0;
}

QString BookmarkBarView::itemDigits() const
{
    BarItems shown;
    for (std::size_t item = 0; item < ItemCount; ++item)
        shown.shown[item] = items[item].value();
    return shown.text();
}

SettingValue BookmarkBarView::shownValue(int) const
{
    return {0, defaultBox.value() ? defaultText() : itemDigits()};
}

void BookmarkBarView::useDefaultValue(int)
{
    defaultBox.show(true);
    defaultCheckBoxChangeValue();
}

void BookmarkBarView::itemCheckBoxChangeValue(Item item)
{
    const int state = items[item].value() ? 1 : 0;
    if (state == reportedItems[item])
        return;
    reportedItems[item] = state;
    backupValue(getViewID(), 0, backupValueStr());
    changeValue(getViewID(), 0, shownValue(0).text);
}

void BookmarkBarView::defaultCheckBoxChangeValue()
{
    const int state = defaultBox.value() ? 1 : 0;
    if (state == reportedDefault)
        return;
    checkDefaultCheckbox(state == 0);
    backupValue(getViewID(), 0, backupValueStr());
    changeValue(getViewID(), 0, shownValue(0).text);
    reportedDefault = state;
}

void BookmarkBarView::writeShownData()
{
    writeData(getViewID(), shownValue(0));
}

QCheckBox *BookmarkBarView::makeItemBox(Item item)
{
    auto *box = new QCheckBox(BarItems::allNames().at(item), this);
    box->setObjectName(itemBoxName(item));
    items[item].attach(box, this, [this, item] { itemCheckBoxChangeValue(item); });
    return box;
}

void BookmarkBarView::buildControls(QBoxLayout *column)
{
    for (const Item item : {ReadingList, TopSites, AddressBook, Bonjour}) {
        QCheckBox *box = makeItemBox(item);
        box->setFixedWidth(Theme::fieldWidth);
        column->addWidget(box, 0, Qt::AlignRight);
        if (item == ReadingList)
            takeControl(box);
    }
    QCheckBox *box = makeDefaultBox(this, setting().label);
    box->setObjectName(QStringLiteral("defaultCheckBox"));
    defaultBox.attach(box, this, [this] { defaultCheckBoxChangeValue(); });
    column->addLayout(noteLine(box));
}

} // namespace varnel
