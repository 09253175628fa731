#include "cli/HomeWorker.h"

#include "base/Literals.h"
#include "cli/Log.h"
#include "cli/TextWidth.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <optional>

namespace varnel::cli {

namespace {

// The members of an answer; a line is a log line, a member of the outcome's object, or the outcome,
// which comes last.
const QString logMember = QStringLiteral("log");
const QString statusMember = QStringLiteral("status");
const QString messagesMember = QStringLiteral("messages");
const QString changesMember = QStringLiteral("changes");
const QString dryRunMember = QStringLiteral("dryRun");
const QString restartMember = QStringLiteral("restart");
const QString textMember = QStringLiteral("text");

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

void tellOutcome(const Worker::Tell &tell, const HomeOutcome &outcome, bool json,
                 const Style &style)
{
    QJsonObject answer {{statusMember, int(outcome.status)},
                        {messagesMember, QJsonArray::fromStringList(outcome.messages)},
                        {changesMember, outcome.changes},
                        {dryRunMember, outcome.dryRun},
                        {restartMember, int(outcome.restart.toInt())}};
    const QJsonObject object = json && outcome.object ? outcome.object() : QJsonObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        tell(toldMember(member.key(), member.value()));
    if (!json && outcome.text)
        answer.insert(textMember, outcome.text(style));
    tell(lineOf(answer));
}

/// The text of a sheet: its line feeds stand, and so do the looks that our own tables give where
/// the terminal is to show them.
QString printableSheet(const QString &text, bool colour)
{
    static constexpr std::array<QStringView, 3> looks {u"\033[0m", u"\033[1m", u"\033[2m"};
    QString sheet;
    qsizetype from = 0;
    const auto flush = [&](qsizetype to) {
        sheet += printable(text.mid(from, to - from));
        from = to;
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] >= u' ' && text[at] <= u'~')
            continue;
        const QStringView rest = QStringView(text).mid(at);
        qsizetype taken = rest.startsWith(u'\n') || rest.startsWith(u'\t') ? 1 : 0;
        for (const QStringView look : looks)
            if (colour && rest.startsWith(look))
                taken = look.size();
        if (taken == 0)
            continue;
        flush(at);
        sheet += rest.first(taken);
        from = at + taken;
        at = from - 1;
    }
    flush(text.size());
    return sheet;
}

std::optional<HomeOutcome> outcomeOf(const QJsonObject &answer, const Style &style)
{
    const int status = answer.value(statusMember).toInt(-1);
    if (status < int(ExitStatus::Done) || status > int(ExitStatus::Partly))
        return {};
    HomeOutcome outcome;
    outcome.status = ExitStatus(status);
    for (const QJsonValue &message : answer.value(messagesMember).toArray())
        outcome.messages.append(message.toString());
    outcome.changes = answer.value(changesMember).toBool();
    outcome.dryRun = answer.value(dryRunMember).toBool();
    const RestartFlags known = ~RestartFlags();
    outcome.restart = RestartFlags::fromInt(answer.value(restartMember).toInt()) & known;
    if (const QJsonValue text = answer.value(textMember); text.isString())
        outcome.text = [sheet = printableSheet(text.toString(), style.colour)](const Style &) {
            return sheet;
        };
    return outcome;
}

HomeOutcome endedEarly(const Error &why, bool writes)
{
    HomeOutcome outcome;
    outcome.status = writes ? ExitStatus::Partly : ExitStatus::Failed;
    outcome.changes = writes;
    outcome.messages.append(why.text
                            + (writes ? u"; what it has done there is not known"_s : QString()));
    return outcome;
}

} // namespace

HomeWorker::HomeWorker(const std::function<HomeOutcome()> &work, bool writes, bool json,
                       const Style &style)
    : writes(writes), style(style), worker([&](const Worker::Tell &tell) {
          sendLogTo([&](const QString &line) { tell(lineOf({{logMember, line}})); });
          tellOutcome(tell, work(), json, style);
      })
{
}

HomeOutcome HomeWorker::outcome()
{
    std::optional<HomeOutcome> outcome;
    JsonMembers members;
    const Result<void> done = worker.follow([&](const QByteArray &line) {
        if (line.startsWith('"')) {
            members.insert(heardMembers(line));
            return;
        }
        const QJsonObject answer = QJsonDocument::fromJson(line).object();
        if (answer.contains(logMember))
            Console::note(answer.value(logMember).toString());
        else if (!outcome)
            outcome = outcomeOf(answer, style);
    });
    if (!done)
        return endedEarly(done.error(), writes);
    if (!outcome)
        return endedEarly({ErrorCode::Failed, u"its answer makes no sense"_s}, writes);
    outcome->heard = members;
    return *outcome;
}

} // namespace varnel::cli
