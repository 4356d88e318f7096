#include "app/NextSlot.h"

#include <algorithm>

namespace app {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::minutes;

static local_days dayOf(local_seconds moment)
{
    return std::chrono::floor<days>(moment);
}

// Monday = 1 to Sunday = 7
static int weekdayNumber(local_days day)
{
    return static_cast<int>(std::chrono::weekday{day}.iso_encoding());
}

// The weekday number of a date serial whose day 1 is a Sunday, counted from Sunday = 1. It is the
// serial itself from 1 to 7 and repeats every seven days beyond.
static int weekdayOfSerial(int serial)
{
    const int remainder = (serial - 1) % 7;
    return (remainder < 0 ? remainder + 7 : remainder) + 1;
}

// In the week (Monday to Sunday) of `now`.
static local_seconds momentThisWeek(const WeekSlot &slot, local_seconds now)
{
    const local_days today = dayOf(now);
    return today + days{slot.day - weekdayNumber(today)} + hours{slot.hour} + minutes{slot.minute};
}

static local_seconds momentNextWeek(const WeekSlot &slot, local_seconds now)
{
    const local_days today = dayOf(now);
    const int daysAhead = (7 - weekdayNumber(today)) + weekdayOfSerial(slot.day);
    return today + days{daysAhead} + hours{slot.hour} + minutes{slot.minute};
}

std::optional<local_seconds> latestMoment(const std::vector<WeekSlot> &slots, local_seconds now)
{
    std::optional<local_seconds> latest;
    for (const WeekSlot &slot : slots) {
        local_seconds moment = momentThisWeek(slot, now);
        if (moment > now)
            moment -= std::chrono::weeks{1};
        latest = std::max(latest.value_or(moment), moment);
    }
    return latest;
}

std::optional<ChosenSlot> chooseSlot(SlotRows &rows, const std::function<local_seconds()> &now)
{
    std::optional<ChosenSlot> chosen;
    for (int row = 0; !rows.atEnd(); rows.moveNext(), ++row) {
        const auto slot = rows.slot();
        if (!slot)
            continue;
        const local_seconds present = now();
        chosen = ChosenSlot{row, momentThisWeek(*slot, present)};
        if (chosen->moment > present)
            return chosen;
    }
    if (!chosen || chosen->moment >= now())
        return chosen;

    rows.moveFirst();
    for (int row = 0; !rows.atEnd(); rows.moveNext(), ++row) {
        if (const auto slot = rows.slot())
            return ChosenSlot{row, momentNextWeek(*slot, now())};
    }
    return std::nullopt;
}

} // namespace app
