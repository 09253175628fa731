#pragma once

namespace varnel {

/// Makes the toolkit's connection to the bus of screen readers, where the session has one: later,
/// with another user's rights, the bus would turn this process away.
void connectToAccessibilityBus();

} // namespace varnel
