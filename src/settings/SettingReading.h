#pragma once

#include "plist/Value.h"
#include "settings/OldValues.h"
#include "settings/SettingRow.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace varnel {

/// The pair that a setting exchanges: its integer, and its string for string settings.
struct SettingValue {
    int number = 0;
    QString text = QStringLiteral("");

    bool operator==(const SettingValue &) const = default;
};

struct SettingReading {
    SettingValue value; ///< what the setting's own control would exchange after a fresh read
    /// Whether the key is there, with a value that the setting can show; for the Library folder,
    /// whether its flag could be read.
    bool found = false;
    /// Text settings: what is stored is no text, and the value is its text form.
    bool notText = false;
    // Text settings: the string as stored. Numbers: the raw number even where a control would clamp
    // it; -1 when not found. 1402 with its key missing reads as its default index.
};

/// A setting, the value that it has or had, and the one that it gets.
struct SettingChange {
    const SettingRow *row = nullptr;
    SettingValue oldValue;
    SettingValue newValue;

    bool operator==(const SettingChange &) const = default;
};

/// What stands at a path of keys of the setting's file; Kind::Missing where nothing does.
using StoredAt = std::function<plist::Value(const QStringList &keyPath)>;

/// What an old object under one of the setting's keys would have been read as.
[[nodiscard]] SettingReading readingOf(const SettingRow &row, const QList<OldKey> &keys);

/// A setting of a preference file, as its control would show it: not the Library folder.
[[nodiscard]] SettingReading readingOf(const SettingRow &row, const StoredAt &stored);

} // namespace varnel
