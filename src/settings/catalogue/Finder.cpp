#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows finderRows()
{
    return inGroup(
        {ModuleId::Finder, u"/com.apple.finder.plist"_s, RestartFlag::Finder},
        {
            {
                .id = 1100,
                .name = u"quit-finder"_s,
                .viewClass = u"QuitFinderMenuView"_s,
                .keys = {u"QuitMenuItem"_s},
                .type = boolean(),
                .choices = {yes(true, u"Show the Quit Finder menu"_s),
                            no(false, u"Hide the Quit Finder menu"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on the Quit Finder menu visibility"_s,
                .keywords = {u"finder quit menu"_s},
                .label = u"Quit Finder menu"_s,
                .help = u"The Finder's menu offers to quit it"_s,
            },
            {
                .id = 1101,
                .name = u"hidden-files"_s,
                .viewClass = u"HiddenFilesView"_s,
                .keys = {u"AppleShowAllFiles"_s},
                .type = boolean(),
                .choices = {yes(true, u"Show hidden files and folders"_s),
                            no(false, u"Hide hidden files and folders"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on hidden files and folders visibility"_s,
                .keywords = {u"finder hidden files folders"_s},
                .label = u"Show hidden files"_s,
                .help = u"The Finder shows hidden files and folders too"_s,
            },
            {
                .id = 1102,
                .name = u"network-ds-store"_s,
                .viewClass = u"DS_StoreView"_s,
                .file = u"/com.apple.desktopservices.plist"_s,
                .keys = {u"DSDontWriteNetworkStores"_s},
                .type = boolean(),
                .choices = {yes(false, u"Create .DS_Store file on remote(network) folder"_s),
                            no(true, u"Don't create .DS_Store file on remote(network) folder"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on creation of .DS_Store file on remote(network) folder"_s,
                .keywords = {u"finder .ds_store file remote network folder"_s},
                .label = u".DS_Store on network folders"_s,
                .help = u"The Finder leaves a .DS_Store file in folders on other machines"_s,
            },
            {
                .id = 1103,
                .name = u"info-pane-animation"_s,
                .viewClass = u"AnimInfoPanesView"_s,
                .keys = {u"AnimateInfoPanes"_s},
                .type = boolean(),
                .choices = {enable(true, u"Enable animation in Info panes"_s),
                            disable(false, u"Disable animation in Info panes"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling animation in Info panes"_s,
                .keywords = {u"finder animation info panes"_s},
                .label = u"Info pane animation"_s,
                .help = u"The panes of an Info window slide open and shut"_s,
            },
            {
                .id = 1104,
                .name = u"finder-zoom-animation"_s,
                .viewClass = u"FinderZoomAnimView"_s,
                .keys = {u"AnimateWindowZoom"_s},
                .type = boolean(),
                .choices =
                    {enable(true, u"Enable the \"zoom\" animation effect when opening window"_s),
                     disable(false, u"Disable the \"zoom\" animation effect when opening window"_s),
                     useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on enabling the \"zoom\" animation effect when opening window"_s,
                .keywords = {u"finder zoom animation effect opening window"_s},
                .label = u"Finder zoom animation"_s,
                .help = u"The Finder's windows zoom when they open"_s,
            },
            {
                .id = 1105,
                .name = u"full-path"_s,
                .viewClass = u"FullPathView"_s,
                .keys = {u"_FXShowPosixPathInTitle"_s},
                .type = boolean(),
                .choices = {yes(true, u"Show full path in Finder title bar"_s),
                            no(false, u"Show folder name in Finder title bar"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on path displayed in Finder title bar"_s,
                .keywords = {u"finder full path window title bar posix"_s},
                .label = u"Full path in the title"_s,
                .help = u"The title bar shows the whole path instead of the folder's name"_s,
            },
            {
                .id = 1106,
                .name = u"no-desktop"_s,
                .viewClass = u"DesktopFeatureView"_s,
                .keys = {u"CreateDesktop"_s},
                .type = boolean(),
                .choices = {yes(false, u"Disable Desktop feature"_s),
                            no(true, u"Enable Desktop feature"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on disabling Desktop feature"_s,
                .keywords = {u"finder desktop icon context menu"_s},
                .label = u"Turn off the Desktop"_s,
                .help = u"Yes leaves the Desktop without icons and menu"_s,
            },
            {
                .id = 1107,
                .name = u"finder-sounds"_s,
                .viewClass = u"FinderSoundEffectView"_s,
                .keys = {u"FinderSounds"_s},
                .type = boolean(),
                .choices = {enable(true, u"Enable sound effect in Finder"_s),
                            disable(false, u"Disable sound effect in Finder"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling sound effect in Finder"_s,
                .keywords =
                    {u"finder sound effect copying move moving file folder emptying trash"_s},
                .label = u"Sound effects"_s,
                .help = u"Sounds when files are copied or moved and the Trash is emptied"_s,
            },
        });
}

} // namespace varnel::rows
