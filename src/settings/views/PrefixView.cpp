#include "settings/views/PrefixView.h"

#include "base/Logging.h"

namespace varnel {

void PrefixView::updateWindowForControlTextChange()
{
    varnelLog(lcSettings, QStringLiteral("textFieldChangeValue"));
    TextView::updateWindowForControlTextChange();
}

} // namespace varnel
