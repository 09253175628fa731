#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows iTunesRows()
{
    // 1600 and 1603 share one key; the last to be written wins.
    return inGroup(
        {ModuleId::ITunes, u"/com.apple.iTunes.plist"_s, RestartFlag::ITunes},
        {
            {
                .id = 1600,
                .name = u"song-previews"_s,
                .viewClass = u"PreloadSongPreviewView"_s,
                .keys = {u"allow-half-stars"_s},
                .type = boolean(),
                .choices = {yes(true, u"Pre-load iTunes song previews"_s),
                            no(false, u"Do not pre-load iTunes song previews"_s), useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on enabling pre-load feature for iTunes song previews"_s,
                .keywords = {u"itunes pre-load song previews streaming"_s},
                .label = u"Pre-load song previews"_s,
                .help = u"Stored under the key of half star rating: both change together"_s,
            },
            {
                .id = 1601,
                .name = u"hide-ping-button"_s,
                .viewClass = u"PingButtonView"_s,
                .keys = {u"hide-ping-dropdown"_s},
                .type = boolean(),
                .choices = {yes(true, u"Hide Ping button next to song"_s),
                            no(false, u"Show Ping button next to song"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on Ping button visibility next to song"_s,
                .keywords = {u"itunes ping button song"_s},
                .label = u"Hide the Ping button"_s,
                .help = u"Songs are listed without the Ping button beside them"_s,
            },
            {
                .id = 1602,
                .name = u"library-playlist"_s,
                .viewClass = u"LibraryPlaylistView"_s,
                .keys = {u"hide-library-playlist"_s, u"show-library-playlist"_s},
                .mechanism = Mechanism::LibraryPlaylist,
                .type = boolean(),
                // What the first key gets; the second gets the opposite.
                .choices = {yes(false, u"Create consolidated playlist folder (Library folder)"_s),
                            no(true,
                               u"Do not create consolidated playlist folder (Library folder)"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on creating consolidated playlist folder (Library folder)"_s,
                .keywords = {u"itunes play list library"_s},
                .label = u"Library playlist"_s,
                .help = u"One playlist folder that holds the whole library"_s,
            },
            {
                .id = 1603,
                .name = u"half-stars"_s,
                .viewClass = u"HalfStarsView"_s,
                .keys = {u"allow-half-stars"_s},
                .type = boolean(),
                .choices = {enable(true, u"Enable half star rating"_s),
                            disable(false, u"Disable half star rating"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling half star rating"_s,
                .keywords = {u"itunes half star rating"_s},
                .label = u"Half star rating"_s,
                .help = u"Songs can be given half stars"_s,
            },
        });
}

} // namespace varnel::rows
