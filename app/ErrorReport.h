#pragma once

#include "platform/RuntimeError.h"

#include <functional>

// What becomes of an error that no handler traps: the program tells it and ends.
namespace app {

/// Registers what has to come to rest (timers, transfers) before such an error is told.
void beforeErrorReport(std::function<void()> comeToRest);

/// Tells the error in the log, on standard error and in a message box, and ends the program with
/// status 1. A second error, raised while the message is open, is not told any more.
void endWithErrorReport(const platform::RuntimeError &error);

/// Runs an event handler, so that its error never passes through the toolkit's frames: it ends
/// here, with the report.
void handleEvent(const std::function<void()> &handler) noexcept;

} // namespace app
