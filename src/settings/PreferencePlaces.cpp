#include "settings/PreferencePlaces.h"

#include "base/Containers.h"
#include "base/Literals.h"
#include "platform/FileStore.h"

#include <algorithm>
#include <utility>

namespace varnel {

namespace {

/// Letters of the alphabet that preference domains are named in; the others have no case here.
QChar small(QChar character)
{
    return character >= u'A' && character <= u'Z' ? QChar(character.unicode() + (u'a' - u'A'))
                                                  : character;
}

bool differAtMostInCase(QStringView one, QStringView other)
{
    return one.size() == other.size()
        && std::equal(one.begin(), one.end(), other.begin(),
                      [](QChar left, QChar right) { return small(left) == small(right); });
}

/// "com.apple.mail" for "/com.apple.Mail.plist"; null for what never lives in a container.
QString containedApplicationOf(const QString &file)
{
    constexpr qsizetype slash = 1;
    constexpr qsizetype ending = 6; // ".plist"
    if (file.size() <= slash + ending)
        return {};
    const QStringView name = QStringView(file).sliced(slash).chopped(ending);
    for (const QString &application : containedApplications())
        if (differAtMostInCase(name, application))
            return application;
    return {};
}

QString knownName(const QString &file)
{
    return file.mid(1);
}

/// The name that the application gives its file.
QString ownName(const QString &file)
{
    const QString application = containedApplicationOf(file);
    return application.isNull() ? knownName(file) : QString(application + u".plist");
}

} // namespace

PreferencePlaces::PreferencePlaces(HomeFolder homeFolder, const FileStore &fileStore)
    : home(std::move(homeFolder)), store(fileStore)
{
}

const PreferencePlace &PreferencePlaces::find(const QString &file) const
{
    const auto known = found.find(file);
    return known != found.end() ? known->second : found.emplace(file, lookFor(file)).first->second;
}

const QList<FurtherFile> &PreferencePlaces::furtherFiles(const QString &file) const
{
    const auto known = foundBeside.find(file);
    return known != foundBeside.end() ? known->second
                                      : foundBeside.emplace(file, lookBeside(file)).first->second;
}

PreferencePlace PreferencePlaces::lookFor(const QString &file) const
{
    const QString container = containerOf(file);
    const bool contained = !container.isNull();
    const QString folder = contained ? container : home.preferencesDirectory();
    QString name = nameIn(folder, file);
    if (name.isNull())
        name = contained ? ownName(file) : knownName(file);
    return {folder + u'/' + name, contained};
}

QList<FurtherFile> PreferencePlaces::lookBeside(const QString &file) const
{
    QList<FurtherFile> further;
    const PreferencePlace &place = find(file);
    const auto add = [&](const QString &folder, FurtherFile::Why why) {
        for (const QString &name : namesIn(folder, file))
            if (const QString path = folder + u'/' + name;
                path != place.path && !store.areOnePlace(path, place.path))
                further.append({path, why});
    };
    if (place.inContainer)
        add(containerOf(file), FurtherFile::Why::OtherName);
    add(home.preferencesDirectory(),
        place.inContainer ? FurtherFile::Why::NotInContainer : FurtherFile::Why::OtherName);
    return further;
}

bool PreferencePlaces::mayHaveHeld(const QString &path, const QString &file) const
{
    const qsizetype end = path.lastIndexOf(u'/');
    const QString folder = path.left(end);
    const QString application = containedApplicationOf(file);
    const bool isFolder = folder == home.preferencesDirectory()
        || (!application.isNull() && folder == containerPreferences(home, application));
    return isFolder && differAtMostInCase(path.mid(end), file);
}

QString PreferencePlaces::homeAround(const QString &folder, const QString &file)
{
    const QString application = containedApplicationOf(file);
    const QString container =
        application.isNull() ? QString() : containerPreferences({}, application);
    for (const QString &end : {container, HomeFolder().preferencesDirectory()})
        if (!end.isEmpty() && folder.endsWith(end))
            return folder.chopped(end.size());
    return {};
}

const PreferencePlaces::Folder &PreferencePlaces::at(const QString &path) const
{
    const auto known = folders.find(path);
    if (known != folders.end())
        return known->second;
    Folder folder;
    if (const Result<QStringList> names = store.names(path))
        folder = {Folder::State::Listed, names.value()};
    else if (names.error().code != ErrorCode::NotFound)
        folder.state = Folder::State::Unlisted;
    return folders.emplace(path, std::move(folder)).first->second;
}

QString PreferencePlaces::containerOf(const QString &file) const
{
    const QString application = containedApplicationOf(file);
    if (application.isNull())
        return {};
    QString container = containerPreferences(home, application);
    switch (at(container).state) {
    case Folder::State::Listed:
        return container;
    case Folder::State::Unlisted:
        // What can't be looked at is not taken for missing: a value beside it would be lost on the
        // application. But where nothing of the home can be looked at, it says nothing.
        if (isSomethingAt(container) || isSomethingAt(home.preferencesDirectory()))
            return container;
        break;
    case Folder::State::Missing:
        break;
    }
    return {};
}

bool PreferencePlaces::isSomethingAt(const QString &folder) const
{
    const Result<FileStore::Standing> standing = store.look(folder);
    return standing && standing.value() == FileStore::Standing::Something;
}

QString PreferencePlaces::nameIn(const QString &path, const QString &file) const
{
    const Folder &folder = at(path);
    const QStringList wanted {ownName(file), knownName(file)};
    for (const QString &name : wanted) {
        const bool isThere = folder.state == Folder::State::Unlisted
            ? wanted.first() != wanted.last() && store.exists(path + u'/' + name)
            : folder.names.contains(name);
        if (isThere)
            return name;
    }
    return namesIn(path, file).value(0);
}

QStringList PreferencePlaces::namesIn(const QString &path, const QString &file) const
{
    const QString known = knownName(file);
    QStringList names;
    for (const QString &name : at(path).names)
        if (differAtMostInCase(name, known))
            names.append(name);
    names.sort();
    return names;
}

} // namespace varnel
