#include "cli/GetCommand.h"

#include "cli/TextWidth.h"
#include "cli/ValueText.h"

namespace varnel::cli {

CommandInfo GetCommand::info() const
{
    return {
        u"get"_qs,
        u"Prints the value of one setting"_qs,
        u"The value is what 'set' takes: a choice's index, a number, a text, -1 for the default\n"
        u"of numbers and texts. After a tabulator follows the value in words, where these say\n"
        u"more. A setting that is not stored has its default value, which is an answer like any\n"
        u"other (status 0); 'get --json' tells whether it is stored, in \"found\"."_qs,
        {settingParameter()},
        {},
        {u"get dock-size"_qs, u"get 1300 --json"_qs, u"get 1300 | cut -f1"_qs}};
}

QString GetCommand::text(const SettingReport &report, const Style &style) const
{
    const QString value = exchangedText(*report.row, report.reading.value);
    const QString label = labelText(*report.row, report.reading.value);
    const QString shown = style.terminal ? printable(value) : value;
    return (value == label ? shown : QString(shown + u'\t' + label)) + u'\n';
}

} // namespace varnel::cli
