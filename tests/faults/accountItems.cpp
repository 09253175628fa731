// One save of one change to the list of login items of a Mac account, as both programs make it, for
// the fault loop.
//
// usage: accountItems HOME disable|enable|remove|add PATH
//
// The exit status is that of varnelctl.

#include "backup/LoginItemSave.h"
#include "cli/HomeSession.h"
#include "platform/linux/HomeOwner.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace varnel;

namespace {

enum Status { Done = 0, Unknown = 1, NothingChanged = 3, SomeChanged = 4 };

LoginItemChange::Action actionOf(const char *verb)
{
    if (qstrcmp(verb, "disable") == 0)
        return LoginItemChange::Disable;
    if (qstrcmp(verb, "enable") == 0)
        return LoginItemChange::Enable;
    return qstrcmp(verb, "add") == 0 ? LoginItemChange::Add : LoginItemChange::Remove;
}

void tell(const QString &text)
{
    std::fprintf(stderr, "varnelctl: %s\n", qUtf8Printable(text));
}

int statusOf(const LoginItemsReport &report)
{
    using Outcome = LoginItemsReport::Outcome;
    switch (report.outcome) {
    case Outcome::Unknown:
        return Unknown;
    case Outcome::Refused:
        return NothingChanged;
    case Outcome::Unchanged:
        return report.change.actionId == LoginItemChange::Enable ? SomeChanged : NothingChanged;
    case Outcome::Halfway:
        return SomeChanged;
    case Outcome::Nothing:
    case Outcome::Changed:
        break;
    }
    return report.failures.isEmpty() ? Done : SomeChanged;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 4)
        return NothingChanged;
    const QString folder = QFile::decodeName(argv[1]);
    // One's own is reached by its path, so that the layer knows each file by its name.
    const bool own = QFile::decodeName(qgetenv("HOME")) == folder;
    const Result<HomeFolder> home =
        own ? Result<HomeFolder>(HomeFolder {folder}) : workAsOwner({folder, false});
    if (!home) {
        tell(home.error().text);
        return NothingChanged;
    }
    cli::HomeSession session(home.value());
    const QString path = QFile::decodeName(argv[3]);
    const Result<LoginItemsReport> saved = saveLoginItem(
        session.workspace(), {actionOf(argv[2]), path, path}, {}, LoginItemsList::Account);
    if (!saved) {
        tell(saved.error().text);
        return NothingChanged;
    }
    for (const Error &error : saved.value().failures)
        tell(path + u": " + error.text);
    const int status = statusOf(saved.value());
    if (status != Done && saved.value().failures.isEmpty())
        tell(path + u": not as it should be");
    return status;
}
