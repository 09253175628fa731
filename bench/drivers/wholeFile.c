#include "wholeFile.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

static void check(int holds, const char *path)
{
    if (holds)
        return;
    perror(path);
    exit(1);
}

char *readWhole(const char *path, size_t *size)
{
    struct stat status;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    check(file >= 0 && fstat(file, &status) == 0, path);
    *size = (size_t)status.st_size;
    char *bytes = malloc(*size + 1);
    check(bytes != NULL, path);
    for (size_t done = 0; done < *size;) {
        const ssize_t count = read(file, bytes + done, *size - done);
        check(count > 0, path);
        done += (size_t)count;
    }
    close(file);
    return bytes;
}

void replaceWhole(const char *path, const char *bytes, size_t size)
{
    char temporary[4096];
    check(snprintf(temporary, sizeof temporary, "%s.new", path) < (int)sizeof temporary, path);
    const int file = open(temporary, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    check(file >= 0, temporary);
    for (size_t done = 0; done < size;) {
        const ssize_t count = write(file, bytes + done, size - done);
        check(count > 0, temporary);
        done += (size_t)count;
    }
    check(fsync(file) == 0 && close(file) == 0, temporary);
    check(rename(temporary, path) == 0, path);
}
