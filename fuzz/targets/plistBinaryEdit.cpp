// Binary property lists: edits, what they leave alone, and their inverse.

#include "harness/PlistEdits.h"

using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const QList<EditWish> edits = takeEdits(input);
    const QByteArray file = input.rest();
    if (file.startsWith("bplist") == true)
        checkEdits(file, edits);
    return 0;
}
