#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows quickTimePlayerRows()
{
    return inGroup(
        {ModuleId::QuickTimePlayer, u"/com.apple.QuickTimePlayerX.plist"_qs,
         RestartFlag::QuickTimePlayer},
        {
            {
                .id = 1800,
                .name = u"subtitles"_qs,
                .viewClass = u"SubTitlesView"_qs,
                .keys = {u"MGEnableCCAndSubtitlesOnOpen"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Show close captioning and sub titles"_qs),
                            no(false, u"Hide close captioning and sub titles"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on showing close captioning and sub titles"_qs,
                .keywords = {u"quicktime player close captioning sub titles"_qs},
                .label = u"Subtitles"_qs,
                .help = u"Captions and subtitles are on when a movie opens"_qs,
            },
            {
                .id = 1801,
                .name = u"keep-controls-hidden"_qs,
                .viewClass = u"DisplayControlView"_qs,
                .keys = {u"MGUIVisibilityNeverAutoshow"_qs},
                .type = boolean(),
                .choices =
                    {yes(true,
                         u"Keep display control and title bar hidden once the mouse cursor leaving window"_qs),
                     no(false,
                        u"Show display control and title bar when the mouse cursor re-enter window"_qs),
                     useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on display control and title bar visibility once the mouse cursor leaving window"_qs,
                .keywords = {u"quicktime player display control mouse cursor window"_qs},
                .label = u"Keep the controls hidden"_qs,
                .help = u"Controls and title bar stay hidden once the pointer has left"_qs,
            },
            {
                .id = 1802,
                .name = u"controls-always-visible"_qs,
                .viewClass = u"DisplayControlView"_qs,
                .keys = {u"MGUIVisibilityNeverAutohide"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Display control and title bar always visible"_qs),
                            no(false, u"auto-hide display and title bar control"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on display control and title bar visibility"_qs,
                .keywords = {u"quicktime player display control"_qs},
                .label = u"Always show the controls"_qs,
                .help = u"Controls and title bar never hide by themselves"_qs,
            },
            {
                .id = 1803,
                .name = u"hide-title-bar"_qs,
                .viewClass = u"DisplayControlView"_qs,
                .keys = {u"MGCinematicWindowDebugForceNoTitlebar"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Hide display title bar"_qs),
                            no(false, u"Show display title bar"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on display title bar visibility"_qs,
                .keywords = {u"quicktime player display title bar"_qs},
                .label = u"Hide the title bar"_qs,
                .help = u"Movies play in a window without a title bar"_qs,
            },
            {
                .id = 1804,
                .name = u"autoplay"_qs,
                .viewClass = u"AutoPlayView"_qs,
                .keys = {u"MGPlayMovieOnOpen"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Automatically play selected movie files on launch"_qs),
                            no(false,
                               u"Do not automatically play selected movie files on launch:"_qs),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on automatically playing selected movie files on launch"_qs,
                .keywords = {u"quicktime player automatically play  files on launch:"_qs},
                .searchable = false,
                .label = u"Play on opening"_qs,
                .help = u"A movie starts to play when it is opened"_qs,
            },
        });
}

} // namespace varnel::rows
