/* plistGet FILE KEY: prints an integer of the root dictionary, through libplist. */

#include "wholeFile.h"

#include <inttypes.h>
#include <stdint.h>
#include <stdio.h>

#include <plist/plist.h>

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    size_t size;
    char *bytes = readWhole(argv[1], &size);
    plist_t root = NULL;
    const int binary = plist_is_binary(bytes, (uint32_t)size);
    if (binary)
        plist_from_bin(bytes, (uint32_t)size, &root);
    else
        plist_from_xml(bytes, (uint32_t)size, &root);
    plist_t item = plist_dict_get_item(root, argv[2]);
    if (item == NULL)
        return 1;
    uint64_t value = 0;
    plist_get_uint_val(item, &value);
    printf("%" PRIu64 "\n", value);
    return 0;
}
