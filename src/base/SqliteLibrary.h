#pragma once

#include <sqlite3.h>

namespace varnel {

/// The calls of SQLite that this program makes, looked up when first asked for. Linked in, the
/// library would be loaded and bound by every run of the terminal program, which takes as long as
/// all that such a run does itself; and what only reads settings opens no database.
struct SqliteLibrary {
    decltype(&sqlite3_busy_timeout) busyTimeout;
    decltype(&sqlite3_close) close;
    decltype(&sqlite3_column_blob) columnBlob;
    decltype(&sqlite3_column_bytes) columnBytes;
    decltype(&sqlite3_column_count) columnCount;
    decltype(&sqlite3_column_double) columnDouble;
    decltype(&sqlite3_column_int) columnNumber;
    decltype(&sqlite3_column_name) columnName;
    decltype(&sqlite3_column_text) columnText;
    decltype(&sqlite3_column_type) columnType;
    decltype(&sqlite3_db_config) configure;
    decltype(&sqlite3_errmsg) errorMessage;
    decltype(&sqlite3_exec) execute;
    decltype(&sqlite3_finalize) finalize;
    decltype(&sqlite3_get_autocommit) isCommittingItself;
    decltype(&sqlite3_limit) limit;
    decltype(&sqlite3_open_v2) open;
    decltype(&sqlite3_prepare_v2) prepare;
    decltype(&sqlite3_progress_handler) progressHandler;
    decltype(&sqlite3_set_authorizer) setAuthorizer;
    decltype(&sqlite3_step) step;
    decltype(&sqlite3_stricmp) compareCaseless;
    decltype(&sqlite3_vfs_find) findFiles;
    decltype(&sqlite3_vfs_register) addFiles;

    /// The way to files that opens a name as it stands. The library's own resolves links in it, by
    /// their text and one by one, which ends before a folder that is reached through a descriptor.
    static constexpr const char *filesAsNamed = "varnel-as-named";

    /// Null where the library is not installed.
    [[nodiscard]] static const SqliteLibrary *get();
};

} // namespace varnel
