#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows generalRows()
{
    // The sentences of 1303 and 1304 speak of each other's subject, and "yes" of 1304 writes false:
    // backup files and lists of changes have always been made so.
    return inGroup(
        {ModuleId::General, u"/.GlobalPreferences.plist"_s, std::nullopt},
        {
            {
                .id = 1300,
                .name = u"scroll-bars"_s,
                .viewClass = u"ScrollbarView"_s,
                .keys = {u"AppleShowScrollBars"_s},
                .type = string(),
                .choices = {{u"automatically based on input device"_s, u"Automatic"_s,
                             u"Scroll bars displayed automatically based on input device"_s},
                            {u"when scrolling"_s, u"WhenScrolling"_s,
                             u"Scroll bars displayed only when scrolling"_s},
                            {u"always"_s, u"Always"_s, u"Scroll bars always displayed"_s},
                            useDefault()},
                .initialIndex = 0,
                .otherAction = u"Use default value on scroll bars visibility"_s,
                .keywords =
                    {u"general scrollbars scroll-bars applications input device scrolling"_s},
                .label = u"Scroll bars"_s,
                .help = u"When scroll bars are shown"_s,
            },
            {
                .id = 1301,
                .name = u"key-repeat"_s,
                .viewClass = u"KeyAutorepeatView"_s,
                .keys = {u"ApplePressAndHoldEnabled"_s},
                .type = boolean(),
                .choices = {{u"Enable"_s, false, u"Enable the key autorepeat feature"_s},
                            {u"Disable"_s, true, u"Disable the key autorepeat feature"_s},
                            useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on ability to use the key autorepeat feature"_s,
                .keywords =
                    {u"general key auto-repeat autorepeat holding down key continuously continue"_s},
                .label = u"Key repeat"_s,
                .help = u"Holding a key down repeats it instead of offering accents"_s,
            },
            {
                .id = 1302,
                .name = u"library-folder"_s,
                .viewClass = u"UserLibraryFolderView"_s,
                .mechanism = Mechanism::LibraryFolder,
                .type = u"file flag"_s,
                .choices = {{u"hidden"_s, true, u"Hide the user Library folder"_s},
                            {u"shown"_s, false, u"Show the user Library folder"_s},
                            {u"use default value"_s, true, {}}},
                .initialIndex = 2,
                .otherAction = u"Use default value on user Library folder visibility"_s,
                .keywords = {u"general user library folder directory"_s},
                .label = u"Library folder"_s,
                .help = u"Whether the Finder shows this home's Library folder; default is hidden"_s,
            },
            {
                .id = 1303,
                .name = u"zoom-animation"_s,
                .viewClass = u"ZoomAnimationView"_s,
                .keys = {u"NSAutomaticWindowAnimationsEnabled"_s},
                .type = boolean(),
                .choices = {enable(true, u"Disable spelling correction"_s),
                            disable(false, u"Enablr spelling correction"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling the spelling correction feature"_s,
                .keywords = {u"general zoom animation effect opening windows"_s},
                .label = u"Zoom animation"_s,
                .help = u"Whether windows zoom when they open"_s,
            },
            {
                .id = 1304,
                .name = u"no-spelling-correction"_s,
                .viewClass = u"SpellCheckView"_s,
                .keys = {u"NSAutomaticSpellingCorrectionEnabled"_s},
                .type = boolean(),
                .choices =
                    {yes(false, u"Enable the \"zoom\" animation effect when opening window"_s),
                     no(true, u"Disable the \"zoom\" animation effect when opening window"_s),
                     useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on enabling the \"zoom\" animation effect when opening window"_s,
                .keywords = {u"general spell-check spellcheck autocorrect auto-correct"_s},
                .label = u"Turn off spelling correction"_s,
                .help = u"Yes leaves words as typed; no corrects them while typing"_s,
            },
        });
}

} // namespace varnel::rows
