#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows safariRows()
{
    return inGroup(
        {ModuleId::Safari, u"/com.apple.Safari.plist"_qs, RestartFlag::Safari},
        {
            {
                .id = 1200,
                .name = u"bookmarks-bar"_qs,
                .viewClass = u"BookmarkBarView"_qs,
                .keys = {u"ProxiesInBookmarksBar"_qs},
                .mechanism = Mechanism::BarItems,
                .kind = ValueKind::String,
                .control = ControlKind::CheckBoxes,
                .type = u"array"_qs,
                .defaultAction =
                    u"Use default value on visibility state of Reading List, Top Sites, Address Book, and Bonjour on Safari's Bookmarks bar"_qs,
                .otherAction = u"Show %@ on Safari's Bookmarks bar"_qs,
                .keywords = {u"safari web reading list browser bookmarks bar"_qs,
                             u"safari web top sites browser bookmarks bar"_qs,
                             u"safari web address book browser bookmarks bar"_qs,
                             u"Show Bonjour on Safari's Bookmarks bar"_qs},
                .label = u"Bookmarks bar"_qs,
                .help = u"The items that Safari shows on its Bookmarks bar"_qs,
            },
            {
                .id = 1201,
                .name = u"debug-menu"_qs,
                .viewClass = u"DebugMenuView"_qs,
                .keys = {u"IncludeDebugMenu"_qs, u"IncludeInternalDebugMenu"_qs},
                .mechanism = Mechanism::DebugMenu,
                .type = integer(),
                .choices = {yes(1, u"Show the Debug menu on Safari's main menu"_qs),
                            no(0, u"Hide the Debug menu on Safari's main menu"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on the Debug menu visibility on Safari's main menu"_qs,
                .keywords = {u"safari web browser debug menu main"_qs},
                .label = u"Debug menu"_qs,
                .help = u"Safari's menu bar has a Debug menu"_qs,
            },
            {
                .id = 1202,
                .name = u"develop-menu"_qs,
                .viewClass = u"DevelopMenuView"_qs,
                .keys = {u"IncludeDevelopMenu"_qs},
                .type = integer(),
                .choices = {yes(1, u"Show the Develop menu on Safari's main menu"_qs),
                            no(0, u"Hide the Develop menu on Safari's main menu"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on the Develop menu visibility on Safari's main menu"_qs,
                .keywords = {u"safari web browser develop menu main"_qs},
                .label = u"Develop menu"_qs,
                .help = u"Safari's menu bar has a Develop menu"_qs,
            },
            {
                .id = 1203,
                .name = u"history-items"_qs,
                .viewClass = u"ItemsOnHistoryView"_qs,
                .keys = {u"RecentHistoryMenuItemsLimit"_qs},
                .mechanism = Mechanism::Number,
                .kind = ValueKind::Number,
                .control = ControlKind::Stepper,
                .type = integer(),
                // The default has no sentence of its own: it is described as -1 items.
                .otherAction = u"Set maximum number of items in main history menu to %d"_qs,
                .keywords = {u"safari main history menu."_qs},
                .label = u"History menu"_qs,
                .help = u"The most items that the History menu lists"_qs,
                .minimum = 0,
                .maximum = 999,
                .shownWhenMissing = 18,
            },
            {
                .id = 1204,
                .name = u"toolbar-text"_qs,
                .viewClass = u"TextOnIconView"_qs,
                .keys = {u"NSToolbar Configuration BrowserWindowToolbarIdentifier"_qs,
                         u"TB Display Mode"_qs},
                .mechanism = Mechanism::NestedChoice,
                .type = integer(),
                .choices = {yes(0, u"Show text at the bottom of items in Safari's toolbar"_qs),
                            no(2,
                               u"Do not show text at the bottom of items in Safari's toolbar"_qs),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on showing text at the bottom of items in Safari's toolbar"_qs,
                .keywords = {u"safari text bottom toolbar"_qs},
                .label = u"Text below toolbar icons"_qs,
                .help = u"Safari's toolbar names its icons; it must have been customised once"_qs,
            },
            {
                .id = 1205,
                .name = u"thumbnail-cache"_qs,
                .viewClass = u"SaveThumbnailImageView"_qs,
                .keys = {u"DebugSnapshotsUpdatePolicy"_qs},
                .type = integer(),
                .choices = {yes(2, u"Cache Top Sites and History thumbnail images"_qs),
                            {u"no (default)"_qs,
                             {},
                             u"Don't cache Top Sites and History thumbnail images"_qs}},
                .initialIndex = 1,
                .otherAction =
                    u"Use default value on caching Top Sites and History thumbnail images"_qs,
                .keywords = {u"safari thumbnail image top sites history cache"_qs},
                .label = u"Thumbnail cache"_qs,
                .help = u"Safari keeps the pictures of Top Sites and History"_qs,
            },
            {
                .id = 1206,
                .name = u"unsubmitted-form-warning"_qs,
                .viewClass = u"ConfirmUnsubmittedFormView"_qs,
                .keys = {u"DebugConfirmTossingUnsubmittedFormText"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Show warning when closing unsubmitted form"_qs),
                            no(false, u"Don't show warning when closing unsubmitted form"_qs),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on showing warning when closing unsubmitted form"_qs,
                .keywords = {u"safari warning close window unsubmitted text"_qs},
                .label = u"Warn about unsent forms"_qs,
                .help = u"Safari asks before it closes a form with text in it"_qs,
            },
        });
}

} // namespace varnel::rows
