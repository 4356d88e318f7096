#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

// The choice of the next download from the weekly slots and the present moment.
namespace app {

/// A slot of the week. Values out of range carry over: minute 60 is the next hour's minute 0.
struct WeekSlot
{
    int day;    ///< 1 = Monday to 7 = Sunday
    int hour;   ///< 0 to 23
    int minute; ///< 0 to 59
};

/// The slots to choose from, read one at a time in the order of day, hour and minute.
class SlotRows
{
public:
    virtual ~SlotRows() = default;
    virtual void moveFirst() = 0;
    virtual void moveNext() = 0;
    virtual bool atEnd() const = 0;
    /// The current row's slot, or nothing when the row cannot be used.
    virtual std::optional<WeekSlot> slot() = 0;
};

struct ChosenSlot
{
    int row; ///< counted from 0
    std::chrono::local_seconds moment;
};

/// The latest moment of any of the slots that is not later than `now`; nothing without slots.
std::optional<std::chrono::local_seconds> latestMoment(const std::vector<WeekSlot> &slots,
                                                       std::chrono::local_seconds now);

/// The first slot of this week that is later than the present moment; when there is none, the
/// first slot of next week. A last slot of this week that falls on the very second is kept:
/// see "The equal second" in docs/behaviour.md. `now` is asked again for each row. Nothing when no
/// row can be used.
std::optional<ChosenSlot> chooseSlot(SlotRows &rows,
                                     const std::function<std::chrono::local_seconds()> &now);

} // namespace app
