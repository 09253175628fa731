#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows mailRows()
{
    // The keys of 1502 and 1504 are each other's; backup files depend on it.
    return inGroup(
        {ModuleId::Mail, u"/com.apple.Mail.plist"_s, RestartFlag::Mail},
        {
            {
                .id = 1500,
                .name = u"reply-animation"_s,
                .viewClass = u"ReplyAnimationView"_s,
                .keys = {u"DisableReplyAnimations"_s},
                .type = integer(),
                .choices = {enable(0, u"Enable animation when replying email"_s),
                            disable(1, u"Disable animation when replying email"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling animation when replying email"_s,
                .keywords = {u"mail animation reply replying email"_s},
                .label = u"Reply animation"_s,
                .help = u"The animation of a message that is replied to"_s,
            },
            {
                .id = 1501,
                .name = u"send-animation"_s,
                .viewClass = u"SendAnimationView"_s,
                .keys = {u"DisableSendAnimations"_s},
                .type = integer(),
                .choices = {enable(0, u"Enable animation when sending email"_s),
                            disable(1, u"Disable animation when sending email"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling animation when sending email"_s,
                .keywords = {u"mail animation send sending email"_s},
                .label = u"Send animation"_s,
                .help = u"The animation of a message that is sent"_s,
            },
            {
                .id = 1502,
                .name = u"plain-text"_s,
                .viewClass = u"PreferPlainTextView"_s,
                .keys = {u"DisableInlineAttachmentViewing"_s},
                .type = integer(),
                .choices = {yes(0, u"Force Mail to display message in plain text by default"_s),
                            no(1, u"Display message in its original format"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on message displaying format"_s,
                .keywords = {u"mail email message plain text"_s},
                .label = u"Plain text messages"_s,
                .help = u"Stored under Mail's key for inline attachments: yes keeps them inline"_s,
            },
            {
                .id = 1503,
                .name = u"address-only"_s,
                .viewClass = u"IncludeNameView"_s,
                .keys = {u"AddressesIncludeNameOnPasteboard"_s},
                .type = integer(),
                .choices =
                    {yes(0, u"Copy email address only"_s),
                     no(1,
                        u"Add name and wraps the address in \"< >\" brackets when copying email address"_s),
                     useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on copying email address"_s,
                .keywords = {u"mail email addresses brackets"_s},
                .label = u"Copy the address only"_s,
                .help = u"A copied address comes without the person's name"_s,
            },
            {
                .id = 1504,
                .name = u"no-inline-attachments"_s,
                .viewClass = u"InlineAttachmentView"_s,
                .keys = {u"PreferPlainText"_s},
                .type = integer(),
                .choices = {yes(1, u"Disable inline attachment viewing"_s),
                            no(0, u"Enabling inline attachment viewing"_s), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on displaying attachment content in message"_s,
                .keywords = {u"mail email attachment"_s},
                .label = u"No inline attachments"_s,
                .help = u"Stored under Mail's key for plain text: yes prefers plain text"_s,
            },
        });
}

} // namespace varnel::rows
