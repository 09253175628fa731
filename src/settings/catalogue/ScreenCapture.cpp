#include "base/Literals.h"
#include "settings/catalogue/Rows.h"

namespace varnel::rows {

namespace {

Choice format(const QString &label, const QString &stored)
{
    return {label, stored,
            u"Save newly created screenshot image in "_s + stored + u" file format"_s};
}

} // namespace

// A table, whose length is that of its group. NOLINTNEXTLINE(readability-function-size)
Rows screenCaptureRows()
{
    return inGroup(
        {ModuleId::ScreenCapture, u"/com.apple.screencapture.plist"_s, std::nullopt},
        {
            {
                .id = 1400,
                .name = u"screenshot-prefix"_s,
                .viewClass = u"ScreenCaptureFilePrefixView"_s,
                .keys = {u"name"_s},
                .mechanism = Mechanism::Text,
                .kind = ValueKind::String,
                .control = ControlKind::TextField,
                .type = string(),
                .otherAction = u"Add %@ prefix to a newly created screenshot file name"_s,
                .keywords = {u"screen capture prefix screenshot file names image"_s},
                .label = u"File name prefix"_s,
                .help = u"How the name of a new screenshot begins"_s,
            },
            {
                .id = 1401,
                .name = u"screenshot-shadow"_s,
                .viewClass = u"ScreenCaptureShadowView"_s,
                .keys = {u"disable-shadow"_s},
                .type = integer(),
                .choices = {enable(1, u"Add drop shadow to newly created screenshot images"_s),
                            disable(0,
                                    u"Do not add drop shadow to newly created screenshot images"_s),
                            useDefault()},
                .initialIndex = 2,
                .otherAction =
                    u"Use default value on adding drop shadow to newly created screenshot images"_s,
                .keywords = {u"screen capture drop shadow screenshot image"_s},
                .label = u"Drop shadow"_s,
                .help =
                    u"Stored under the key that turns the shadow off: enable leaves it out, disable keeps it"_s,
            },
            {
                .id = 1402,
                .name = u"screenshot-format"_s,
                .viewClass = u"ScreenCaptureFileFormatView"_s,
                .keys = {u"type"_s},
                .type = string(),
                .choices = {format(u"BMP"_s, u"bmp"_s), format(u"GIF"_s, u"gif"_s),
                            format(u"JPG"_s, u"jpg"_s), format(u"PDF"_s, u"pdf"_s),
                            format(u"PNG"_s, u"png"_s), format(u"PSD"_s, u"psd"_s),
                            format(u"TIFF"_s, u"tiff"_s), useDefault()},
                .initialIndex = 7,
                .caseSensitive = true,
                .missingKeepsChoice = true,
                .otherAction = u"Save newly created screenshot image in default file format"_s,
                .keywords = {u"screen capture save file format screenshot image"_s},
                .label = u"File format"_s,
                .help = u"The format in which new screenshots are saved"_s,
            },
            {
                .id = 1403,
                .name = u"screenshot-folder"_s,
                .viewClass = u"ScreenCaptureLocationView"_s,
                .keys = {u"location"_s},
                .mechanism = Mechanism::Text,
                .kind = ValueKind::String,
                .control = ControlKind::FolderField,
                .type = string(),
                .otherAction = u"Save newly created screenshot files to %@"_s,
                .keywords =
                    {u"screen capture save file location folder directory screenshot image"_s},
                .label = u"Folder"_s,
                .help = u"The folder in which new screenshots are saved"_s,
            },
        });
}

} // namespace varnel::rows
