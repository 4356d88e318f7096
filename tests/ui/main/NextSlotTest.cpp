#include "ui/main/NextSlot.h"

#include "tests/support/Test.h"

#include <vector>

using namespace ui;

namespace {

constexpr WeekSlot Unusable = {-1, 0, 0};

// Rows of a test.
class ListedRows : public SlotRows
{
public:
    explicit ListedRows(std::vector<WeekSlot> rows)
        : m_rows(std::move(rows))
    {}
    void moveFirst() override { m_row = 0; }
    void moveNext() override { ++m_row; }
    bool atEnd() const override { return m_row == m_rows.size(); }
    std::optional<WeekSlot> slot() override
    {
        return m_rows[m_row].day < 0 ? std::nullopt : std::optional(m_rows[m_row]);
    }

private:
    std::vector<WeekSlot> m_rows;
    std::size_t m_row = 0;
};

} // namespace

// 2 March 2026 is a Monday.
constexpr auto wednesday = moment(2026, 3, 4);
constexpr auto sunday = moment(2026, 3, 8);

TEST(NextSlot, IsChosenByTheRules)
{
    struct Case
    {
        std::chrono::local_seconds now;
        std::vector<WeekSlot> rows;
        int row;
        std::chrono::local_seconds moment;
    };
    const std::pair<const char *, Case> cases[] = {
        {"the first later one of this week",
         {wednesday + 10h,
          {{1, 9, 0}, {3, 9, 30}, {3, 10, 1}, {5, 0, 0}},
          2,
          wednesday + 10h + 1min}},
        {"none left: the first of next week",
         {wednesday + 10h, {{1, 9, 0}, {3, 9, 30}}, 0, moment(2026, 3, 9, 9)}},
        {"an equal second is not later",
         {wednesday + 10h, {{3, 10, 0}, {4, 8, 0}}, 1, moment(2026, 3, 5, 8)}},
        {"the last slot on the equal second is kept",
         {wednesday + 10h, {{1, 9, 0}, {3, 10, 0}}, 1, wednesday + 10h}},
        {"a second past the only slot",
         {wednesday + 10h + 1s, {{3, 10, 0}}, 0, moment(2026, 3, 11, 10)}},
        {"Sunday night past the only slot",
         {sunday + 24h - 30s, {{7, 23, 59}}, 0, moment(2026, 3, 15, 23, 59)}},
        {"Sunday night, before Monday's first minute",
         {sunday + 24h - 1s, {{1, 0, 0}, {7, 23, 0}}, 0, moment(2026, 3, 9)}},
        {"Monday's first second looks back on no slot",
         {moment(2026, 3, 9), {{1, 0, 0}, {7, 23, 0}}, 1, moment(2026, 3, 15, 23)}},
        {"across the year's end",
         {moment(2025, 12, 31, 23, 30), {{3, 23, 0}, {4, 0, 15}}, 1, moment(2026, 1, 1, 0, 15)}},
        {"across a leap day",
         {moment(2028, 2, 29, 12), {{2, 11, 0}, {3, 6, 0}}, 1, moment(2028, 3, 1, 6)}},
        {"several tasks in a slot: the first row",
         {wednesday + 9h, {{3, 10, 0}, {3, 10, 0}}, 0, wednesday + 10h}},
        {"unusable rows are passed over in this week",
         {wednesday + 9h, {Unusable, {3, 8, 0}, Unusable, {3, 10, 0}}, 3, wednesday + 10h}},
        {"and in the next",
         {wednesday + 9h, {Unusable, {1, 8, 0}, Unusable}, 1, moment(2026, 3, 9, 8)}},
        {"hours and minutes carry", {wednesday + 9h, {{3, 24, 60}}, 0, moment(2026, 3, 5, 1)}},
        {"day 0 of next week counts as its day 7",
         {wednesday + 9h, {{0, 8, 0}}, 0, moment(2026, 3, 15, 8)}},
        {"day 8 of this week is next Monday",
         {wednesday + 9h, {{8, 8, 0}}, 0, moment(2026, 3, 9, 8)}},
    };
    for (const auto &[what, test] : cases) {
        ListedRows rows(test.rows);
        const auto chosen = chooseSlot(rows, [&, now = test.now] { return now; });
        ASSERT_TRUE(chosen) << what;
        EXPECT_EQ(chosen->row, test.row) << what;
        EXPECT_EQ(chosen->moment, test.moment) << what;
    }
    for (const auto &unusable : {std::vector<WeekSlot>{}, {Unusable}}) {
        ListedRows rows(unusable);
        EXPECT_FALSE(chooseSlot(rows, [] { return wednesday; }));
    }
}

// Whatever the moment, the choice is the earliest later one among this week's and next week's.
TEST(NextSlot, IsTheEarliestLaterMomentThroughoutAWeek)
{
    const std::vector<WeekSlot> week = {{1, 0, 0}, {2, 23, 59}, {5, 12, 30}, {7, 23, 59}};
    for (auto now = moment(2026, 3, 2, 0, 0, 30); now < moment(2026, 3, 9); now += 7min) {
        auto earliest = std::chrono::local_seconds::max();
        for (const WeekSlot &slot : week)
            for (const auto candidate : {momentThisWeek(slot, now), momentNextWeek(slot, now)})
                if (candidate > now)
                    earliest = std::min(earliest, candidate);
        ListedRows rows(week);
        EXPECT_EQ(chooseSlot(rows, [&] { return now; })->moment, earliest);
    }
}
