#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows safariRows()
{
    return inGroup(
        {ModuleId::Safari, u"/com.apple.Safari.plist"_s, RestartFlag::Safari},
        {
            {
                .id = 1200,
                .name = u"bookmarks-bar"_s,
                .viewClass = u"BookmarkBarView"_s,
                .keys = {u"ProxiesInBookmarksBar"_s},
                .mechanism = Mechanism::BarItems,
                .kind = ValueKind::String,
                .control = ControlKind::CheckBoxes,
                .type = u"array"_s,
                .defaultAction =
                    u"Use default value on visibility state of Reading List, Top Sites, Address Book, and Bonjour on Safari's Bookmarks bar"_s,
                .otherAction = u"Show %@ on Safari's Bookmarks bar"_s,
                .keywords = {u"safari web reading list browser bookmarks bar"_s,
                             u"safari web top sites browser bookmarks bar"_s,
                             u"safari web address book browser bookmarks bar"_s,
                             u"Show Bonjour on Safari's Bookmarks bar"_s},
                .label = u"Bookmarks bar"_s,
                .help = u"The items that Safari shows on its Bookmarks bar"_s,
            },
            {
                .id = 1201,
                .name = u"debug-menu"_s,
                .viewClass = u"DebugMenuView"_s,
                .keys = {u"IncludeDebugMenu"_s, u"IncludeInternalDebugMenu"_s},
                .mechanism = Mechanism::DebugMenu,
                .type = integer(),
                .choices = {yes(1, u"Show the Debug menu on Safari's main menu"_s),
                            no(0, u"Hide the Debug menu on Safari's main menu"_s), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on the Debug menu visibility on Safari's main menu"_s,
                .keywords = {u"safari web browser debug menu main"_s},
                .label = u"Debug menu"_s,
                .help = u"Safari's menu bar has a Debug menu"_s,
            },
            {
                .id = 1202,
                .name = u"develop-menu"_s,
                .viewClass = u"DevelopMenuView"_s,
                .keys = {u"IncludeDevelopMenu"_s},
                .type = integer(),
                .choices = {yes(1, u"Show the Develop menu on Safari's main menu"_s),
                            no(0, u"Hide the Develop menu on Safari's main menu"_s), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on the Develop menu visibility on Safari's main menu"_s,
                .keywords = {u"safari web browser develop menu main"_s},
                .label = u"Develop menu"_s,
                .help = u"Safari's menu bar has a Develop menu"_s,
            },
            {
                .id = 1203,
                .name = u"history-items"_s,
                .viewClass = u"ItemsOnHistoryView"_s,
                .keys = {u"RecentHistoryMenuItemsLimit"_s},
                .mechanism = Mechanism::Number,
                .kind = ValueKind::Number,
                .control = ControlKind::Stepper,
                .type = integer(),
                // The default has no sentence of its own: it is described as -1 items.
                .otherAction = u"Set maximum number of items in main history menu to %d"_s,
                .keywords = {u"safari main history menu."_s},
                .label = u"History menu"_s,
                .help = u"The most items that the History menu lists"_s,
                .minimum = 0,
                .maximum = 999,
                .shownWhenMissing = 18,
            },
            {
                .id = 1204,
                .name = u"toolbar-text"_s,
                .viewClass = u"TextOnIconView"_s,
                .keys = {u"NSToolbar Configuration BrowserWindowToolbarIdentifier"_s,
                         u"TB Display Mode"_s},
                .mechanism = Mechanism::NestedChoice,
                .type = integer(),
                .choices = {yes(0, u"Show text at the bottom of items in Safari's toolbar"_s),
                            no(2, u"Do not show text at the bottom of items in Safari's toolbar"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on showing text at the bottom of items in Safari's toolbar"_s,
                .keywords = {u"safari text bottom toolbar"_s},
                .label = u"Text below toolbar icons"_s,
                .help = u"Safari's toolbar names its icons; it must have been customised once"_s,
            },
            {
                .id = 1205,
                .name = u"thumbnail-cache"_s,
                .viewClass = u"SaveThumbnailImageView"_s,
                .keys = {u"DebugSnapshotsUpdatePolicy"_s},
                .type = integer(),
                .choices = {yes(2, u"Cache Top Sites and History thumbnail images"_s),
                            {u"no (default)"_s,
                             {},
                             u"Don't cache Top Sites and History thumbnail images"_s}},
                .initialIndex = 1,
                .otherAction =
                    u"Use default value on caching Top Sites and History thumbnail images"_s,
                .keywords = {u"safari thumbnail image top sites history cache"_s},
                .label = u"Thumbnail cache"_s,
                .help = u"Safari keeps the pictures of Top Sites and History"_s,
            },
            {
                .id = 1206,
                .name = u"unsubmitted-form-warning"_s,
                .viewClass = u"ConfirmUnsubmittedFormView"_s,
                .keys = {u"DebugConfirmTossingUnsubmittedFormText"_s},
                .type = boolean(),
                .choices = {yes(true, u"Show warning when closing unsubmitted form"_s),
                            no(false, u"Don't show warning when closing unsubmitted form"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on showing warning when closing unsubmitted form"_s,
                .keywords = {u"safari warning close window unsubmitted text"_s},
                .label = u"Warn about unsent forms"_s,
                .help = u"Safari asks before it closes a form with text in it"_s,
            },
        });
}

} // namespace varnel::rows
