#include "platform/linux/EarlyFonts.h"

#include "base/LateLibrary.h"

namespace varnel {

EarlyFonts::EarlyFonts()
{
    LateLibrary library;
    library.open(QStringLiteral("fontconfig"), 1);
    int (*init)() = nullptr;
    library.find(init, "FcInit");
    // Nothing of the toolkit in there.
    if (init != nullptr)
        reading = std::jthread([init] { init(); });
}

void EarlyFonts::wait()
{
    if (reading.joinable())
        reading.join();
}

} // namespace varnel
