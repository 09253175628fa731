// A run's notes on what it has kept, perhaps damaged: refused, or read as something that is written
// and read again without a change.

#include "backup/KeptIndex.h"
#include "harness/Input.h"
#include "harness/Require.h"

using namespace varnel;
using namespace varnel::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Result<KeptIndex> index = KeptIndex::fromBytes(Input(data, size).rest());
    if (!index)
        return 0;
    const QByteArray written = index.value().toBytes();
    const Result<KeptIndex> again = KeptIndex::fromBytes(written);
    require(again.ok(), "what was accepted is written so that it is accepted again");
    require(again.value() == index.value(), "it says the same again");
    require(again.value().toBytes() == written, "in the same words");
    return 0;
}
