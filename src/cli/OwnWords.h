#pragma once

#include "base/Result.h"
#include "cli/Registry.h"

#include <QByteArrayList>

namespace varnel::cli {

/// A command line in the shape of the Mac's own preferences tool ("get DOMAIN KEY", "set DOMAIN KEY
/// -bool true", "delete DOMAIN KEY") said in this program's own words: "get 1004 --key tilesize",
/// "set 1009=0", "reset 1009". Any other command line comes back as it is.
///
/// The arguments begin with the program's name. Invalid, with a text for the user, for a domain, a
/// key or a value that no setting has.
[[nodiscard]] Result<QByteArrayList> inOwnWords(const QByteArrayList &arguments,
                                                const Commands &commands);

} // namespace varnel::cli
