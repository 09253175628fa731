#pragma once

#include <thread>

namespace varnel {

/// Has fontconfig read its configuration and its lists of fonts, which the first text that is
/// measured would wait for, while the program still waits for the display.
///
/// To be made by the main thread, which the toolkit takes for that which used it first.
class EarlyFonts {
public:
    EarlyFonts();

    /// Before the first text: who asks fontconfig earlier has it do all this a second time.
    void wait();

private:
    std::jthread reading;
};

} // namespace varnel
