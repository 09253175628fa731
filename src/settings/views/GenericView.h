#pragma once

#include "settings/SettingAccess.h"
#include "settings/views/ViewContext.h"

#include <QList>
#include <QWidget>

#include <optional>

class QBoxLayout;
class QLabel;

namespace varnel {

class ChangeReceiver;
class ElidedLabel;

/// One row of a hidden-settings page: the control of a setting, or of a few that belong together.
///
/// It knows the value last read from disk, reports a user's edits to its receiver (old value first,
/// then the new one) and writes values through the setting's catalogue row. Its object name is the
/// view class of that row. Widgets are made when the row is first put on a page; its state is there
/// before.
class GenericView : public QWidget {
    Q_OBJECT

public:
    /// The texts at the left of the row.
    struct Caption {
        QString title;
        QString help;
    };

    /// `settings` are the catalogue rows of one view class, at least one.
    GenericView(const ViewContext &context, QList<const SettingRow *> settings,
                const Caption &caption);

    /// Not owned; null drops all reports.
    void setParentView(ChangeReceiver *receiver);

    /// Whether the row's background is painted, which is what makes rows alternate.
    [[nodiscard]] bool needToDrawBackground() const;
    void setNeedToDrawBackground(bool need);

    void changeValue(int settingId, int value, const QString &extra);
    void backupValue(int settingId, int value, const QString &extra);

    /// The old value that goes with the next report.
    [[nodiscard]] virtual int backupValueInt() const { return backupNumber; }
    [[nodiscard]] QString backupValueStr() const { return backupText; }

    [[nodiscard]] const QList<const SettingRow *> &settings() const { return rows; }
    [[nodiscard]] bool carries(int settingId) const;

    // Views of several settings tell them apart by their place, in number order.
    [[nodiscard]] int getViewID(int place = 0) const;
    [[nodiscard]] QString getViewDescription(int place = 0) const;
    [[nodiscard]] QString getLocationString() const;
    [[nodiscard]] QString getShortLocationString() const;
    [[nodiscard]] QString getActionString(int settingId, const SettingValue &value) const;

    /// Sets the control's first state, then reads.
    virtual void awakeFromNib();

    /// Reads what is on disk. With false the control is left alone, and what it shows counts as the
    /// value read where the setting is a choice.
    virtual void readData(bool updateControls) = 0;

    /// After a cancel: what reading leaves as a user made it follows the disk as well.
    virtual void dropEdit() { }

    /// Writes a value of a setting that this view carries, or removes its key; raises the restart
    /// flag. A failure is logged.
    void writeData(int settingId, const SettingValue &value);
    /// Writes what the controls show now.
    virtual void writeShownData() = 0;
    void writeData() { writeShownData(); }

    /// What the controls of the setting at that place stand for.
    [[nodiscard]] virtual SettingValue shownValue(int place) const = 0;

    /// Shows and reports the default of the setting at that place, as if a user had chosen it.
    virtual void useDefaultValue(int place) = 0;

    /// Marks the row when a change of it waits to be saved, and says beside the control what was
    /// before; or what waits, where the control shows something else. When nothing waits, it says
    /// what is on disk where the control shows something else.
    void showPendingState();
    [[nodiscard]] bool isPending() const { return pending; }

    /// Gives the control of that setting the keyboard.
    void focusControl(int settingId);
    /// Where the setting's control stands in the row; empty while there is none.
    [[nodiscard]] QRect controlPlace(int place) const;
    /// The keys of the setting at that place, or of all for -1, one below the other.
    [[nodiscard]] QString keys(int place = -1) const;
    [[nodiscard]] QString filePath() const;
    /// Shows the preference file in the file manager.
    void showFile() const;
    /// Whether there is a file manager to be asked, and a file to be shown.
    [[nodiscard]] bool canShowFile() const;
    /// Whether showFile() has to copy the file's path, having no desktop to ask.
    [[nodiscard]] bool copiesPath() const;

    /// Makes the row's widgets, once.
    void makeControls();
    /// Among rows of other groups, the help names this row's group.
    void showAmongOthers(bool others);

protected:
    /// Whether the controls of the setting at that place show the value, as well as they can.
    [[nodiscard]] virtual bool shows(int place, const SettingValue &value) const;

    /// Puts the controls into the column at the right of the row; the first line is the one that
    /// stands level with the title.
    virtual void buildControls(QBoxLayout *column) = 0;

    /// A line below a control: room for the note on the next setting, which takes what the help
    /// leaves free at its left, too; or, with `leading`, that at the left end of the last `width`
    /// units and the note at the right one.
    QBoxLayout *noteLine(QWidget *leading = nullptr, int width = 260);

    /// Notes the control of the next setting; a single one is the title's.
    void takeControl(QWidget *control);

    [[nodiscard]] const SettingRow &setting() const { return *rows.front(); }
    [[nodiscard]] SettingReading readSetting() const;
    [[nodiscard]] const ViewContext &viewContext() const { return context; }
    void setBackupValueInt(int value) { backupNumber = value; }
    void setBackupValueStr(const QString &value) { backupText = value; }

    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString whereItIsKept() const;
    [[nodiscard]] std::optional<SettingValue> waitingValue(int place) const;
    [[nodiscard]] QString noteOf(int place) const;
    void placeNotes();
    [[nodiscard]] int leftOfNote(const QRect &line) const;

    ViewContext context;
    QList<const SettingRow *> rows;
    Caption caption;
    ChangeReceiver *parentView = nullptr;
    bool drawsBackground = false;
    int backupNumber = 0;
    QString backupText = QStringLiteral("");
    QLabel *title = nullptr;
    QLabel *help = nullptr;
    QList<QWidget *> controls; ///< one for each setting, once there are widgets
    QList<ElidedLabel *> notes; ///< one for each setting, once there are widgets
    QList<QWidget *> noteRooms; ///< in the layout, one for each note; null where it is itself there
    bool pending = false;
};

} // namespace varnel
