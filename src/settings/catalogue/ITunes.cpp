#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows iTunesRows()
{
    // 1600 and 1603 share one key; the last to be written wins.
    return inGroup(
        {ModuleId::ITunes, u"/com.apple.iTunes.plist"_qs, RestartFlag::ITunes},
        {
            {
                .id = 1600,
                .name = u"song-previews"_qs,
                .viewClass = u"PreloadSongPreviewView"_qs,
                .keys = {u"allow-half-stars"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Pre-load iTunes song previews"_qs),
                            no(false, u"Do not pre-load iTunes song previews"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on enabling pre-load feature for iTunes song previews"_qs,
                .keywords = {u"itunes pre-load song previews streaming"_qs},
                .label = u"Pre-load song previews"_qs,
                .help = u"Stored under the key of half star rating: both change together"_qs,
            },
            {
                .id = 1601,
                .name = u"hide-ping-button"_qs,
                .viewClass = u"PingButtonView"_qs,
                .keys = {u"hide-ping-dropdown"_qs},
                .type = boolean(),
                .choices = {yes(true, u"Hide Ping button next to song"_qs),
                            no(false, u"Show Ping button next to song"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on Ping button visibility next to song"_qs,
                .keywords = {u"itunes ping button song"_qs},
                .label = u"Hide the Ping button"_qs,
                .help = u"Songs are listed without the Ping button beside them"_qs,
            },
            {
                .id = 1602,
                .name = u"library-playlist"_qs,
                .viewClass = u"LibraryPlaylistView"_qs,
                .keys = {u"hide-library-playlist"_qs, u"show-library-playlist"_qs},
                .mechanism = Mechanism::LibraryPlaylist,
                .type = boolean(),
                // What the first key gets; the second gets the opposite.
                .choices = {yes(false, u"Create consolidated playlist folder (Library folder)"_qs),
                            no(true,
                               u"Do not create consolidated playlist folder (Library folder)"_qs),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on creating consolidated playlist folder (Library folder)"_qs,
                .keywords = {u"itunes play list library"_qs},
                .label = u"Library playlist"_qs,
                .help = u"One playlist folder that holds the whole library"_qs,
            },
            {
                .id = 1603,
                .name = u"half-stars"_qs,
                .viewClass = u"HalfStarsView"_qs,
                .keys = {u"allow-half-stars"_qs},
                .type = boolean(),
                .choices = {enable(true, u"Enable half star rating"_qs),
                            disable(false, u"Disable half star rating"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling half star rating"_qs,
                .keywords = {u"itunes half star rating"_qs},
                .label = u"Half star rating"_qs,
                .help = u"Songs can be given half stars"_qs,
            },
        });
}

} // namespace varnel::rows
