#include "cli/ManyHomes.h"

#include "base/Literals.h"
#include "cli/ProgressLine.h"
#include "cli/SettingReport.h"
#include "cli/TextWidth.h"
#include "platform/linux/LinuxHome.h"
#include "platform/linux/LinuxTerminal.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QSet>

#include <algorithm>
#include <deque>
#include <memory>

namespace varnel::cli {

namespace {

constexpr int standardError = 2;

std::unique_ptr<ProgressLine> progressFor(qsizetype homes)
{
    if (!LinuxTerminal::isTerminal(standardError) || qgetenv("TERM") == "dumb")
        return nullptr;
    QElapsedTimer watch;
    watch.start();
    // A terminal that has gone is noticed where the messages are written.
    const auto draw = [](const QByteArray &bytes) {
        static_cast<void>(LinuxTerminal::writeAll(standardError, bytes));
    };
    return std::make_unique<ProgressLine>(homes, draw, [watch] { return watch.elapsed(); });
}

/// Each folder once, by where its name leads; the names as they were typed.
QStringList eachOnce(const QStringList &directories)
{
    QStringList once;
    QSet<QString> seen;
    for (const QString &directory : directories) {
        const Result<HomeFolder> place = namedHome(directory);
        const QString key = place ? QString(place.value().path + u'/') : directory;
        if (!seen.contains(key))
            once.append(directory);
        seen.insert(key);
    }
    return once;
}

QString heading(const QString &directory, const Style &style)
{
    const QString line = printable(directory) + u':';
    return (style.colour ? QString(u"\033[1m" + line + u"\033[0m") : line) + u'\n';
}

QString summary(qsizetype troubled, qsizetype all)
{
    return u"%1 of %2 homes: not as it should be; the messages above tell"_s.arg(troubled).arg(all);
}

bool isTrouble(ExitStatus status)
{
    return status != ExitStatus::Done && status != ExitStatus::Negative;
}

} // namespace

ManyHomes::ManyHomes(bool json, Console &console) : json(json), console(console) { }

void ManyHomes::run(const QStringList &directories, const Begin &begin, int ahead)
{
    const QStringList homes = eachOnce(directories);
    const std::unique_ptr<ProgressLine> progress = progressFor(homes.size());
    std::deque<Waiting> begun;
    qsizetype next = 0;
    for (const QString &directory : homes) {
        for (; next < homes.size() && begun.size() <= size_t(ahead); ++next)
            begun.push_back(begin(homes[next]));
        const HomeOutcome outcome = begun.front()();
        begun.pop_front();
        if (progress && !outcome.messages.isEmpty())
            progress->clear();
        show(directory, outcome);
        if (progress)
            progress->show(statuses.size());
    }
    const auto troubled = std::count_if(statuses.begin(), statuses.end(), isTrouble);
    if (progress)
        progress->clear();
    if (troubled > 0)
        Console::message(summary(troubled, statuses.size()));
}

void ManyHomes::show(const QString &directory, const HomeOutcome &outcome)
{
    for (const QString &message : outcome.messages)
        Console::message(message.startsWith(directory) ? message
                                                       : QString(directory + u": " + message));
    if (outcome.wrote())
        console.noteWrite();
    statuses.append(outcome.status);
    if (json) {
        QJsonObject ours {{u"home"_s, directory}, {u"status"_s, int(outcome.status)}};
        if (!outcome.messages.isEmpty())
            ours.insert(u"messages"_s, QJsonArray::fromStringList(outcome.messages));
        JsonMembers members = outcome.heard;
        if (outcome.object)
            members.insert(jsonMembers(outcome.object()));
        members.insert(jsonMembers(ours));
        objects.append(objects.isEmpty() ? "\n" : ",\n");
        objects.append(elementOfHomes(members));
    } else if (outcome.text) {
        print(directory, outcome.text(console.style()));
    }
}

void ManyHomes::print(const QString &directory, const QString &text)
{
    if (text.isEmpty())
        return;
    console.print((printed ? u"\n"_s : QString()) + heading(directory, console.style()) + text);
    printed = true;
}

QByteArray ManyHomes::document(QJsonObject object) const
{
    object.insert(u"homes"_s, QJsonArray());
    QByteArray document = jsonDocument(object);
    const QByteArray none = "\"homes\": [";
    return document.insert(document.indexOf(none) + none.size(), objects.bytes());
}

ExitStatus ManyHomes::status() const
{
    if (statuses.isEmpty())
        return ExitStatus::Done;
    const ExitStatus first = statuses.first();
    if (std::count(statuses.begin(), statuses.end(), first) == statuses.size())
        return first;
    return std::any_of(statuses.begin(), statuses.end(), isTrouble) ? ExitStatus::Partly
                                                                    : ExitStatus::Negative;
}

} // namespace varnel::cli
