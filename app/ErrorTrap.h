#pragma once

#include "platform/RuntimeError.h"

#include <functional>
#include <optional>

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

} // namespace app
