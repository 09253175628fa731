#pragma once

#include <QLibrary>

namespace varnel {

/// Looks up functions of libraries that are loaded when they are needed, and then stay to the end
/// of the program. The first failure is logged.
class LateLibrary {
public:
    /// The library that is searched from here on, by its name without "lib" and its version.
    void open(const QString &name, int version);

    /// Leaves the function null where the library, or one before it, could not be loaded.
    template <typename Function> void find(Function &function, const char *symbol)
    {
        function = reinterpret_cast<Function>(address(symbol));
    }

    /// Whether every library was loaded and every function found.
    [[nodiscard]] bool isComplete() const { return complete; }

private:
    QFunctionPointer address(const char *symbol);
    void fail(const QString &why);

    QLibrary library;
    bool complete = true;
};

} // namespace varnel
