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
         u"General"_qs,
         u"General"_qs,
         u"General"_qs,
         u"GeneralModule"_qs,
         u"GeneralView"_qs,
         {u"ScrollbarView"_qs, u"KeyAutorepeatView"_qs, u"UserLibraryFolderView"_qs,
          u"ZoomAnimationView"_qs, u"SpellCheckView"_qs},
         {u"ZoomAnimationView"_qs, u"ScrollbarView"_qs, u"KeyAutorepeatView"_qs,
          u"UserLibraryFolderView"_qs}},
        {ModuleId::Dock,
         u"Dock"_qs,
         u"Dock"_qs,
         u"Dock"_qs,
         u"DockModule"_qs,
         u"DockView"_qs,
         {u"DockStyleView"_qs, u"HideDockView"_qs, u"MinWindowEffectView"_qs, u"MinModeView"_qs,
          u"AnimOpenAppView"_qs, u"DocPosView"_qs, u"DockSizeView"_qs, u"DockMagnificationView"_qs,
          u"LockDockView"_qs},
         {u"DockStyleView"_qs, u"HideDockView"_qs, u"MinWindowEffectView"_qs, u"MinModeView"_qs,
          u"AnimOpenAppView"_qs, u"DocPosView"_qs, u"DockSizeView"_qs, u"DockMagnificationView"_qs,
          u"LockDockView"_qs}},
        {ModuleId::Finder,
         u"Finder"_qs,
         u"Finder"_qs,
         u"Finder"_qs,
         u"FinderModule"_qs,
         u"FinderView"_qs,
         {u"QuitFinderMenuView"_qs, u"HiddenFilesView"_qs, u"DS_StoreView"_qs,
          u"AnimInfoPanesView"_qs, u"FinderZoomAnimView"_qs, u"FullPathView"_qs,
          u"DesktopFeatureView"_qs, u"FinderSoundEffectView"_qs},
         {u"HiddenFilesView"_qs, u"QuitFinderMenuView"_qs, u"FinderSoundEffectView"_qs,
          u"DesktopFeatureView"_qs, u"FullPathView"_qs, u"FinderZoomAnimView"_qs,
          u"AnimInfoPanesView"_qs, u"DS_StoreView"_qs}},
        {ModuleId::ITunes,
         u"iTunes"_qs,
         u"iTunes"_qs,
         u"iTunes"_qs,
         u"iTunesModule"_qs,
         u"iTunesView"_qs,
         {u"PreloadSongPreviewView"_qs, u"PingButtonView"_qs, u"LibraryPlaylistView"_qs,
          u"HalfStarsView"_qs},
         {u"HalfStarsView"_qs, u"LibraryPlaylistView"_qs, u"PingButtonView"_qs,
          u"PreloadSongPreviewView"_qs}},
        {ModuleId::Mail,
         u"Mail"_qs,
         u"Mail"_qs,
         u"mail"_qs,
         u"MailModule"_qs,
         u"MailView"_qs,
         {u"ReplyAnimationView"_qs, u"SendAnimationView"_qs, u"PreferPlainTextView"_qs,
          u"IncludeNameView"_qs, u"InlineAttachmentView"_qs},
         {u"ReplyAnimationView"_qs, u"SendAnimationView"_qs, u"InlineAttachmentView"_qs,
          u"IncludeNameView"_qs, u"PreferPlainTextView"_qs}},
        {ModuleId::QuickTimePlayer,
         u"QuickTime Player X"_qs,
         u"QuickTime Player"_qs,
         u"QuickTimePlayerX"_qs,
         u"QuickTimePlayerModule"_qs,
         u"QuickTimePlayerView"_qs,
         {u"SubTitlesView"_qs, u"DisplayControlView"_qs, u"AutoPlayView"_qs},
         {u"SubTitlesView"_qs, u"DisplayControlView"_qs, u"AutoPlayView"_qs}},
        {ModuleId::Safari,
         u"Safari"_qs,
         u"Safari"_qs,
         u"compass"_qs,
         u"SafariModule"_qs,
         u"SafariView"_qs,
         {u"BookmarkBarView"_qs, u"DebugMenuView"_qs, u"DevelopMenuView"_qs,
          u"ItemsOnHistoryView"_qs, u"TextOnIconView"_qs, u"SaveThumbnailImageView"_qs,
          u"ConfirmUnsubmittedFormView"_qs},
         {u"BookmarkBarView"_qs, u"DebugMenuView"_qs, u"DevelopMenuView"_qs}},
        {ModuleId::ScreenCapture,
         u"Screen Capture"_qs,
         u"Screen Capture"_qs,
         u"ScreenCapture"_qs,
         u"ScreenCaptureModule"_qs,
         u"ScreenCaptureView"_qs,
         {u"ScreenCaptureFilePrefixView"_qs, u"ScreenCaptureShadowView"_qs,
          u"ScreenCaptureFileFormatView"_qs, u"ScreenCaptureLocationView"_qs},
         {u"ScreenCaptureFilePrefixView"_qs, u"ScreenCaptureShadowView"_qs,
          u"ScreenCaptureFileFormatView"_qs, u"ScreenCaptureLocationView"_qs}},
        {ModuleId::TimeMachine,
         u"Time Machine"_qs,
         u"Time Machine"_qs,
         u"backup"_qs,
         u"TimeMachineModule"_qs,
         u"TimeMachineView"_qs,
         {u"DontOfferNewDiskForBackupView"_qs},
         {u"DontOfferNewDiskForBackupView"_qs}},
    };
}

} // namespace

const QList<ModuleRow> &modules()
{
    static const QList<ModuleRow> all = buildModules();
    return all;
}

} // namespace varnel
