#include "base/SqliteLibrary.h"

#include "base/LateLibrary.h"

#include <cerrno>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnel {

namespace {

int nameAsItStands(sqlite3_vfs *, const char *name, int room, char *full)
{
    const std::size_t size = std::strlen(name) + 1;
    if (size > std::size_t(room))
        return SQLITE_CANTOPEN;
    std::memcpy(full, name, size);
    return SQLITE_OK;
}

/// In the place of the library's call: what was a file when it was looked at may be a pipe by now,
/// and opening that would wait for somebody at its other end.
int openWithoutWaiting(const char *path, int flags, int mode)
{
    const int file = ::open(path, flags | O_NONBLOCK | O_NOCTTY, mode);
    struct stat status { };
    if (file < 0
        || (::fstat(file, &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))))
        return file;
    ::close(file);
    errno = EISDIR; // the one error after which the library does not try again
    return -1;
}

bool addFilesAsNamed(const SqliteLibrary &sqlite)
{
    sqlite3_vfs *usual = sqlite.findFiles(nullptr);
    if (usual == nullptr
        || usual->xSetSystemCall(usual, "open",
                                 reinterpret_cast<sqlite3_syscall_ptr>(openWithoutWaiting))
            != SQLITE_OK)
        return false;
    static sqlite3_vfs asNamed;
    asNamed = *usual;
    asNamed.pNext = nullptr;
    asNamed.zName = SqliteLibrary::filesAsNamed;
    asNamed.xFullPathname = nameAsItStands;
    return sqlite.addFiles(&asNamed, 0) == SQLITE_OK;
}

std::optional<SqliteLibrary> load()
{
    LateLibrary library;
    SqliteLibrary sqlite {};
    library.open(QStringLiteral("sqlite3"), 0);
    library.find(sqlite.busyTimeout, "sqlite3_busy_timeout");
    library.find(sqlite.close, "sqlite3_close");
    library.find(sqlite.columnBlob, "sqlite3_column_blob");
    library.find(sqlite.columnBytes, "sqlite3_column_bytes");
    library.find(sqlite.columnCount, "sqlite3_column_count");
    library.find(sqlite.columnDouble, "sqlite3_column_double");
    library.find(sqlite.columnNumber, "sqlite3_column_int");
    library.find(sqlite.columnName, "sqlite3_column_name");
    library.find(sqlite.columnText, "sqlite3_column_text");
    library.find(sqlite.columnType, "sqlite3_column_type");
    library.find(sqlite.configure, "sqlite3_db_config");
    library.find(sqlite.errorMessage, "sqlite3_errmsg");
    library.find(sqlite.execute, "sqlite3_exec");
    library.find(sqlite.finalize, "sqlite3_finalize");
    library.find(sqlite.isCommittingItself, "sqlite3_get_autocommit");
    library.find(sqlite.limit, "sqlite3_limit");
    library.find(sqlite.open, "sqlite3_open_v2");
    library.find(sqlite.prepare, "sqlite3_prepare_v2");
    library.find(sqlite.progressHandler, "sqlite3_progress_handler");
    library.find(sqlite.setAuthorizer, "sqlite3_set_authorizer");
    library.find(sqlite.step, "sqlite3_step");
    library.find(sqlite.compareCaseless, "sqlite3_stricmp");
    library.find(sqlite.findFiles, "sqlite3_vfs_find");
    library.find(sqlite.addFiles, "sqlite3_vfs_register");
    if (!library.isComplete() || !addFilesAsNamed(sqlite))
        return std::nullopt;
    return sqlite;
}

} // namespace

const SqliteLibrary *SqliteLibrary::get()
{
    static const std::optional<SqliteLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace varnel
