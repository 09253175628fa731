#pragma once

#include "cli/Table.h"
#include "settings/SettingAccess.h"

#include <QJsonObject>

namespace varnel::cli {

/// A setting with what a home holds for it.
struct SettingReport {
    const SettingRow *row = nullptr;
    SettingReading reading;
    QString path; ///< of the file that holds it
    QList<FurtherFile> further; ///< of its domain
};

/// Everything about the setting and its value.
[[nodiscard]] QJsonObject settingObject(const SettingReport &report);

/// The value that the setting exchanges: an integer, or a text.
[[nodiscard]] QJsonValue exchangedJson(const SettingRow &row, const SettingValue &value);

/// An object as a document of its own: with the version of its shape, a line feed at the end.
[[nodiscard]] QByteArray jsonDocument(QJsonObject object);

/// A list of settings under a name.
[[nodiscard]] QJsonObject settingsObject(const QString &name, const QList<SettingReport> &reports);

/// Number, name, value in words; values other than the default stand out.
[[nodiscard]] QList<Table::Cell> settingCells(const SettingReport &report);

/// The same as settingObject() in words: a field a line, then the choices.
[[nodiscard]] QString settingSheet(const SettingReport &report, const Style &style);

} // namespace varnel::cli
