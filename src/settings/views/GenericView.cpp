#include "settings/views/GenericView.h"

#include "platform/Desktop.h"
#include "settings/Catalogue.h"
#include "settings/ValueText.h"
#include "settings/views/ChangeReceiver.h"
#include "settings/views/RowMenu.h"
#include "ui/ElidedLabel.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// The title is level with the middle of the first control, which is so high; the help follows at
/// one distance whatever that control is, which beside a list is level with the note below it.
QBoxLayout *captionColumn(QLabel *title, QLabel *help, int firstHeight)
{
    const int word = title->fontMetrics().height();
    const int highest = std::max(firstHeight, Theme::controlHeight);
    auto *column = new QVBoxLayout;
    column->setSpacing(0);
    column->addSpacing(std::max(0, (firstHeight - word) / 2));
    column->addWidget(title);
    column->addSpacing(Theme::gapTiny + std::max(0, highest - word) / 2);
    column->addWidget(help);
    column->addStretch();
    return column;
}

/// The sentence of a value, or words where it has none of its own: the default of some settings is
/// described with its "-1".
QString sentenceFor(const SettingRow &row, const SettingValue &value)
{
    const bool hasOwn = row.kind == ValueKind::Choice || !row.defaultAction.isNull();
    return !hasOwn && value == defaultValue(row) ? labelText(row, value)
                                                 : actionSentence(row, value);
}

/// Whether saving the value would leave the file as it is, as far as the reading tells: a default
/// whose setting has further keys, or reads only some kinds of objects, may take something away.
bool standsSo(const SettingRow &row, const SettingReading &onDisk, const SettingValue &value)
{
    if (onDisk.notText || !meanTheSame(row, onDisk.value, value))
        return false;
    if (value != defaultValue(row))
        return onDisk.found;
    return !onDisk.found && row.keys.size() == 1 && row.mechanism != Mechanism::BarItems;
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

void GenericView::showAmongOthers(bool others)
{
    if (help)
        help->setText(others ? getShortLocationString() + u" · " + caption.help : caption.help);
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
    showPendingState();
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
    help = new QLabel(caption.help, this);
    help->setObjectName(QStringLiteral("helpLabel"));
    help->setWordWrap(true);
    Theme::setTextRole(help, Theme::TextRole::Help);

    auto *column = new QVBoxLayout;
    column->setSpacing(Theme::gapTiny);
    buildControls(column);
    const int firstHeight = column->itemAt(0)->sizeHint().height();
    column->addStretch();

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(Theme::gapLarge, Theme::gap, Theme::gapLarge, Theme::gap);
    line->setSpacing(Theme::gapLarge);
    line->addLayout(captionColumn(title, help, firstHeight), 1);
    line->addLayout(column);
    setToolTip(whereItIsKept());
    new RowMenu(*this);
    showPendingState();
}

QBoxLayout *GenericView::noteLine(QWidget *leading, int width)
{
    auto *note = new ElidedLabel(this);
    notes.append(note);
    note->setObjectName(QStringLiteral("noteLabel"));
    note->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    note->setTextFormat(Qt::PlainText);
    note->setElideMode(Qt::ElideRight);
    // A long note must not push the controls about.
    note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    Theme::setTextRole(note, Theme::TextRole::Help);
    auto *line = new QHBoxLayout;
    noteRooms.append(leading ? nullptr : new QWidget(this));
    if (!leading) {
        noteRooms.last()->setFixedHeight(note->sizeHint().height());
        line->addWidget(noteRooms.last());
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

std::optional<SettingValue> GenericView::waitingValue(int place) const
{
    return parentView ? parentView->pendingValue(rows[place]->id) : std::nullopt;
}

bool GenericView::shows(int place, const SettingValue &value) const
{
    return meanTheSame(*rows[place], value, shownValue(place));
}

QString GenericView::noteOf(int place) const
{
    // Written anew with each step of a slider: it reads no file, and its sentences are not logged.
    const SettingRow &row = *rows[place];
    const SettingReading onDisk = context.access.lastSeen(row);
    if (const std::optional<SettingValue> waiting = waitingValue(place)) {
        if (*waiting != shownValue(place))
            return QStringLiteral("pending: ") + sentenceFor(row, *waiting);
        if (standsSo(row, onDisk, *waiting))
            return QStringLiteral("as it is on disk");
        const QString old = readInWords(row, onDisk);
        return QStringLiteral("was: ") + (old.isEmpty() ? QStringLiteral("empty") : old);
    }
    if (parentView && parentView->wasNotSaved(row.id)) {
        const QString still = readInWords(row, onDisk);
        return QStringLiteral("not saved; still: ")
            + (still.isEmpty() ? QStringLiteral("empty") : still);
    }
    if (!shows(place, onDisk.value))
        return QStringLiteral("saved: ") + sentenceFor(row, onDisk.value);
    return onDisk.notText ? notTextNote() : QString();
}

void GenericView::showPendingState()
{
    bool any = false;
    for (int place = 0; place < notes.size(); ++place) {
        const QString note = noteOf(place);
        const bool failed = parentView && parentView->wasNotSaved(rows[place]->id);
        notes[place]->setInk(failed ? &Theme::danger : nullptr);
        notes[place]->showText(note);
        controls[place]->setAccessibleDescription(note);
        any = any || waitingValue(place);
    }
    if (any != pending)
        update();
    pending = any;
}

QString GenericView::whereItIsKept() const
{
    if (setting().mechanism == Mechanism::LibraryFolder)
        return QStringLiteral("Library\nInvisible flag of the folder");
    return filePath().mid(context.access.home().path.size() + 1) + u'\n' + keys();
}

QString GenericView::keys(int place) const
{
    QStringList lines;
    for (const SettingRow *row : place < 0 ? rows : rows.mid(place, 1)) {
        const bool nested = row->mechanism == Mechanism::NestedChoice;
        lines += row->keys.join(nested ? QStringLiteral(" → ") : QStringLiteral("\n"));
    }
    return lines.join(u'\n');
}

QString GenericView::filePath() const
{
    return context.access.filePath(setting());
}

bool GenericView::canShowFile() const
{
    return context.desktop && context.access.fileExists(setting());
}

bool GenericView::copiesPath() const
{
    return context.desktop && !context.desktop->isReachable();
}

void GenericView::showFile() const
{
    if (!canShowFile())
        return;
    if (context.desktop->isReachable())
        context.desktop->reveal(filePath());
    else
        QApplication::clipboard()->setText(filePath());
}

void GenericView::takeControl(QWidget *control)
{
    if (rows.size() == 1)
        title->setBuddy(control);
    controls.append(control);
}

void GenericView::focusControl(int settingId)
{
    for (qsizetype place = 0; place < rows.size(); ++place) {
        QWidget *control = controls.value(place);
        if (rows[place]->id != settingId || control == nullptr)
            continue;
        // The keyboard is at what can take it: a slider at its default is disabled, its box is not.
        if (!control->isEnabled())
            for (QWidget *other : findChildren<QWidget *>())
                if (other->isEnabled() && (other->focusPolicy() & Qt::TabFocus) != 0) {
                    control = other;
                    break;
                }
        control->setFocus(Qt::OtherFocusReason);
    }
}

QRect GenericView::controlPlace(int place) const
{
    const QWidget *control = controls.value(place);
    return control ? QRect(control->mapTo(this, QPoint()), control->size()) : QRect();
}

/// Behind the words of the help, where they stand on the same line.
int GenericView::leftOfNote(const QRect &line) const
{
    const QRect words =
        help->fontMetrics().boundingRect(help->geometry(), int(Qt::TextWordWrap), help->text());
    return words.bottom() < line.top() || words.top() > line.bottom()
        ? Theme::gapLarge
        : words.right() + 1 + Theme::gapLarge;
}

void GenericView::placeNotes()
{
    for (qsizetype place = 0; place < noteRooms.size(); ++place) {
        QWidget *room = noteRooms[place];
        if (!room)
            continue;
        room->setFixedHeight(notes[place]->sizeHint().height());
        QRect line(room->mapTo(this, QPoint()), room->size());
        line.setLeft(std::min(line.left(), leftOfNote(line)));
        notes[place]->setGeometry(line);
    }
}

void GenericView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeNotes();
}

bool GenericView::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        placeNotes();

    // The file may lie elsewhere by now.
    if (event->type() == QEvent::ToolTip && layout())
        setToolTip(whereItIsKept());
    return QWidget::event(event);
}

void GenericView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (drawsBackground)
        Theme::drawShadedRow(&painter, rect(), palette());
    if (pending)
        Theme::drawPendingDot(
            &painter, {Theme::gapLarge / 2.0, title->geometry().center().y() + 0.5}, palette());
}

} // namespace varnel
