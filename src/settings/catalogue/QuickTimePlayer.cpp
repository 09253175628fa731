#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows quickTimePlayerRows()
{
    return inGroup(
        {ModuleId::QuickTimePlayer, u"/com.apple.QuickTimePlayerX.plist"_s,
         RestartFlag::QuickTimePlayer},
        {
            {
                .id = 1800,
                .name = u"subtitles"_s,
                .viewClass = u"SubTitlesView"_s,
                .keys = {u"MGEnableCCAndSubtitlesOnOpen"_s},
                .type = boolean(),
                .choices = {yes(true, u"Show close captioning and sub titles"_s),
                            no(false, u"Hide close captioning and sub titles"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on showing close captioning and sub titles"_s,
                .keywords = {u"quicktime player close captioning sub titles"_s},
                .label = u"Subtitles"_s,
                .help = u"Captions and subtitles are on when a movie opens"_s,
            },
            {
                .id = 1801,
                .name = u"keep-controls-hidden"_s,
                .viewClass = u"DisplayControlView"_s,
                .keys = {u"MGUIVisibilityNeverAutoshow"_s},
                .type = boolean(),
                .choices =
                    {yes(true,
                         u"Keep display control and title bar hidden once the mouse cursor leaving window"_s),
                     no(false,
                        u"Show display control and title bar when the mouse cursor re-enter window"_s),
                     useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on display control and title bar visibility once the mouse cursor leaving window"_s,
                .keywords = {u"quicktime player display control mouse cursor window"_s},
                .label = u"Keep the controls hidden"_s,
                .help = u"Controls and title bar stay hidden once the pointer has left"_s,
            },
            {
                .id = 1802,
                .name = u"controls-always-visible"_s,
                .viewClass = u"DisplayControlView"_s,
                .keys = {u"MGUIVisibilityNeverAutohide"_s},
                .type = boolean(),
                .choices = {yes(true, u"Display control and title bar always visible"_s),
                            no(false, u"auto-hide display and title bar control"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on display control and title bar visibility"_s,
                .keywords = {u"quicktime player display control"_s},
                .label = u"Always show the controls"_s,
                .help = u"Controls and title bar never hide by themselves"_s,
            },
            {
                .id = 1803,
                .name = u"hide-title-bar"_s,
                .viewClass = u"DisplayControlView"_s,
                .keys = {u"MGCinematicWindowDebugForceNoTitlebar"_s},
                .type = boolean(),
                .choices = {yes(true, u"Hide display title bar"_s),
                            no(false, u"Show display title bar"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on display title bar visibility"_s,
                .keywords = {u"quicktime player display title bar"_s},
                .label = u"Hide the title bar"_s,
                .help = u"Movies play in a window without a title bar"_s,
            },
            {
                .id = 1804,
                .name = u"autoplay"_s,
                .viewClass = u"AutoPlayView"_s,
                .keys = {u"MGPlayMovieOnOpen"_s},
                .type = boolean(),
                .choices = {yes(true, u"Automatically play selected movie files on launch"_s),
                            no(false,
                               u"Do not automatically play selected movie files on launch:"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on automatically playing selected movie files on launch"_s,
                .keywords = {u"quicktime player automatically play  files on launch:"_s},
                .searchable = false,
                .label = u"Play on opening"_s,
                .help = u"A movie starts to play when it is opened"_s,
            },
        });
}

} // namespace varnel::rows
