/* Reads and replaces whole files in the plainest way that is still safe. */

#ifndef WHOLE_FILE_H
#define WHOLE_FILE_H

#include <stddef.h>

/* The bytes of a file, to be freed; ends the program when they can't be read. */
char *readWhole(const char *path, size_t *size);

/* Write beside it, flush, rename; ends the program when that fails. */
void replaceWhole(const char *path, const char *bytes, size_t size);

#endif
