#pragma once

namespace controls {

/// Lets assistive technology see each PB as a progress bar with its range and the value drawn,
/// named by its accessible name or else its caption. It costs nothing until such technology asks.
void installAccessibility();

} // namespace controls
