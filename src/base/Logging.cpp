#include "base/Logging.h"

Q_LOGGING_CATEGORY(lcShell, "varnel.shell")
Q_LOGGING_CATEGORY(lcSettings, "varnel.settings")
Q_LOGGING_CATEGORY(lcBackup, "varnel.backup")
Q_LOGGING_CATEGORY(lcLoginItems, "varnel.loginitems")
Q_LOGGING_CATEGORY(lcSysInfo, "varnel.sysinfo")
Q_LOGGING_CATEGORY(lcIo, "varnel.io")
