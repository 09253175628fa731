#include "settings/views/BookmarkBarView.h"

#include "base/Logging.h"
#include "base/Text.h"
#include "settings/views/DefaultBox.h"
#include "ui/Theme.h"

#include <QLabel>
#include <QVBoxLayout>

namespace varnel {

namespace {

struct ItemText {
    QString label;
    QString objectName;
};

const std::array<ItemText, BookmarkBarView::ItemCount> &itemTexts()
{
    static const std::array<ItemText, BookmarkBarView::ItemCount> texts {{
        {QStringLiteral("Reading List"), QStringLiteral("readingListCheckBox")},
        {QStringLiteral("Top Sites"), QStringLiteral("topSitesCheckBox")},
        {QStringLiteral("Address Book"), QStringLiteral("addressBookCheckBox")},
        {QStringLiteral("Bonjour"), QStringLiteral("bonjourCheckBox")},
    }};
    return texts;
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
        showItems(reading.found ? reading.value.text : QString());
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

void BookmarkBarView::showItems(const QString &digits)
{
    const QStringList states = digits.split(u';');
    for (int item = 0; item < ItemCount; ++item)
        items[std::size_t(item)].show(states.value(item) == u"1");
}

void BookmarkBarView::takeBoxStates()
{
    for (std::size_t item = 0; item < ItemCount; ++item)
        reportedItems[item] = items[item].value() ? 1 : 0;
    reportedDefault = defaultBox.value() ? 1 : 0;
}

QString BookmarkBarView::itemDigits() const
{
    QStringList digits;
    for (const auto &item : items)
        digits += item.value() ? QStringLiteral("1") : QStringLiteral("0");
    return fillIn(u"%d;%d;%d;%d", digits);
}

QString BookmarkBarView::shownValue() const
{
    return defaultBox.value() ? defaultText() : itemDigits();
}

void BookmarkBarView::itemCheckBoxChangeValue(Item item)
{
    const int state = items[item].value() ? 1 : 0;
    if (state == reportedItems[item])
        return;
    reportedItems[item] = state;
    backupValue(getViewID(), 0, backupValueStr());
    changeValue(getViewID(), 0, shownValue());
}

void BookmarkBarView::defaultCheckBoxChangeValue()
{
    const int state = defaultBox.value() ? 1 : 0;
    if (state == reportedDefault)
        return;
    checkDefaultCheckbox(state == 0);
    backupValue(getViewID(), 0, backupValueStr());
    changeValue(getViewID(), 0, shownValue());
    reportedDefault = state;
}

void BookmarkBarView::writeShownData()
{
    writeData(getViewID(), {0, shownValue()});
}

QCheckBox *BookmarkBarView::makeItemBox(Item item)
{
    const ItemText &text = itemTexts()[item];
    auto *box = new QCheckBox(text.label, this);
    box->setObjectName(text.objectName);
    items[item].attach(box);
    connect(box, &QCheckBox::clicked, this, [this, item] { itemCheckBoxChangeValue(item); });
    return box;
}

void BookmarkBarView::buildControls(QBoxLayout *column)
{
    for (const Item item : {ReadingList, TopSites, AddressBook, Bonjour}) {
        QCheckBox *box = makeItemBox(item);
        box->setFixedWidth(Theme::FieldWidth);
        column->addWidget(box, 0, Qt::AlignRight);
        if (item == ReadingList)
            titleLabel()->setBuddy(box);
    }
    QCheckBox *box = makeDefaultBox(this, setting().label);
    box->setObjectName(QStringLiteral("defaultCheckBox"));
    defaultBox.attach(box);
    column->addLayout(noteLine(box));
    connect(box, &QCheckBox::clicked, this, &BookmarkBarView::defaultCheckBoxChangeValue);
}

} // namespace varnel
