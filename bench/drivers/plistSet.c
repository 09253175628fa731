/* plistSet FILE KEY NUMBER: sets an integer of the root dictionary, through libplist. */

#include "wholeFile.h"

#include <stdint.h>
#include <stdlib.h>

#include <plist/plist.h>

int main(int argc, char **argv)
{
    if (argc != 4)
        return 2;
    size_t size;
    char *bytes = readWhole(argv[1], &size);
    plist_t root = NULL;
    const int binary = plist_is_binary(bytes, (uint32_t)size);
    if (binary)
        plist_from_bin(bytes, (uint32_t)size, &root);
    else
        plist_from_xml(bytes, (uint32_t)size, &root);
    if (root == NULL)
        return 1;
    plist_dict_set_item(root, argv[2], plist_new_uint(strtoull(argv[3], NULL, 10)));
    char *written = NULL;
    uint32_t length = 0;
    if (binary)
        plist_to_bin(root, &written, &length);
    else
        plist_to_xml(root, &written, &length);
    replaceWhole(argv[1], written, length);
    return 0;
}
