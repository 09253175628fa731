// XML property lists: every key that another reader sees is found, and no other.

#include "harness/Input.h"
#include "harness/PlistLookUps.h"

using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray file = Input(data, size).rest();
    if (file.startsWith("bplist") == false)
        checkLookUps(file);
    return 0;
}
