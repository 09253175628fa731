#include "sysinfo/BSDProcesses.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace varnel {

namespace {

constexpr std::array<int, 4> allProcesses {1 /* CTL_KERN */, 14 /* KERN_PROC */,
                                           0 /* KERN_PROC_ALL */, 0};
constexpr unsigned nameLength = 3;

/// Not assert(): a release build must stop here too.
void require(bool holds, const char *text)
{
    if (holds)
        return;
    std::fprintf(stderr, "Assertion failed: (%s), function GetBSDProcessList, file BSDProcesses\n",
                 text);
    std::abort();
}

struct Attempt {
    int error = 0;
    bool tableGrew = false; ///< between the question for the length and the reading
};

Attempt readOnce(const ProcessTable &table, std::byte **records, std::size_t *length)
{
    *length = 0;
    if (table.sysctl(allProcesses.data(), nameLength, nullptr, length) == -1)
        return {errno};
    // malloc(0) may answer null, which would pass for a failure.
    // The caller frees it by the same interface. NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    auto *buffer = static_cast<std::byte *>(std::malloc(*length == 0 ? 1 : *length));
    if (buffer == nullptr)
        return {ENOMEM};
    if (table.sysctl(allProcesses.data(), nameLength, buffer, length) == -1) {
        const int error = errno;
        std::free(buffer); // NOLINT(cppcoreguidelines-no-malloc)
        return {error, error == ENOMEM};
    }
    *records = buffer;
    return {};
}

} // namespace

int GetBSDProcessList(const ProcessTable &table, std::byte **procList, std::size_t *procCount)
{
    require(procList != nullptr, "procList != NULL");
    require(*procList == nullptr, "*procList == NULL");
    require(procCount != nullptr, "procCount != NULL");

    *procCount = 0;
    std::size_t length = 0;
    Attempt attempt;
    do {
        attempt = readOnce(table, procList, &length);
    } while (attempt.tableGrew);
    if (attempt.error == 0)
        *procCount = length / ProcessRecord::size;

    require((attempt.error == 0) == (*procList != nullptr), "(err == 0) == (*procList != NULL)");
    return attempt.error;
}

} // namespace varnel
