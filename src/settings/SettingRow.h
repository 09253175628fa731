#pragma once

#include "settings/RestartFlags.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace varnel {

/// The application group of a setting; in catalogue order by number (10xx Dock … 18xx QuickTime
/// Player).
enum class ModuleId {
    Dock,
    Finder,
    Safari,
    General,
    ScreenCapture,
    Mail,
    ITunes,
    TimeMachine,
    QuickTimePlayer
};

/// What a setting exchanges: a choice index, a number (-1 is the default), a string ("-1" is the
/// default).
enum class ValueKind { Choice, Number, String };

/// How a setting is read and written. Ordinary rows are Choice; each other is written once.
enum class Mechanism {
    Choice, ///< one key, one stored value for each choice
    DebugMenu, ///< reads one key, writes two alike
    LibraryPlaylist, ///< two keys, opposite booleans
    NestedChoice, ///< a key of a dictionary inside the file; never creates either
    LibraryFolder, ///< the invisible flag of the Library folder
    Number, ///< an integer
    Text, ///< a string
    BarItems, ///< an array of names, exchanged as "%d;%d;%d;%d"; never creates the file
};

/// What a choice writes; none removes the key.
using StoredValue = std::variant<std::monostate, bool, int, QString>;

struct Choice {
    QString label {};
    StoredValue writes {};
    QString action {}; ///< the sentence for this index; null: the row's otherAction
};

/// Which control edits the setting.
enum class ControlKind { ComboBox, Slider, Stepper, TextField, FolderField, CheckBoxes };

/// Everything that is true of one setting.
struct SettingRow {
    int id = 0;
    QString name {}; ///< short name for the terminal, lower case with hyphens, unique
    QString viewClass {}; ///< the view's class name; several rows may share one
    ModuleId module = ModuleId::General;
    QString file {}; ///< with its leading slash, appended to the preferences folder; null for
                     ///< LibraryFolder
    QStringList keys {}; ///< in writing order; for NestedChoice the path
    Mechanism mechanism = Mechanism::Choice;
    ValueKind kind = ValueKind::Choice;
    ControlKind control = ControlKind::ComboBox;
    QString type {}; ///< "boolean", "integer", "string", "array", "file flag": what is written
    QList<Choice> choices {};
    int initialIndex = 0; ///< the control's choice before the first read
    bool caseSensitive = false; ///< string choices: how the stored text is compared
    bool missingKeepsChoice =
        false; ///< reading leaves the control as it is when the key is missing
    QString defaultAction {}; ///< sentence for -1 / "-1" of numbers and strings, where it differs
    QString otherAction {}; ///< sentence of every index without its own; for numbers and strings
                            ///< the format
    QStringList keywords {}; ///< search texts; the last one is what the index holds
    bool searchable = true; ///< whether the search index holds the row
    std::optional<RestartFlag> restarts {};
    QString label {}; ///< plain words for the row in the window
    QString help {}; ///< one line below it
    int minimum = 0; ///< numbers: the control's range
    int maximum = 0;
    int shownWhenMissing = 0; ///< numbers: what the control shows when the key is missing

    /// The index of the choice that stands for the default: the last.
    [[nodiscard]] int defaultIndex() const { return int(choices.size()) - 1; }
};

} // namespace varnel
