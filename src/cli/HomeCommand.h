#pragma once

#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/HomeSession.h"
#include "cli/JsonMembers.h"
#include "settings/RestartFlags.h"

#include <QJsonObject>
#include <QStringList>

#include <functional>
#include <memory>

namespace varnel {
class UserSessions;
}

namespace varnel::cli {

/// What a command found or did in one home.
struct HomeOutcome {
    ExitStatus status = ExitStatus::Done;
    QStringList messages; ///< for standard error, a line each
    bool changes = false; ///< something of the home was changed, or would be in a dry run
    bool dryRun = false;
    RestartFlags restart; ///< the applications that have to read their settings anew
    /// The data, for people and for scripts; only what was asked for is made. Neither is there
    /// where the command came to nothing.
    std::function<QString(const Style &)> text;
    std::function<QJsonObject()> object;
    /// In the place of `object`: its members, as another process told them.
    JsonMembers heard;

    [[nodiscard]] bool wrote() const { return changes && !dryRun; }

    /// One that came to nothing: Usage for what was typed wrong, else Failed.
    [[nodiscard]] static HomeOutcome failed(const Error &error);

    /// Names the files that could not be read. The status becomes Partly when only some of the
    /// files of these reports could not be read, Failed when none could.
    void noteUnreadableFiles(const HomeSession &session, const QList<SettingReport> &reports);
};

/// A command that does its work home by home.
class HomeCommand : public Command {
public:
    /// What is done in a home. It keeps nothing of one home for the next.
    using Work = std::function<HomeOutcome(const HomeFolder &home)>;

    ExitStatus run(const Request &request, Console &console) const final;

protected:
    /// Checks what was typed, before any home is looked at; an error ends the command there. The
    /// request outlives the work.
    [[nodiscard]] virtual Result<Work> prepare(const Request &request) const = 0;

    /// The home as the work gets it; an error: nothing may be done in it.
    [[nodiscard]] virtual Result<HomeFolder> takeHome(const HomeFolder &home,
                                                      const Request &request) const;
    /// What comes of a home in which nothing may be done.
    [[nodiscard]] virtual HomeOutcome notTaken(const HomeFolder &home, const Error &why) const;

private:
    ExitStatus runInOne(const Work &work, const Request &request, Console &console) const;
    ExitStatus runInMany(const QStringList &directories, const Work &work, const Request &request,
                         Console &console) const;
    /// One home of several. Where this process may become the home's owner, it does so here.
    HomeOutcome workIn(const QString &directory, const Work &work, const Request &request,
                       const UserSessions &sessions) const;
};

/// One that is two functions: what it takes, and what it does with that.
template <CommandDescription (*describe)(),
          Result<HomeCommand::Work> (*prepareWork)(const Request &)>
std::unique_ptr<const Command> homeCommand()
{
    class Described : public HomeCommand {
    public:
        [[nodiscard]] CommandDescription description() const override { return describe(); }

    protected:
        [[nodiscard]] Result<Work> prepare(const Request &request) const override
        {
            return prepareWork(request);
        }
    };
    return std::make_unique<const Described>();
}

} // namespace varnel::cli
