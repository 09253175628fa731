/* saveRows DATABASE ROWS KEPT FILE...: so many bare insertions into a database (open, insert,
 * close), then each file gets a second name in a new folder KEPT, beside notes about it ("-": none
 * of that), then each is replaced. The least that a save of so many settings can cost when each old
 * value, and each old file, is kept before its setting changes. */

#include "wholeFile.h"

#include <fcntl.h>
#include <libgen.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sqlite3.h>

static void insert(const char *database, int row)
{
    sqlite3 *opened = NULL;
    char query[128];
    snprintf(query, sizeof query, "INSERT INTO users VALUES('%d','1', '', '')", row);
    if (sqlite3_open(database, &opened) != SQLITE_OK
        || sqlite3_exec(opened, "PRAGMA synchronous=EXTRA", NULL, NULL, NULL) != SQLITE_OK)
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

/* Of the file alone, so that neither a name nor its bytes can be lost afterwards. */
static void keep(const char *path, const char *folder, int number)
{
    char name[4096];
    snprintf(name, sizeof name, "%s/%d.plist", folder, number);
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0 || fsync(file) != 0 || link(path, name) != 0)
        exit(1);
    close(file);
}

/* As large as the notes of an ordinary save. */
static void writeNotes(const char *folder, int files)
{
    const size_t size = (size_t)(1024 * files);
    char *notes = malloc(size);
    char name[4096];
    if (notes == NULL)
        exit(1);
    memset(notes, '"', size);
    snprintf(name, sizeof name, "%s/index.json", folder);
    replaceWhole(name, notes, size);
    flushFolderOf(name);
    free(notes);
}

static void keepAll(const char *folder, char **files, int count)
{
    if (mkdir(folder, 0700) != 0)
        exit(1);
    flushFolderOf(folder);
    for (int i = 0; i < count; ++i)
        keep(files[i], folder, i + 1);
    writeNotes(folder, count);
}

int main(int argc, char **argv)
{
    if (argc < 5)
        return 2;
    const int rows = atoi(argv[2]);
    for (int row = 0; row < rows; ++row)
        insert(argv[1], row);
    if (strcmp(argv[3], "-") != 0)
        keepAll(argv[3], argv + 4, argc - 4);
    for (int i = 4; i < argc; ++i) {
        size_t size;
        char *bytes = readWhole(argv[i], &size);
        replaceWhole(argv[i], bytes, size);
        free(bytes);
        flushFolderOf(argv[i]);
    }
    return 0;
}
