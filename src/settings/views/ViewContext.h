#pragma once

#include "settings/RestartFlags.h"

namespace varnel {

class Dialogs;
class SettingAccess;

/// What every setting view works with. Everything named here outlives the views.
struct ViewContext {
    SettingAccess &access;
    RestartFlags &flags; ///< raised by writing
    Dialogs &dialogs;
};

} // namespace varnel
