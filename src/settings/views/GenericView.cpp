#include "settings/views/GenericView.h"

#include "settings/Catalogue.h"
#include "settings/views/ChangeReceiver.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

QBoxLayout *captionColumn(QLabel *title, QLabel *help)
{
    auto *column = new QVBoxLayout;
    column->setSpacing(Theme::gapTiny);
    column->addWidget(title);
    column->addWidget(help);
    column->addStretch();
    return column;
}

/// The title stands level with the first control, whatever that is as high as.
void levelTitle(QLabel *title, const QLayout &controls)
{
    const QLayoutItem *first = controls.itemAt(0);
    if (first)
        title->setMinimumHeight(first->sizeHint().height());
}

} // namespace

GenericView::GenericView(const ViewContext &context, QList<const SettingRow *> settings,
                         const Caption &caption)
    : context(context), rows(std::move(settings)), caption(caption)
{
    setObjectName(setting().viewClass);
}

void GenericView::setParentView(ChangeReceiver *receiver)
{
    parentView = receiver;
}

bool GenericView::needToDrawBackground() const
{
    return drawsBackground;
}

void GenericView::setNeedToDrawBackground(bool need)
{
    if (need != drawsBackground)
        update(); // all of it, not only where something else is drawn anew
    drawsBackground = need;
}

void GenericView::changeValue(int settingId, int value, const QString &extra)
{
    if (!parentView)
        return;
    parentView->addDataToChangeDataList(settingId, value, extra);
    parentView->enableSaveButton();
}

void GenericView::backupValue(int settingId, int value, const QString &extra)
{
    if (parentView)
        parentView->addDataToBackupDataList(settingId, value, extra);
}

bool GenericView::carries(int settingId) const
{
    return std::any_of(rows.begin(), rows.end(),
                       [settingId](const SettingRow *row) { return row->id == settingId; });
}

int GenericView::getViewID(int place) const
{
    return rows.at(place)->id;
}

QString GenericView::getViewDescription(int place) const
{
    return rows.at(place)->keywords.value(rows.at(place)->keywords.size() - 1);
}

QString GenericView::getLocationString() const
{
    return locationString(setting());
}

QString GenericView::getShortLocationString() const
{
    return shortLocationString(setting());
}

QString GenericView::getActionString(int settingId, const SettingValue &value) const
{
    const SettingRow *row = findSetting(settingId);
    return row && carries(settingId) ? actionString(*row, value) : QString();
}

void GenericView::awakeFromNib()
{
    readData(true);
}

void GenericView::writeData(int settingId, const SettingValue &value)
{
    if (!carries(settingId))
        return;
    // A failure has been logged where it happened; the user's action goes on.
    static_cast<void>(context.access.write(*findSetting(settingId), value, context.flags));
}

SettingReading GenericView::readSetting() const
{
    return context.access.read(setting());
}

void GenericView::makeControls()
{
    if (layout())
        return;
    title = new QLabel(caption.title, this);
    title->setObjectName(QStringLiteral("titleLabel"));
    title->setWordWrap(true);
    Theme::setTextRole(title, Theme::TextRole::RowTitle);
    auto *help = new QLabel(caption.help, this);
    help->setObjectName(QStringLiteral("helpLabel"));
    help->setWordWrap(true);
    Theme::setTextRole(help, Theme::TextRole::Help);

    auto *controls = new QVBoxLayout;
    controls->setSpacing(Theme::gapTiny);
    buildControls(controls);
    controls->addStretch();
    levelTitle(title, *controls);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Theme::gapLarge, Theme::gap, Theme::gapLarge, Theme::gap);
    row->setSpacing(Theme::gapLarge);
    row->addLayout(captionColumn(title, help), 1);
    row->addLayout(controls);
    setToolTip(whereItIsKept());
}

QBoxLayout *GenericView::noteLine(QWidget *leading, int width)
{
    auto *note = new QLabel(this);
    note->setObjectName(QStringLiteral("noteLabel"));
    note->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A long note must not push the controls about.
    note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Theme::setTextRole(note, Theme::TextRole::Help);
    auto *line = new QHBoxLayout;
    if (!leading) {
        line->addWidget(note);
        return line;
    }
    auto *box = new QWidget(this);
    box->setFixedWidth(width);
    auto *inside = new QHBoxLayout(box);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(leading);
    inside->addWidget(note, 1);
    line->addStretch();
    line->addWidget(box);
    return line;
}

QString GenericView::whereItIsKept() const
{
    if (setting().mechanism == Mechanism::LibraryFolder)
        return QStringLiteral("Library\nInvisible flag of the folder");
    QStringList keys;
    for (const SettingRow *row : rows) {
        const bool nested = row->mechanism == Mechanism::NestedChoice;
        keys += row->keys.join(nested ? QStringLiteral(" → ") : QStringLiteral("\n"));
    }
    return QStringLiteral("Library/Preferences") + setting().file + u'\n' + keys.join(u'\n');
}

void GenericView::paintEvent(QPaintEvent *)
{
    if (!drawsBackground)
        return;
    QPainter painter(this);
    Theme::drawShadedRow(&painter, rect(), palette());
}

} // namespace varnel
