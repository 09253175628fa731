#include "SettingTable.h"

#include "base/Literals.h"

#include <QHash>

#include <stdexcept>

namespace varnel::test {

namespace {

// One line for a setting: number, view, short location, file, application to restart, search texts,
// the sentence of every other index. Below it one line for each value: number, text, label, what
// the file then holds, sentence.
constexpr const char *table = R"(
1000|LockDockView|Dock|com.apple.dock.plist|Dock|dock icon lock contents|Use default value on ability to change Dock's contents
  0||yes|'contents-immutable': True|Prevent user from making change to Dock's contents
  1||no|'contents-immutable': False|Allow users to change Dock's contents
  2||use default value||Use default value on ability to change Dock's contents
1001|LockDockView|Dock|com.apple.dock.plist|Dock|dock lock position|Use default value on ability to change Dock's position on screen
  0||yes|'position-immutable': True|Prevent user from making change to Dock's position on screen
  1||no|'position-immutable': False|Allow users to move dock to left, right, or bottom of the screen
  2||use default value||Use default value on ability to change Dock's position on screen
1002|LockDockView|Dock|com.apple.dock.plist|Dock|dock icon lock size|Use default value on ability to change Dock's size
  0||yes|'size-immutable': True|Prevent user from making change to Dock's size
  1||no|'size-immutable': False|Allow users to resize dock
  2||use default value||Use default value on ability to change Dock's size
1003|DockMagnificationView|Dock|com.apple.dock.plist|Dock|dock size icon animation magnification effect|
  48|||'largesize': 48|set icon magnification size to %s
  -1||||Use default value on icon magnficaton size
1004|DockSizeView|Dock|com.apple.dock.plist|Dock|dock size icon|
  48|||'tilesize': 48|Set icon size on the Dock to %s
  -1||||Use default value on icon size on the Dock
1005|DocPosView|Dock|com.apple.dock.plist|Dock|dock position desktop screen|Use default value on the Dock position on the screen
  0||left|'orientation': 'left'|Set the Dock position to the lesft side of the screen
  1||bottom|'orientation': 'bottom'|Set the Dock position to the bottom side of the screen
  2||right|'orientation': 'right'|Set the Dock position to the right side of the screen
  3||use default value||Use default value on the Dock position on the screen
1006|AnimOpenAppView|Dock|com.apple.dock.plist|Dock|dock animation effect bouncing icon opening application|Use default value on enabling bouncing icon animation when opening application
  0||yes|'launchanim': True|Enable bouncing icon animation when opening application
  1||no|'launchanim': False|Disable bouncing icon animation when opening application
  2||use default value||Use default value on enabling bouncing icon animation when opening application
1007|MinModeView|Dock|com.apple.dock.plist|Dock|dock minimize minimizing windows application icon|Use default value on application minimizing mode
  0||minimize windows into their application icon |'minimize-to-application': True|minimize windows into their application icon on the Dock
  1||create a new icon for each minimized window |'minimize-to-application': False|create a new icon for each minimized window on the right side of the Dock
  2||use default value||Use default value on application minimizing mode
1008|MinWindowEffectView|Dock|com.apple.dock.plist|Dock|dock minimize minimizing animation effect windows|Use default value on animation effect used when minimizing application
  0||Genie effect|'mineffect': 'genie'|Use genie effect when minimizing appliction
  1||Scale effect|'mineffect': 'scale'|Use scale effect when minimizing appliction
  2||use default value||Use default value on animation effect used when minimizing application
1009|HideDockView|Dock|com.apple.dock.plist|Dock|dock autohide auto-hide|Use default value on the Dock visibility
  0||yes|'autohide': True|Automatically hide and show the Dock
  1||no|'autohide': False|Allways show the Dock
  2||use default value||Use default value on the Dock visibility
1010|DockStyleView|Dock|com.apple.dock.plist|Dock|dock classic 2d 2-d 3d 3-d style tiger|Use default value on the Dock style
  0||use 2D Dock|'no-glass': True|Display Dock in classic 2D style
  1||use 3D Dock|'no-glass': False|Display Dock in modern 3D style
  2||use default value||Use default value on the Dock style
1100|QuitFinderMenuView|Finder|com.apple.finder.plist|Finder|finder quit menu|Use default value on the Quit Finder menu visibility
  0||yes|'QuitMenuItem': True|Show the Quit Finder menu
  1||no|'QuitMenuItem': False|Hide the Quit Finder menu
  2||use default value||Use default value on the Quit Finder menu visibility
1101|HiddenFilesView|Finder|com.apple.finder.plist|Finder|finder hidden files folders|Use default value on hidden files and folders visibility
  0||yes|'AppleShowAllFiles': True|Show hidden files and folders
  1||no|'AppleShowAllFiles': False|Hide hidden files and folders
  2||use default value||Use default value on hidden files and folders visibility
1102|DS_StoreView|Finder|com.apple.desktopservices.plist|Finder|finder .ds_store file remote network folder|Use default value on creation of .DS_Store file on remote(network) folder
  0||yes|'DSDontWriteNetworkStores': False|Create .DS_Store file on remote(network) folder
  1||no|'DSDontWriteNetworkStores': True|Don't create .DS_Store file on remote(network) folder
  2||use default value||Use default value on creation of .DS_Store file on remote(network) folder
1103|AnimInfoPanesView|Finder|com.apple.finder.plist|Finder|finder animation info panes|Use default value on enabling animation in Info panes
  0||enable|'AnimateInfoPanes': True|Enable animation in Info panes
  1||disable|'AnimateInfoPanes': False|Disable animation in Info panes
  2||use default value||Use default value on enabling animation in Info panes
1104|FinderZoomAnimView|Finder|com.apple.finder.plist|Finder|finder zoom animation effect opening window|Use default value on enabling the "zoom" animation effect when opening window
  0||enable|'AnimateWindowZoom': True|Enable the "zoom" animation effect when opening window
  1||disable|'AnimateWindowZoom': False|Disable the "zoom" animation effect when opening window
  2||use default value||Use default value on enabling the "zoom" animation effect when opening window
1105|FullPathView|Finder|com.apple.finder.plist|Finder|finder full path window title bar posix|Use default value on path displayed in Finder title bar
  0||yes|'_FXShowPosixPathInTitle': True|Show full path in Finder title bar
  1||no|'_FXShowPosixPathInTitle': False|Show folder name in Finder title bar
  2||use default value||Use default value on path displayed in Finder title bar
1106|DesktopFeatureView|Finder|com.apple.finder.plist|Finder|finder desktop icon context menu|Use default value on disabling Desktop feature
  0||yes|'CreateDesktop': False|Disable Desktop feature
  1||no|'CreateDesktop': True|Enable Desktop feature
  2||use default value||Use default value on disabling Desktop feature
1107|FinderSoundEffectView|Finder|com.apple.finder.plist|Finder|finder sound effect copying move moving file folder emptying trash|Use default value on enabling sound effect in Finder
  0||enable|'FinderSounds': True|Enable sound effect in Finder
  1||disable|'FinderSounds': False|Disable sound effect in Finder
  2||use default value||Use default value on enabling sound effect in Finder
1200|BookmarkBarView|Safari|com.apple.Safari.plist|Safari|safari web reading list browser bookmarks bar; safari web top sites browser bookmarks bar; safari web address book browser bookmarks bar; Show Bonjour on Safari's Bookmarks bar|
  0|1;0;0;1||'ProxiesInBookmarksBar': ['Reading List', 'Bonjour']|Show Reading List, Bonjour on Safari's Bookmarks bar
  0|0;1;1;0||'ProxiesInBookmarksBar': ['Top Sites', 'Address Book']|Show Top Sites, Address Book on Safari's Bookmarks bar
  0|-1|||Use default value on visibility state of Reading List, Top Sites, Address Book, and Bonjour on Safari's Bookmarks bar
1201|DebugMenuView|Safari|com.apple.Safari.plist|Safari|safari web browser debug menu main|Use default value on the Debug menu visibility on Safari's main menu
  0||yes|'IncludeDebugMenu': 1, 'IncludeInternalDebugMenu': 1|Show the Debug menu on Safari's main menu
  1||no|'IncludeDebugMenu': 0, 'IncludeInternalDebugMenu': 0|Hide the Debug menu on Safari's main menu
  2||use default value||Use default value on the Debug menu visibility on Safari's main menu
1202|DevelopMenuView|Safari|com.apple.Safari.plist|Safari|safari web browser develop menu main|Use default value on the Develop menu visibility on Safari's main menu
  0||yes|'IncludeDevelopMenu': 1|Show the Develop menu on Safari's main menu
  1||no|'IncludeDevelopMenu': 0|Hide the Develop menu on Safari's main menu
  2||use default value||Use default value on the Develop menu visibility on Safari's main menu
1203|ItemsOnHistoryView|Safari|com.apple.Safari.plist|Safari|safari main history menu.|
  30|||'RecentHistoryMenuItemsLimit': 30|Set maximum number of items in main history menu to 30
  -1||||Set maximum number of items in main history menu to -1
1204|TextOnIconView|Safari|com.apple.Safari.plist|Safari|safari text bottom toolbar|Use default value on showing text at the bottom of items in Safari's toolbar
  0||yes|'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Display Mode': 0, 'TB Icon Size Mode': 1}|Show text at the bottom of items in Safari's toolbar
  1||no|'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Display Mode': 2, 'TB Icon Size Mode': 1}|Do not show text at the bottom of items in Safari's toolbar
  2||use default value|'NSToolbar Configuration BrowserWindowToolbarIdentifier': {'TB Icon Size Mode': 1}|Use default value on showing text at the bottom of items in Safari's toolbar
1205|SaveThumbnailImageView|Safari|com.apple.Safari.plist|Safari|safari thumbnail image top sites history cache|Use default value on caching Top Sites and History thumbnail images
  0||yes|'DebugSnapshotsUpdatePolicy': 2|Cache Top Sites and History thumbnail images
  1||no (default)||Don't cache Top Sites and History thumbnail images
1206|ConfirmUnsubmittedFormView|Safari|com.apple.Safari.plist|Safari|safari warning close window unsubmitted text|Use default value on showing warning when closing unsubmitted form
  0||yes|'DebugConfirmTossingUnsubmittedFormText': True|Show warning when closing unsubmitted form
  1||no|'DebugConfirmTossingUnsubmittedFormText': False|Don't show warning when closing unsubmitted form
  2||use default value||Use default value on showing warning when closing unsubmitted form
1300|ScrollbarView|General|.GlobalPreferences.plist|none|general scrollbars scroll-bars applications input device scrolling|Use default value on scroll bars visibility
  0||automatically based on input device|'AppleShowScrollBars': 'Automatic'|Scroll bars displayed automatically based on input device
  1||when scrolling|'AppleShowScrollBars': 'WhenScrolling'|Scroll bars displayed only when scrolling
  2||always|'AppleShowScrollBars': 'Always'|Scroll bars always displayed
  3||use default value||Use default value on scroll bars visibility
1301|KeyAutorepeatView|General|.GlobalPreferences.plist|none|general key auto-repeat autorepeat holding down key continuously continue|Use default value on ability to use the key autorepeat feature
  0||Enable|'ApplePressAndHoldEnabled': False|Enable the key autorepeat feature
  1||Disable|'ApplePressAndHoldEnabled': True|Disable the key autorepeat feature
  2||use default value||Use default value on ability to use the key autorepeat feature
1302|UserLibraryFolderView|General||none|general user library folder directory|Use default value on user Library folder visibility
  0||hidden|invisible|Hide the user Library folder
  1||shown|visible|Show the user Library folder
  2||use default value|invisible|Use default value on user Library folder visibility
1303|ZoomAnimationView|General|.GlobalPreferences.plist|none|general zoom animation effect opening windows|Use default value on enabling the spelling correction feature
  0||enable|'NSAutomaticWindowAnimationsEnabled': True|Disable spelling correction
  1||disable|'NSAutomaticWindowAnimationsEnabled': False|Enablr spelling correction
  2||use default value||Use default value on enabling the spelling correction feature
1304|SpellCheckView|General|.GlobalPreferences.plist|none|general spell-check spellcheck autocorrect auto-correct|Use default value on enabling the "zoom" animation effect when opening window
  0||yes|'NSAutomaticSpellingCorrectionEnabled': False|Enable the "zoom" animation effect when opening window
  1||no|'NSAutomaticSpellingCorrectionEnabled': True|Disable the "zoom" animation effect when opening window
  2||use default value||Use default value on enabling the "zoom" animation effect when opening window
1400|ScreenCaptureFilePrefixView|Screen Capture|com.apple.screencapture.plist|none|screen capture prefix screenshot file names image|
  0|Shot||'name': 'Shot'|Add Shot prefix to a newly created screenshot file name
  0|-1|||Add -1 prefix to a newly created screenshot file name
1401|ScreenCaptureShadowView|Screen Capture|com.apple.screencapture.plist|none|screen capture drop shadow screenshot image|Use default value on adding drop shadow to newly created screenshot images
  0||enable|'disable-shadow': 1|Add drop shadow to newly created screenshot images
  1||disable|'disable-shadow': 0|Do not add drop shadow to newly created screenshot images
  2||use default value||Use default value on adding drop shadow to newly created screenshot images
1402|ScreenCaptureFileFormatView|Screen Capture|com.apple.screencapture.plist|none|screen capture save file format screenshot image|Save newly created screenshot image in default file format
  0||BMP|'type': 'bmp'|Save newly created screenshot image in bmp file format
  1||GIF|'type': 'gif'|Save newly created screenshot image in gif file format
  2||JPG|'type': 'jpg'|Save newly created screenshot image in jpg file format
  3||PDF|'type': 'pdf'|Save newly created screenshot image in pdf file format
  4||PNG|'type': 'png'|Save newly created screenshot image in png file format
  5||PSD|'type': 'psd'|Save newly created screenshot image in psd file format
  6||TIFF|'type': 'tiff'|Save newly created screenshot image in tiff file format
  7||use default value||Save newly created screenshot image in default file format
1403|ScreenCaptureLocationView|Screen Capture|com.apple.screencapture.plist|none|screen capture save file location folder directory screenshot image|
  0|/Users/Shared||'location': '/Users/Shared'|Save newly created screenshot files to /Users/Shared
  0|-1|||Save newly created screenshot files to -1
1500|ReplyAnimationView|Mail|com.apple.Mail.plist|Mail|mail animation reply replying email|Use default value on enabling animation when replying email
  0||enable|'DisableReplyAnimations': 0|Enable animation when replying email
  1||disable|'DisableReplyAnimations': 1|Disable animation when replying email
  2||use default value||Use default value on enabling animation when replying email
1501|SendAnimationView|Mail|com.apple.Mail.plist|Mail|mail animation send sending email|Use default value on enabling animation when sending email
  0||enable|'DisableSendAnimations': 0|Enable animation when sending email
  1||disable|'DisableSendAnimations': 1|Disable animation when sending email
  2||use default value||Use default value on enabling animation when sending email
1502|PreferPlainTextView|Mail|com.apple.Mail.plist|Mail|mail email message plain text|Use default value on message displaying format
  0||yes|'DisableInlineAttachmentViewing': 0|Force Mail to display message in plain text by default
  1||no|'DisableInlineAttachmentViewing': 1|Display message in its original format
  2||use default value||Use default value on message displaying format
1503|IncludeNameView|Mail|com.apple.Mail.plist|Mail|mail email addresses brackets|Use default value on copying email address
  0||yes|'AddressesIncludeNameOnPasteboard': 0|Copy email address only
  1||no|'AddressesIncludeNameOnPasteboard': 1|Add name and wraps the address in "< >" brackets when copying email address
  2||use default value||Use default value on copying email address
1504|InlineAttachmentView|Mail|com.apple.Mail.plist|Mail|mail email attachment|Use default value on displaying attachment content in message
  0||yes|'PreferPlainText': 1|Disable inline attachment viewing
  1||no|'PreferPlainText': 0|Enabling inline attachment viewing
  2||use default value||Use default value on displaying attachment content in message
1600|PreloadSongPreviewView|iTunes|com.apple.iTunes.plist|ITunes|itunes pre-load song previews streaming|Use default value on enabling pre-load feature for iTunes song previews
  0||yes|'allow-half-stars': True|Pre-load iTunes song previews
  1||no|'allow-half-stars': False|Do not pre-load iTunes song previews
  2||use default value||Use default value on enabling pre-load feature for iTunes song previews
1601|PingButtonView|iTunes|com.apple.iTunes.plist|ITunes|itunes ping button song|Use default value on Ping button visibility next to song
  0||yes|'hide-ping-dropdown': True|Hide Ping button next to song
  1||no|'hide-ping-dropdown': False|Show Ping button next to song
  2||use default value||Use default value on Ping button visibility next to song
1602|LibraryPlaylistView|iTunes|com.apple.iTunes.plist|ITunes|itunes play list library|Use default value on creating consolidated playlist folder (Library folder)
  0||yes|'hide-library-playlist': False, 'show-library-playlist': True|Create consolidated playlist folder (Library folder)
  1||no|'hide-library-playlist': True, 'show-library-playlist': False|Do not create consolidated playlist folder (Library folder)
  2||use default value||Use default value on creating consolidated playlist folder (Library folder)
1603|HalfStarsView|iTunes|com.apple.iTunes.plist|ITunes|itunes half star rating|Use default value on enabling half star rating
  0||enable|'allow-half-stars': True|Enable half star rating
  1||disable|'allow-half-stars': False|Disable half star rating
  2||use default value||Use default value on enabling half star rating
1700|DontOfferNewDiskForBackupView|Time Machine|com.apple.TimeMachine.plist|TimeMachine|new disk backup|Use default value on offering new disks for backup
  0||yes|'DoNotOfferNewDisksForBackup': True|Offer new disks for backup
  1||no|'DoNotOfferNewDisksForBackup': False|Do not offer new disks for backup
  2||use default value||Use default value on offering new disks for backup
1800|SubTitlesView|QuickTime Player|com.apple.QuickTimePlayerX.plist|QuickTimePlayer|quicktime player close captioning sub titles|Use default value on showing close captioning and sub titles
  0||yes|'MGEnableCCAndSubtitlesOnOpen': True|Show close captioning and sub titles
  1||no|'MGEnableCCAndSubtitlesOnOpen': False|Hide close captioning and sub titles
  2||use default value||Use default value on showing close captioning and sub titles
1801|DisplayControlView|QuickTime Player|com.apple.QuickTimePlayerX.plist|QuickTimePlayer|quicktime player display control mouse cursor window|Use default value on display control and title bar visibility once the mouse cursor leaving window
  0||yes|'MGUIVisibilityNeverAutoshow': True|Keep display control and title bar hidden once the mouse cursor leaving window
  1||no|'MGUIVisibilityNeverAutoshow': False|Show display control and title bar when the mouse cursor re-enter window
  2||use default value||Use default value on display control and title bar visibility once the mouse cursor leaving window
1802|DisplayControlView|QuickTime Player|com.apple.QuickTimePlayerX.plist|QuickTimePlayer|quicktime player display control|Use default value on display control and title bar visibility
  0||yes|'MGUIVisibilityNeverAutohide': True|Display control and title bar always visible
  1||no|'MGUIVisibilityNeverAutohide': False|auto-hide display and title bar control
  2||use default value||Use default value on display control and title bar visibility
1803|DisplayControlView|QuickTime Player|com.apple.QuickTimePlayerX.plist|QuickTimePlayer|quicktime player display title bar|Use default value on display title bar visibility
  0||yes|'MGCinematicWindowDebugForceNoTitlebar': True|Hide display title bar
  1||no|'MGCinematicWindowDebugForceNoTitlebar': False|Show display title bar
  2||use default value||Use default value on display title bar visibility
1804|AutoPlayView|QuickTime Player|com.apple.QuickTimePlayerX.plist|QuickTimePlayer|quicktime player automatically play  files on launch:|Use default value on automatically playing selected movie files on launch
  0||yes|'MGPlayMovieOnOpen': True|Automatically play selected movie files on launch
  1||no|'MGPlayMovieOnOpen': False|Do not automatically play selected movie files on launch:
  2||use default value||Use default value on automatically playing selected movie files on launch
)";

RestartFlags flagNamed(const QString &name)
{
    static const QHash<QString, RestartFlags> flags {
        {u"none"_s, {}},
        {u"Dock"_s, RestartFlag::Dock},
        {u"Finder"_s, RestartFlag::Finder},
        {u"Safari"_s, RestartFlag::Safari},
        {u"Mail"_s, RestartFlag::Mail},
        {u"ITunes"_s, RestartFlag::ITunes},
        {u"TimeMachine"_s, RestartFlag::TimeMachine},
        {u"QuickTimePlayer"_s, RestartFlag::QuickTimePlayer},
    };
    return flags.value(name);
}

QStringList fieldsOf(const QString &line, qsizetype count)
{
    QStringList fields = line.split(u'|');
    if (fields.size() != count)
        throw std::logic_error("a line of the table has too few or too many fields");
    return fields;
}

QList<ExpectedSetting> parse()
{
    QList<ExpectedSetting> settings;
    for (const QString &line : QString::fromUtf8(table).split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u' ')) {
            const QStringList f = fieldsOf(line, 5);
            settings.last().cases.append({f[0].trimmed().toInt(), f[1], f[2], f[3], f[4]});
        } else {
            const QStringList f = fieldsOf(line, 7);
            settings.append(
                {f[0].toInt(), f[1], f[2], f[3], flagNamed(f[4]), f[5].split(u"; "_s), f[6], {}});
        }
    }
    return settings;
}

} // namespace

const QList<ExpectedSetting> &expectedSettings()
{
    static const QList<ExpectedSetting> all = parse();
    return all;
}

} // namespace varnel::test
