#pragma once

#include "base/Result.h"
#include "cli/Command.h"
#include "cli/Request.h"
#include "loginitems/LoginItemStanding.h"

#include <QString>

#include <optional>

namespace varnel::cli {

/// "--list": which of the two lists of login items of a home is meant.
[[nodiscard]] OptionInfo listOption();

/// The list that the command line names; none where the home's usual one is meant. Invalid for a
/// word that names none.
[[nodiscard]] Result<std::optional<LoginItemsList>> chosenList(const Request &request);

/// What names the list on a command line and in JSON.
[[nodiscard]] QString wordOf(LoginItemsList list);

} // namespace varnel::cli
