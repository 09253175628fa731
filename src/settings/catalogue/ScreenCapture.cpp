#include "settings/catalogue/Rows.h"

namespace varnel::rows {

namespace {

Choice format(const QString &label, const QString &stored)
{
    return {label, stored,
            u"Save newly created screenshot image in "_qs + stored + u" file format"_qs};
}

} // namespace

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows screenCaptureRows()
{
    return inGroup(
        {ModuleId::ScreenCapture, u"/com.apple.screencapture.plist"_qs, std::nullopt},
        {
            {
                .id = 1400,
                .name = u"screenshot-prefix"_qs,
                .viewClass = u"ScreenCaptureFilePrefixView"_qs,
                .keys = {u"name"_qs},
                .mechanism = Mechanism::Text,
                .kind = ValueKind::String,
                .control = ControlKind::TextField,
                .type = string(),
                .otherAction = u"Add %@ prefix to a newly created screenshot file name"_qs,
                .keywords = {u"screen capture prefix screenshot file names image"_qs},
                .label = u"File name prefix"_qs,
                .help = u"How the name of a new screenshot begins"_qs,
            },
            {
                .id = 1401,
                .name = u"screenshot-shadow"_qs,
                .viewClass = u"ScreenCaptureShadowView"_qs,
                .keys = {u"disable-shadow"_qs},
                .type = integer(),
                .choices = {enable(1, u"Add drop shadow to newly created screenshot images"_qs),
                            disable(
                                0, u"Do not add drop shadow to newly created screenshot images"_qs),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on adding drop shadow to newly created screenshot images"_qs,
                .keywords = {u"screen capture drop shadow screenshot image"_qs},
                .label = u"Drop shadow"_qs,
                .help =
                    u"Stored under the key that turns the shadow off: enable leaves it out, disable keeps it"_qs,
            },
            {
                .id = 1402,
                .name = u"screenshot-format"_qs,
                .viewClass = u"ScreenCaptureFileFormatView"_qs,
                .keys = {u"type"_qs},
                .type = string(),
                .choices = {format(u"BMP"_qs, u"bmp"_qs), format(u"GIF"_qs, u"gif"_qs),
                            format(u"JPG"_qs, u"jpg"_qs), format(u"PDF"_qs, u"pdf"_qs),
                            format(u"PNG"_qs, u"png"_qs), format(u"PSD"_qs, u"psd"_qs),
                            format(u"TIFF"_qs, u"tiff"_qs), useDefault()},
                .initialIndex = 7,
                .caseSensitive = true,
                .missingKeepsChoice = true,
                .otherAction = u"Save newly created screenshot image in default file format"_qs,
                .keywords = {u"screen capture save file format screenshot image"_qs},
                .label = u"File format"_qs,
                .help = u"The format in which new screenshots are saved"_qs,
            },
            {
                .id = 1403,
                .name = u"screenshot-folder"_qs,
                .viewClass = u"ScreenCaptureLocationView"_qs,
                .keys = {u"location"_qs},
                .mechanism = Mechanism::Text,
                .kind = ValueKind::String,
                .control = ControlKind::FolderField,
                .type = string(),
                .otherAction = u"Save newly created screenshot files to %@"_qs,
                .keywords =
                    {u"screen capture save file location folder directory screenshot image"_qs},
                .label = u"Folder"_qs,
                .help = u"The folder in which new screenshots are saved"_qs,
            },
        });
}

} // namespace varnel::rows
