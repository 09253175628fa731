#include "base/Literals.h"
#include "profiles/ProfileDocument.h"

#include "plist/PropertyList.h"

namespace varnel {

namespace {

using Member = ProfileDocument::Member;

/// More names than a profile has any use for; each value is a search of its own.
constexpr qsizetype mostMembers = 200;

/// Of lists nothing is kept: many members may share one long list.
plist::Value withoutList(plist::Value value)
{
    value.strings.clear();
    return value;
}

Result<QList<Member>> membersAt(const plist::PropertyList &list, const QStringList &path)
{
    const QStringList names = list.keys(path).value_or(QStringList());
    if (names.size() > mostMembers)
        return Error {ErrorCode::Invalid, u"more than %1 members"_s.arg(mostMembers)};
    QList<Member> members;
    for (const QString &name : names)
        members.append({name, withoutList(list.value(path + QStringList {name}))});
    return members;
}

} // namespace

Result<ProfileDocument> ProfileDocument::fromPropertyList(const QByteArray &bytes)
{
    const Result<plist::PropertyList> list = plist::PropertyList::open(bytes);
    if (!list)
        return Error {ErrorCode::Invalid,
                      u"neither a JSON object nor a valid property list with a dictionary"_s};
    const Result<QList<Member>> root = membersAt(list.value(), {});
    if (!root)
        return root.error();
    const Result<QList<Member>> settings = membersAt(list.value(), {profileMembers::settings});
    if (!settings)
        return settings.error();
    return ProfileDocument {root.value(), settings.value()};
}

} // namespace varnel
