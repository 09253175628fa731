#pragma once

#include <QString>

namespace varnel {

/// One sentence for the user about what came of an action.
struct Notice {
    enum class Tone {
        Quiet, ///< it worked
        Caution, ///< it worked, and can't be undone; or something is not as it should be
        Failure
    };
    Tone tone = Tone::Quiet;
    QString text;

    bool operator==(const Notice &) const = default;
};

} // namespace varnel
