// Whole objects: kept ones, perhaps damaged, and those that are taken out of a file and put back.

#include "harness/PlistObjects.h"
#include "harness/Input.h"

using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    checkKept(input.bytes(static_cast<qsizetype>(input.number(2))));
    checkMoves(input.rest());
    return 0;
}
