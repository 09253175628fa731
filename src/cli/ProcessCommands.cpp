#include "cli/CommandFamilies.h"

#include "base/Literals.h"
#include "cli/Console.h"
#include "cli/EndedApplications.h"
#include "cli/HomeSession.h"
#include "cli/Outcome.h"
#include "cli/RunningProcesses.h"
#include "cli/SettingReport.h"
#include "platform/linux/LinuxDesktop.h"
#include "sysinfo/ProcessActions.h"

#include <QJsonArray>

#include <algorithm>
#include <optional>
#include <utility>

namespace varnel::cli {

namespace {

QByteArray document(const QList<ProcessRow> &rows)
{
    QJsonArray processes;
    for (const ProcessRow &row : rows)
        processes.append(processObject(row));
    return jsonDocument({{u"processes"_s, processes}});
}

QString table(const QList<ProcessRow> &rows, const Style &style)
{
    Table table;
    for (const ProcessRow &row : rows)
        table.addRow(processCells(row));
    return table.text(style);
}

/// Stands twice among the commands: "processes" alone lists them too.
class ListCommand : public Command {
public:
    explicit ListCommand(QString commandName) : name(std::move(commandName)) { }

    [[nodiscard]] CommandDescription description() const override
    {
        return {
            u"Lists the running applications"_s,
            u"One line for each application that has a window: process id, name, priority, "
            u"location.\n"
            u"An application of several processes stands once, with the highest id. Status 1 when\n"
            u"there is none. 'processes reveal' and 'processes terminate' take an id of this list."_s,
            {},
            {},
            {name, name + u" --json"}};
    }

    ExitStatus run(const Request &request, Console &console) const override
    {
        const QList<ProcessRow> rows = RunningProcesses().rows();
        if (request.has(u"json"_s))
            console.print(document(rows));
        else
            console.print(table(rows, console.style()));
        if (!rows.isEmpty())
            return ExitStatus::Done;
        Console::message(u"no applications with a window are running"_s);
        return ExitStatus::Negative;
    }

private:
    QString name;
};

std::optional<ProcessRow> findProcess(const QList<ProcessRow> &rows, int id)
{
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [id](const ProcessRow &row) { return row.processId == id; });
    return found == rows.end() ? std::nullopt : std::optional(*found);
}

ParameterInfo processParameter()
{
    return {u"PID"_s, u"process id, as 'processes list' shows it; no other is taken"_s,
            ParameterInfo::Count::One, Completes::Process};
}

/// A command that does something with one of the listed applications.
class OneProcessCommand : public Command {
public:
    ExitStatus run(const Request &request, Console &console) const final
    {
        const QString &typed = request.arguments.first();
        bool isNumber = false;
        const int id = typed.toInt(&isNumber);
        if (!isNumber)
            return failure({ErrorCode::Invalid, u"'" + typed + u"' is no process id"});

        RunningProcesses processes;
        const std::optional<ProcessRow> row = findProcess(processes.rows(), id);
        if (!row) {
            Console::message(u"no listed application has the process id " + typed);
            return ExitStatus::Negative;
        }
        if (const Result<void> done = act(*row, processes.manager()); !done)
            return failure(done.error());
        if (request.has(u"json"_s)) {
            console.print(jsonDocument({{deed(), processObject(*row)}}));
        } else {
            Table table;
            table.addRow(processCells(*row));
            console.print(table.text(console.style()));
        }
        return ExitStatus::Done;
    }

protected:
    virtual Result<void> act(const ProcessRow &row, ProcessManager &manager) const = 0;
    /// What was done, as the JSON member that holds the process.
    [[nodiscard]] virtual QString deed() const = 0;
};

class RevealCommand : public OneProcessCommand {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {u"Shows a running application in the file manager"_s,
                u"Prints the application's line and does not wait for the file manager. Where "
                u"there is\n"
                u"none that can show a file, the folder around it is opened."_s,
                {processParameter()},
                {},
                {u"processes reveal 4711"_s}};
    }

protected:
    Result<void> act(const ProcessRow &row, ProcessManager &) const override
    {
        LinuxDesktop desktop(sessionHome());
        showInFinder(row, desktop);
        return {};
    }
    [[nodiscard]] QString deed() const override { return u"revealed"_s; }
};

class TerminateCommand : public OneProcessCommand {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {u"Asks a running application to end"_s,
                u"Sends the signal TERM to the process and prints its line. Asks nothing first, "
                u"and does\n"
                u"not wait for the process to end."_s,
                {processParameter()},
                {},
                {u"processes terminate 4711"_s}};
    }

protected:
    Result<void> act(const ProcessRow &row, ProcessManager &manager) const override
    {
        return killProcess(row, manager);
    }
    [[nodiscard]] QString deed() const override { return u"terminated"_s; }
};

bool isNamed(const CloseRow &row, const QString &typed)
{
    return row.name.compare(typed, Qt::CaseInsensitive) == 0
        || processOfRow(row.name).compare(typed, Qt::CaseInsensitive) == 0;
}

QString namesOf(const QList<CloseRow> &rows)
{
    QStringList names;
    for (const CloseRow &row : rows)
        names.append(row.name);
    return names.join(u", ");
}

/// The sheet's rows of those names, in its order.
Result<QList<CloseRow>> rowsNamed(const QStringList &typed)
{
    QList<CloseRow> rows = closeRows(~RestartFlags());
    const QList<CloseRow> all = rows;
    for (CloseRow &row : rows)
        row.close = false;
    for (const QString &each : typed) {
        bool known = false;
        for (CloseRow &row : rows) {
            known = known || isNamed(row, each);
            row.close = row.close || isNamed(row, each);
        }
        if (!known)
            return Error {ErrorCode::Invalid,
                          u"unknown application '" + each + u"'; they are " + namesOf(all)};
    }
    return rows;
}

class EndCommand : public Command {
public:
    [[nodiscard]] CommandDescription description() const override
    {
        return {u"Ends applications, so that they read their settings anew"_s,
                QString(u"Ends every process of each name that this user may end, whatever home it "
                        u"works on,\n"
                        u"then SystemUIServer. Asks nothing first and starts nothing again; "
                        u"whether there was\n"
                        u"such a process is not told. The names, in any letter case:\n"
                        + namesOf(closeRows(~RestartFlags())) + u'.'),
                {{u"APPLICATION"_s, u"a name out of these"_s, ParameterInfo::Count::OneOrMore,
                  Completes::Application}},
                {},
                {u"end Dock"_s, u"end finder 'QuickTime Player X'"_s}};
    }

    ExitStatus run(const Request &request, Console &console) const override
    {
        const Result<QList<CloseRow>> rows = rowsNamed(request.arguments);
        if (!rows)
            return failure(rows.error());
        const QStringList processes = processesEndedFor(rows.value());
        if (const Result<void> ended = endProcesses(processes, sessionHome()); !ended)
            return failure(ended.error());
        console.noteWrite();
        if (request.has(u"json"_s))
            console.print(jsonDocument({{u"ended"_s, QJsonArray::fromStringList(processes)}}));
        else
            console.print(QString(u"Ended: " + processes.join(u", ") + u'\n'));
        return ExitStatus::Done;
    }
};

template <typename C> std::unique_ptr<const Command> make()
{
    return std::make_unique<const C>();
}

NamedCommand listing(const QString &name)
{
    return {name, {}, [name] { return std::make_unique<const ListCommand>(name); }};
}

} // namespace

Commands processCommands()
{
    return {listing(u"processes"_s),
            listing(u"processes list"_s),
            {u"processes reveal"_s, {}, make<RevealCommand>},
            {u"processes terminate"_s, {}, make<TerminateCommand>},
            {u"end"_s, {}, make<EndCommand>}};
}

} // namespace varnel::cli
