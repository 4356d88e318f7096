#include "app/NextSlot.h"

#include "tests/support/Test.h"

#include <vector>

using namespace app;

namespace {

constexpr WeekSlot Unusable = {-1, 0, 0};

struct ListedRows : SlotRows
{
    std::vector<WeekSlot> rows;
    std::size_t row = 0;

    void moveFirst() override { row = 0; }
    void moveNext() override { ++row; }
    bool atEnd() const override { return row == rows.size(); }
    std::optional<WeekSlot> slot() override
    {
        return rows[row].day < 0 ? std::nullopt : std::optional(rows[row]);
    }
};

// In a month whose 2nd is a Monday.
constexpr auto march(unsigned day, int hour, int minute = 0, int second = 0)
{
    return moment(2026, 3, day, hour, minute, second);
}

} // namespace

TEST(NextSlot, IsChosenByTheRules)
{
    using Moment = std::chrono::local_seconds;
    const std::tuple<const char *, Moment, std::vector<WeekSlot>, int, Moment> cases[] = {
        // what it shows, the present moment, the slots, and the chosen one's row and moment
        {"this week", march(4, 10), {{3, 9, 30}, {3, 10, 1}, {5, 0, 0}}, 1, march(4, 10, 1)},
        {"or the next", march(4, 10), {{1, 9, 0}, {3, 9, 30}}, 0, march(9, 9)},
        {"an equal second is not later", march(4, 10), {{3, 10, 0}, {4, 8, 0}}, 1, march(5, 8)},
        {"kept on the last row", march(4, 10), {{1, 9, 0}, {3, 10, 0}}, 1, march(4, 10)},
        {"a second past it", march(4, 10, 0, 1), {{3, 10, 0}}, 0, march(11, 10)},
        {"Sunday night past it", march(8, 23, 59, 30), {{7, 23, 59}}, 0, march(15, 23, 59)},
        {"Monday's first second", march(9, 0), {{1, 0, 0}, {7, 23, 0}}, 1, march(15, 23)},
        {"leap day", moment(2028, 2, 29, 12), {{2, 11, 0}, {3, 6, 0}}, 1, moment(2028, 3, 1, 6)},
        {"the first of several", march(4, 9), {{3, 10, 0}, {3, 10, 0}}, 0, march(4, 10)},
        {"unusable, next week", march(4, 9), {Unusable, {1, 8, 0}, Unusable}, 1, march(9, 8)},
        {"hours and minutes carry", march(4, 9), {{3, 24, 60}}, 0, march(5, 1)},
        {"day 0 of next week is its day 7", march(4, 9), {{0, 8, 0}}, 0, march(15, 8)},
        {"day 8 of this week is next Monday", march(4, 9), {{8, 8, 0}}, 0, march(9, 8)},
    };
    for (const auto &[what, now, slots, row, moment] : cases) {
        ListedRows listed;
        listed.rows = slots;
        const ChosenSlot chosen = chooseSlot(listed, [now = now] { return now; }).value();
        EXPECT_EQ(std::pair(chosen.row, chosen.moment), std::pair(row, moment)) << what;
    }
}
