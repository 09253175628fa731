#include "shell/views/ShortcutsSheet.h"

#include "base/Logging.h"

namespace varnel {

ShortcutsSheet::ShortcutsSheet(QWidget *parent)
    : ListSheet(tr("Keyboard Shortcuts"), {{tr("Keys")}, {tr("What they do")}}, lcShell, parent)
{
    setObjectName(QStringLiteral("shortcutsSheet"));
    setRows({
        {tr("Ctrl+1 to Ctrl+5"), tr("Go to one of the five pages")},
        {tr("Ctrl+O"), tr("Open another home folder")},
        {tr("Ctrl+F"), tr("Search the hidden settings")},
        {tr("Ctrl+S"), tr("Save the changes of the page")},
        {tr("F5"), tr("Read the list of applications or of backup files again")},
        {tr("Delete"), tr("Remove the login item, or the backup files after asking")},
        {tr("Space"), tr("Turn the login item on or off")},
        {tr("Menu, Shift+F10"), tr("What else can be done with a setting")},
        {tr("Escape"), tr("Leave the search; close a sheet")},
        {tr("F1"), tr("Show this list")},
        {tr("Ctrl+Q"), tr("Quit at once, without saving")},
    });
    fitRows();
}

} // namespace varnel
