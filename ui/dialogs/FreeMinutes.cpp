#include "ui/dialogs/FreeMinutes.h"

#include "platform/RuntimeError.h"

namespace ui {

QStringList freeMinutes(const std::vector<int> &taken)
{
    QStringList minutes;
    for (int minute = 0; minute < 60; ++minute)
        minutes << QString::number(minute);
    for (const int position : taken) {
        if (position < 0 || position >= minutes.size())
            throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
        minutes.removeAt(position);
    }
    return minutes;
}

} // namespace ui
