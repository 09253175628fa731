#pragma once

#include <QLoggingCategory>

// Messages of the first five categories have fixed texts, which people and scripts look for. What
// else the program has to say, about files and children, goes to lcIo.
Q_DECLARE_LOGGING_CATEGORY(lcShell) // "varnel.shell"
Q_DECLARE_LOGGING_CATEGORY(lcSettings) // "varnel.settings"
Q_DECLARE_LOGGING_CATEGORY(lcBackup) // "varnel.backup"
Q_DECLARE_LOGGING_CATEGORY(lcLoginItems) // "varnel.loginitems"
Q_DECLARE_LOGGING_CATEGORY(lcSysInfo) // "varnel.sysinfo"
Q_DECLARE_LOGGING_CATEGORY(lcIo) // "varnel.io"

/// Logs a finished text as it stands (no quotes, no blanks added, "%" not interpreted):
/// varnelLog(lcShell, text).
#define varnelLog(category, text) qCInfo(category, "%ls", qUtf16Printable(text))
