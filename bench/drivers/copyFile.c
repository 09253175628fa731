/* copyFile FILE: reads it, writes the same bytes beside it, flushes them, renames them over it. The
 * least that any change of one key of a file can cost. */

#include "wholeFile.h"

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    size_t size;
    char *bytes = readWhole(argv[1], &size);
    replaceWhole(argv[1], bytes, size);
    return 0;
}
