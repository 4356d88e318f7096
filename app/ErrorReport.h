#pragma once

#include "platform/RuntimeError.h"

#include <functional>
#include <optional>

// What becomes of errors: a handler traps those of its steps and goes on, or the program tells the
// error and ends.
namespace app {

/// The rule by which a handler outlives its errors: each of its steps runs through the trap, which
/// writes an error's description to the log and lets the handler go on with its next step. It goes
/// on even when the log cannot be written.
class ErrorTrap
{
public:
    /// Traps every error.
    ErrorTrap() = default;

    /// Lets errors of this number out, for a handler that has an answer of its own to them.
    explicit ErrorTrap(platform::ErrorNumber letOut)
        : m_letOut(letOut)
    {}

    /// Runs one step. Returns whether it reached its end.
    bool step(const std::function<void()> &action) const;

private:
    std::optional<platform::ErrorNumber> m_letOut;
};

/// Runs an event handler, so that its error never passes through the toolkit's frames: it is told
/// in the log, on standard error and in a message box, and ends the program with status 1. A second
/// error, raised while the message is open, is not told any more.
void handleEvent(const std::function<void()> &handler) noexcept;

/// Registers what has to come to rest (timers, transfers) before such an error is told.
void beforeErrorReport(std::function<void()> comeToRest);

} // namespace app
