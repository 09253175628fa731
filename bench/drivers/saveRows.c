/* saveRows DATABASE ROWS REPLACEMENTS FILE...: so many bare insertions into a database (open,
 * insert, close), and so many replacements of files, the files in turn. The least that a save of so
 * many settings can cost when each old value is kept before its setting changes. */

#include "wholeFile.h"

#include <fcntl.h>
#include <libgen.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <sqlite3.h>

static void insert(const char *database, int row)
{
    sqlite3 *opened = NULL;
    char query[128];
    snprintf(query, sizeof query, "INSERT INTO users VALUES('%d','1', '', '')", row);
    if (sqlite3_open(database, &opened) != SQLITE_OK)
        exit(1);
    if (row == 0
        && sqlite3_exec(opened,
                        "CREATE TABLE users (id INTEGER, value1 TEXT, value2 TEXT, value3 TEXT)",
                        NULL, NULL, NULL)
            != SQLITE_OK)
        exit(1);
    if (sqlite3_exec(opened, query, NULL, NULL, NULL) != SQLITE_OK)
        exit(1);
    sqlite3_close(opened);
}

/* Without it, a power cut could take back the name that was just given. */
static void flushFolderOf(const char *path)
{
    char copy[4096];
    snprintf(copy, sizeof copy, "%s", path);
    const int folder = open(dirname(copy), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0 || fsync(folder) != 0)
        exit(1);
    close(folder);
}

int main(int argc, char **argv)
{
    if (argc < 5)
        return 2;
    const int rows = atoi(argv[2]);
    for (int row = 0; row < rows; ++row)
        insert(argv[1], row);
    for (int i = 0; i < atoi(argv[3]); ++i) {
        const char *path = argv[4 + i % (argc - 4)];
        size_t size;
        char *bytes = readWhole(path, &size);
        replaceWhole(path, bytes, size);
        free(bytes);
        flushFolderOf(path);
    }
    return 0;
}
