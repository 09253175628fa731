// Rows of a backup file, whatever they say: described, and played on a home that nobody may write
// to.

#include "harness/DryHome.h"
#include "harness/Input.h"
#include "settings/Catalogue.h"

using namespace varnel;
using namespace varnel::fuzz;

namespace {

int takeId(Input &input)
{
    const unsigned which = input.byte();
    const auto count = static_cast<unsigned>(catalogue().size());
    if (which >= 4 * count)
        return static_cast<int>(input.number(4));
    return catalogue().at(which % count).id;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int most = 8;
    Input input(data, size);
    QList<BackupRow> rows;
    while (!input.isEmpty() && rows.size() < most) {
        const int id = takeId(input);
        const QString value1 = input.text();
        const QString value2 = input.text();
        rows.append({id, value1, value2, input.text()});
    }
    playOnDryHome(rows);
    return 0;
}
