#include "platform/linux/UserDatabase.h"

#include <vector>

#include <pwd.h>

namespace varnel {

std::optional<UserEntry> userEntry(uid_t user)
{
    std::vector<char> buffer(size_t {16} * 1024);
    passwd entry {};
    passwd *found = nullptr;
    if (::getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return std::nullopt;
    // The other fields are rooms and telephones.
    const QByteArray fields(found->pw_gecos);
    return UserEntry {found->pw_name, found->pw_dir, fields.split(',').first(), found->pw_gid};
}

void prepareUserDatabase()
{
    // Every source is asked for a user whom none of them has.
    constexpr auto nobodys = uid_t(-2);
    (void)userEntry(nobodys);
}

} // namespace varnel
