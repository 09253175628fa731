#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows generalRows()
{
    // The sentences of 1303 and 1304 speak of each other's subject, and "yes" of 1304 writes false:
    // backup files and lists of changes have always been made so.
    return inGroup(
        {ModuleId::General, u"/.GlobalPreferences.plist"_qs, std::nullopt},
        {
            {
                .id = 1300,
                .name = u"scroll-bars"_qs,
                .viewClass = u"ScrollbarView"_qs,
                .keys = {u"AppleShowScrollBars"_qs},
                .type = string(),
                .choices = {{u"automatically based on input device"_qs, u"Automatic"_qs,
                             u"Scroll bars displayed automatically based on input device"_qs},
                            {u"when scrolling"_qs, u"WhenScrolling"_qs,
                             u"Scroll bars displayed only when scrolling"_qs},
                            {u"always"_qs, u"Always"_qs, u"Scroll bars always displayed"_qs},
                            useDefault()},
                .initialIndex = 0,
                .otherAction = u"Use default value on scroll bars visibility"_qs,
                .keywords =
                    {u"general scrollbars scroll-bars applications input device scrolling"_qs},
                .label = u"Scroll bars"_qs,
                .help = u"When scroll bars are shown"_qs,
            },
            {
                .id = 1301,
                .name = u"key-repeat"_qs,
                .viewClass = u"KeyAutorepeatView"_qs,
                .keys = {u"ApplePressAndHoldEnabled"_qs},
                .type = boolean(),
                .choices = {{u"Enable"_qs, false, u"Enable the key autorepeat feature"_qs},
                            {u"Disable"_qs, true, u"Disable the key autorepeat feature"_qs},
                            useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on ability to use the key autorepeat feature"_qs,
                .keywords =
                    {u"general key auto-repeat autorepeat holding down key continuously continue"_qs},
                .label = u"Key repeat"_qs,
                .help = u"Holding a key down repeats it instead of offering accents"_qs,
            },
            {
                .id = 1302,
                .name = u"library-folder"_qs,
                .viewClass = u"UserLibraryFolderView"_qs,
                .mechanism = Mechanism::LibraryFolder,
                .type = u"file flag"_qs,
                .choices = {{u"hidden"_qs, true, u"Hide the user Library folder"_qs},
                            {u"shown"_qs, false, u"Show the user Library folder"_qs},
                            {u"use default value"_qs, true, {}}},
                .initialIndex = 2,
                .otherAction = u"Use default value on user Library folder visibility"_qs,
                .keywords = {u"general user library folder directory"_qs},
                .label = u"Library folder"_qs,
                .help =
                    u"Whether the Finder shows this home's Library folder; default is hidden"_qs,
            },
            {
                .id = 1303,
                .name = u"zoom-animation"_qs,
                .viewClass = u"ZoomAnimationView"_qs,
                .keys = {u"NSAutomaticWindowAnimationsEnabled"_qs},
                .type = boolean(),
                .choices = {enable(true, u"Disable spelling correction"_qs),
                            disable(false, u"Enablr spelling correction"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling the spelling correction feature"_qs,
                .keywords = {u"general zoom animation effect opening windows"_qs},
                .label = u"Zoom animation"_qs,
                .help = u"Whether windows zoom when they open"_qs,
            },
            {
                .id = 1304,
                .name = u"no-spelling-correction"_qs,
                .viewClass = u"SpellCheckView"_qs,
                .keys = {u"NSAutomaticSpellingCorrectionEnabled"_qs},
                .type = boolean(),
                .choices =
                    {yes(false, u"Enable the \"zoom\" animation effect when opening window"_qs),
                     no(true, u"Disable the \"zoom\" animation effect when opening window"_qs),
                     useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on enabling the \"zoom\" animation effect when opening window"_qs,
                .keywords = {u"general spell-check spellcheck autocorrect auto-correct"_qs},
                .label = u"Turn off spelling correction"_qs,
                .help = u"Yes leaves words as typed; no corrects them while typing"_qs,
            },
        });
}

} // namespace varnel::rows
