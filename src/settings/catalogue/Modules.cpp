#include "base/Literals.h"
#include "settings/Catalogue.h"

namespace varnel {

namespace {

// A module re-reads some of its views only, and in an order of its own; the rest are read when
// their page is built.
// NOLINTNEXTLINE(readability-function-size): a table
QList<ModuleRow> buildModules()
{
    return {
        {ModuleId::General,
         u"General"_s,
         u"General"_s,
         u"General"_s,
         u"GeneralModule"_s,
         u"GeneralView"_s,
         {u"ScrollbarView"_s, u"KeyAutorepeatView"_s, u"UserLibraryFolderView"_s,
          u"ZoomAnimationView"_s, u"SpellCheckView"_s},
         {u"ZoomAnimationView"_s, u"ScrollbarView"_s, u"KeyAutorepeatView"_s,
          u"UserLibraryFolderView"_s}},
        {ModuleId::Dock,
         u"Dock"_s,
         u"Dock"_s,
         u"Dock"_s,
         u"DockModule"_s,
         u"DockView"_s,
         {u"DockStyleView"_s, u"HideDockView"_s, u"MinWindowEffectView"_s, u"MinModeView"_s,
          u"AnimOpenAppView"_s, u"DocPosView"_s, u"DockSizeView"_s, u"DockMagnificationView"_s,
          u"LockDockView"_s},
         {u"DockStyleView"_s, u"HideDockView"_s, u"MinWindowEffectView"_s, u"MinModeView"_s,
          u"AnimOpenAppView"_s, u"DocPosView"_s, u"DockSizeView"_s, u"DockMagnificationView"_s,
          u"LockDockView"_s}},
        {ModuleId::Finder,
         u"Finder"_s,
         u"Finder"_s,
         u"Finder"_s,
         u"FinderModule"_s,
         u"FinderView"_s,
         {u"QuitFinderMenuView"_s, u"HiddenFilesView"_s, u"DS_StoreView"_s, u"AnimInfoPanesView"_s,
          u"FinderZoomAnimView"_s, u"FullPathView"_s, u"DesktopFeatureView"_s,
          u"FinderSoundEffectView"_s},
         {u"HiddenFilesView"_s, u"QuitFinderMenuView"_s, u"FinderSoundEffectView"_s,
          u"DesktopFeatureView"_s, u"FullPathView"_s, u"FinderZoomAnimView"_s,
          u"AnimInfoPanesView"_s, u"DS_StoreView"_s}},
        {ModuleId::ITunes,
         u"iTunes"_s,
         u"iTunes"_s,
         u"iTunes"_s,
         u"iTunesModule"_s,
         u"iTunesView"_s,
         {u"PreloadSongPreviewView"_s, u"PingButtonView"_s, u"LibraryPlaylistView"_s,
          u"HalfStarsView"_s},
         {u"HalfStarsView"_s, u"LibraryPlaylistView"_s, u"PingButtonView"_s,
          u"PreloadSongPreviewView"_s}},
        {ModuleId::Mail,
         u"Mail"_s,
         u"Mail"_s,
         u"mail"_s,
         u"MailModule"_s,
         u"MailView"_s,
         {u"ReplyAnimationView"_s, u"SendAnimationView"_s, u"PreferPlainTextView"_s,
          u"IncludeNameView"_s, u"InlineAttachmentView"_s},
         {u"ReplyAnimationView"_s, u"SendAnimationView"_s, u"InlineAttachmentView"_s,
          u"IncludeNameView"_s, u"PreferPlainTextView"_s}},
        {ModuleId::QuickTimePlayer,
         u"QuickTime Player X"_s,
         u"QuickTime Player"_s,
         u"QuickTimePlayerX"_s,
         u"QuickTimePlayerModule"_s,
         u"QuickTimePlayerView"_s,
         {u"SubTitlesView"_s, u"DisplayControlView"_s, u"AutoPlayView"_s},
         {u"SubTitlesView"_s, u"DisplayControlView"_s, u"AutoPlayView"_s}},
        {ModuleId::Safari,
         u"Safari"_s,
         u"Safari"_s,
         u"compass"_s,
         u"SafariModule"_s,
         u"SafariView"_s,
         {u"BookmarkBarView"_s, u"DebugMenuView"_s, u"DevelopMenuView"_s, u"ItemsOnHistoryView"_s,
          u"TextOnIconView"_s, u"SaveThumbnailImageView"_s, u"ConfirmUnsubmittedFormView"_s},
         {u"BookmarkBarView"_s, u"DebugMenuView"_s, u"DevelopMenuView"_s}},
        {ModuleId::ScreenCapture,
         u"Screen Capture"_s,
         u"Screen Capture"_s,
         u"ScreenCapture"_s,
         u"ScreenCaptureModule"_s,
         u"ScreenCaptureView"_s,
         {u"ScreenCaptureFilePrefixView"_s, u"ScreenCaptureShadowView"_s,
          u"ScreenCaptureFileFormatView"_s, u"ScreenCaptureLocationView"_s},
         {u"ScreenCaptureFilePrefixView"_s, u"ScreenCaptureShadowView"_s,
          u"ScreenCaptureFileFormatView"_s, u"ScreenCaptureLocationView"_s}},
        {ModuleId::TimeMachine,
         u"Time Machine"_s,
         u"Time Machine"_s,
         u"backup"_s,
         u"TimeMachineModule"_s,
         u"TimeMachineView"_s,
         {u"DontOfferNewDiskForBackupView"_s},
         {u"DontOfferNewDiskForBackupView"_s}},
    };
}

} // namespace

const QList<ModuleRow> &modules()
{
    static const QList<ModuleRow> all = buildModules();
    return all;
}

} // namespace varnel
