#include "app/ErrorReport.h"

#include "app/Module1.h"
#include "platform/Host.h"

#include <cstdio>
#include <utility>

namespace app {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
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

static std::function<void()> restingAction;
static bool isEnding = false;

void beforeErrorReport(std::function<void()> comeToRest)
{
    restingAction = std::move(comeToRest);
}

static void endWithErrorReport(const RuntimeError &error)
{
    if (std::exchange(isEnding, true))
        return;
    if (restingAction)
        restingAction();
    const QString text =
        u"Error %1: %2"_s.arg(static_cast<int>(error.number())).arg(error.description());
    logIfPossible(error.description());
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(WindowTitle()), qUtf8Printable(text));
    platform::host().showMessage(WindowTitle(), text, platform::MessageIcon::Critical);
    platform::host().endProgram(1);
    isEnding = false; // only a host that goes on, as tests have it, comes back
}

void handleEvent(const std::function<void()> &handler) noexcept
{
    try {
        handler();
    } catch (const RuntimeError &error) {
        endWithErrorReport(error);
    } catch (const std::exception &error) {
        endWithErrorReport(
            RuntimeError(ErrorNumber::InternalError, QString::fromLocal8Bit(error.what())));
    }
}

} // namespace app
