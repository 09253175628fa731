#include "cli/ListOption.h"

#include "base/Literals.h"

namespace varnel::cli {

OptionInfo listOption()
{
    return {u"list"_s,
            u"LIST"_s,
            u"whose login items: session or account"_s,
            false,
            Completes::Words,
            {wordOf(LoginItemsList::Session), wordOf(LoginItemsList::Account)}};
}

Result<std::optional<LoginItemsList>> chosenList(const Request &request)
{
    if (!request.has(listOption().name))
        return std::optional<LoginItemsList>();
    const QString word = request.value(listOption().name);
    for (const LoginItemsList list : {LoginItemsList::Session, LoginItemsList::Account})
        if (word == wordOf(list))
            return std::optional(list);
    return Error {ErrorCode::Invalid, u"--list takes 'session' or 'account', not '" + word + u'\''};
}

QString wordOf(LoginItemsList list)
{
    return list == LoginItemsList::Account ? u"account"_s : u"session"_s;
}

} // namespace varnel::cli
