#include "settings/catalogue/Rows.h"

namespace varnel::rows {

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows mailRows()
{
    // The keys of 1502 and 1504 are each other's; backup files depend on it.
    return inGroup(
        {ModuleId::Mail, u"/com.apple.Mail.plist"_qs, RestartFlag::Mail},
        {
            {
                .id = 1500,
                .name = u"reply-animation"_qs,
                .viewClass = u"ReplyAnimationView"_qs,
                .keys = {u"DisableReplyAnimations"_qs},
                .type = integer(),
                .choices = {enable(0, u"Enable animation when replying email"_qs),
                            disable(1, u"Disable animation when replying email"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling animation when replying email"_qs,
                .keywords = {u"mail animation reply replying email"_qs},
                .label = u"Reply animation"_qs,
                .help = u"The animation of a message that is replied to"_qs,
            },
            {
                .id = 1501,
                .name = u"send-animation"_qs,
                .viewClass = u"SendAnimationView"_qs,
                .keys = {u"DisableSendAnimations"_qs},
                .type = integer(),
                .choices = {enable(0, u"Enable animation when sending email"_qs),
                            disable(1, u"Disable animation when sending email"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on enabling animation when sending email"_qs,
                .keywords = {u"mail animation send sending email"_qs},
                .label = u"Send animation"_qs,
                .help = u"The animation of a message that is sent"_qs,
            },
            {
                .id = 1502,
                .name = u"plain-text"_qs,
                .viewClass = u"PreferPlainTextView"_qs,
                .keys = {u"DisableInlineAttachmentViewing"_qs},
                .type = integer(),
                .choices = {yes(0, u"Force Mail to display message in plain text by default"_qs),
                            no(1, u"Display message in its original format"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on message displaying format"_qs,
                .keywords = {u"mail email message plain text"_qs},
                .label = u"Plain text messages"_qs,
                .help = u"Stored under Mail's key for inline attachments: yes keeps them inline"_qs,
            },
            {
                .id = 1503,
                .name = u"address-only"_qs,
                .viewClass = u"IncludeNameView"_qs,
                .keys = {u"AddressesIncludeNameOnPasteboard"_qs},
                .type = integer(),
                .choices =
                    {yes(0, u"Copy email address only"_qs),
                     no(1,
                        u"Add name and wraps the address in \"< >\" brackets when copying email address"_qs),
                     useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on copying email address"_qs,
                .keywords = {u"mail email addresses brackets"_qs},
                .label = u"Copy the address only"_qs,
                .help = u"A copied address comes without the person's name"_qs,
            },
            {
                .id = 1504,
                .name = u"no-inline-attachments"_qs,
                .viewClass = u"InlineAttachmentView"_qs,
                .keys = {u"PreferPlainText"_qs},
                .type = integer(),
                .choices = {yes(1, u"Disable inline attachment viewing"_qs),
                            no(0, u"Enabling inline attachment viewing"_qs), useDefault()},
                .initialIndex = 2,
                .otherAction = u"Use default value on displaying attachment content in message"_qs,
                .keywords = {u"mail email attachment"_qs},
                .label = u"No inline attachments"_qs,
                .help = u"Stored under Mail's key for plain text: yes prefers plain text"_qs,
            },
        });
}

} // namespace varnel::rows
