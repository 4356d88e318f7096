#include "app/ErrorTrap.h"

#include "app/Module1.h"

namespace app {

using platform::RuntimeError;

static void logIfPossible(const QString &description)
{
    try {
        WriteLog(description);
    } catch (const RuntimeError &) {
        // There is no other place to tell it, and the handler's work goes first.
    }
}

bool ErrorTrap::step(const std::function<void()> &action) const
{
    try {
        action();
        return true;
    } catch (const RuntimeError &error) {
        if (error.number() == m_letOut)
            throw;
        logIfPossible(error.description());
        return false;
    }
}

} // namespace app
