#include "backup/BackupFolder.h"
#include "backup/LoginItemsOfHome.h"
#include "base/Literals.h"
#include "cli/Candidates.h"
#include "cli/HomeSession.h"
#include "cli/HomesNamed.h"
#include "cli/ListOption.h"
#include "platform/linux/HomeOwner.h"
#include "platform/linux/UserDatabase.h"
#include "platform/linux/Worker.h"

#include <QFileInfo>

namespace varnel::cli {

namespace {

/// Somebody waits for the key that was pressed, and goes on without what comes late.
constexpr Worker::Limits patience {std::chrono::milliseconds(700), qsizetype(4) << 20};
/// Of a long list of homes.
constexpr qsizetype mostHomes = 8;

/// Shells leave that to the command's start.
QString withoutTilde(const QString &path)
{
    return path.startsWith(u"~/") ? QString(qEnvironmentVariable("HOME") + path.mid(1)) : path;
}

/// The homes as a command would be told them. A list is read where it is a file: a pipe belongs to
/// the command.
Request requestOf(const TypedWords &typed)
{
    Request request;
    for (const QByteArray &home : typed.values(u"home"_s))
        request.options[u"home"_s].append(withoutTilde(QString::fromUtf8(home)));
    for (const QByteArray &list : typed.values(u"homes-from"_s))
        if (const QString path = withoutTilde(QString::fromUtf8(list)); QFileInfo(path).isFile())
            request.options[u"homes-from"_s].append(path);
    for (const QByteArray &list : typed.values(listOption().name))
        request.options[listOption().name].append(QString::fromUtf8(list));
    if (typed.hasSwitch(u"new-home"_s))
        request.options[u"new-home"_s];
    return request;
}

void tell(const Worker::Tell &tellLine, const QString &text, const QString &help)
{
    tellLine(text.toUtf8().toPercentEncoding() + '\t' + help.toUtf8().toPercentEncoding());
}

QString heard(const QByteArray &told)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(told));
}

void tellLoginItems(HomeSession &session, const Request &request, const Worker::Tell &tellLine)
{
    const Result<std::optional<LoginItemsList>> list = chosenList(request);
    if (!list)
        return;
    for (const LoginItemRow &row :
         LoginItemsOfHome(session.workspace(), false, list.value()).rows())
        tell(tellLine, row.path, row.name);
}

void tellCandidates(Completes completes, const HomeFolder &home, const Request &request,
                    const Worker::Tell &tellLine)
{
    HomeSession session(home);
    if (completes == Completes::LoginItem) {
        tellLoginItems(session, request, tellLine);
        return;
    }
    const Result<QList<BackupEntry>> listed = BackupFolder(session.workspace()).list();
    if (listed)
        for (const BackupEntry &entry : listed.value())
            tell(tellLine, entry.name, creationText(entry.createdDate));
}

void lookIn(Completes completes, const Request &request, const Worker::Tell &tellLine)
{
    const Result<HomeFolder> home = chosenHome(request);
    const Result<HomeFolder> worked = home ? takeUp(home.value(), request) : home.error();
    if (worked)
        tellCandidates(completes, worked.value(), request, tellLine);
}

/// Each a request for one home.
QList<Request> onesOf(const Request &request)
{
    const Result<std::optional<QStringList>> homes = homesNamed(request);
    if (!homes)
        return {};
    if (!homes.value())
        return {request};
    QList<Request> ones;
    for (const QString &home : homes.value()->mid(0, mostHomes)) {
        ones.append(request);
        ones.last().options[u"home"_s] = {home};
    }
    return ones;
}

} // namespace

QList<Candidate> candidatesInHomes(Completes completes, const TypedWords &typed)
{
    if (HomeOwner::callerMayBecomeOthers())
        prepareUserDatabase();
    QList<Candidate> candidates;
    for (const Request &request : onesOf(requestOf(typed))) {
        Worker worker([&](const Worker::Tell &told) { lookIn(completes, request, told); },
                      patience);
        const Result<void> done = worker.follow([&](const QByteArray &line) {
            const QList<QByteArray> parts = line.split('\t');
            candidates.append({Candidate::Kind::Word, heard(parts.first()), heard(parts.last())});
        });
        if (!done)
            break;
    }
    return candidates;
}

} // namespace varnel::cli
