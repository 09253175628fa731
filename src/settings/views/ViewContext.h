#pragma once

#include "settings/RestartFlags.h"

namespace varnel {

class Desktop;
class Dialogs;
class SettingAccess;

/// What every setting view works with. Everything named here outlives the views.
struct ViewContext {
    SettingAccess &access;
    RestartFlags &flags; ///< raised by writing
    Dialogs &dialogs;
    Desktop *desktop = nullptr; ///< null where no file can be shown
};

} // namespace varnel
