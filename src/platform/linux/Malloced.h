#pragma once

#include <cstdlib>
#include <memory>

namespace varnel {

/// What a library in C allocated and leaves to its caller.
struct FreeMalloced {
    // The library's interface asks for it. NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void operator()(void *memory) const { std::free(memory); }
};

template <typename T> using Malloced = std::unique_ptr<T, FreeMalloced>;

} // namespace varnel
