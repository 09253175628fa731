#pragma once

#include <cstdio>
#include <cstdlib>

namespace varnel::fuzz {

/// Ends the program where a promise is broken, so that the fuzzer keeps the input.
inline void require(bool holds, const char *promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

} // namespace varnel::fuzz
