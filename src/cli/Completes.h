#pragma once

namespace varnel::cli {

/// What may stand at a place of the command line, for the shells that complete it.
enum class Completes {
    Nothing, ///< a text of one's own
    Words, ///< one of a few words
    Setting,
    Assignment, ///< SETTING=VALUE
    Group,
    Application, ///< one that may have to read its settings anew
    File,
    Folder,
    Backup, ///< from here on the home or the machine is asked while somebody types
    LoginItem,
    Process,
};

} // namespace varnel::cli
