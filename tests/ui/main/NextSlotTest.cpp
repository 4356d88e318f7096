#include "ui/main/NextSlot.h"

#include "tests/support/Test.h"

#include <vector>

using namespace ui;

namespace {

// Rows of a test; an empty one cannot be used.
class ListedRows : public SlotRows
{
public:
    explicit ListedRows(std::vector<std::optional<WeekSlot>> rows)
        : m_rows(std::move(rows))
    {}
    void moveFirst() override { m_row = 0; }
    void moveNext() override { ++m_row; }
    bool atEnd() const override { return m_row == m_rows.size(); }
    std::optional<WeekSlot> slot() override { return m_rows[m_row]; }

private:
    std::vector<std::optional<WeekSlot>> m_rows;
    std::size_t m_row = 0;
};

struct Case
{
    const char *what;
    std::chrono::local_seconds now;
    std::vector<std::optional<WeekSlot>> rows;
    int row;
    std::chrono::local_seconds chosen;
};

} // namespace

// 2 March 2026 is a Monday.
static const Case cases[] = {
    {"the first later one of this week",
     moment(2026, 3, 4, 10, 0, 0),
     {WeekSlot{1, 9, 0}, WeekSlot{3, 9, 30}, WeekSlot{3, 10, 1}, WeekSlot{5, 0, 0}},
     2,
     moment(2026, 3, 4, 10, 1)},
    {"none left this week: the first of next week",
     moment(2026, 3, 4, 10, 0, 0),
     {WeekSlot{1, 9, 0}, WeekSlot{3, 9, 30}},
     0,
     moment(2026, 3, 9, 9, 0)},
    {"an equal second is not later",
     moment(2026, 3, 4, 10, 0, 0),
     {WeekSlot{3, 10, 0}, WeekSlot{4, 8, 0}},
     1,
     moment(2026, 3, 5, 8, 0)},
    {"the last slot on the equal second is kept",
     moment(2026, 3, 4, 10, 0, 0),
     {WeekSlot{1, 9, 0}, WeekSlot{3, 10, 0}},
     1,
     moment(2026, 3, 4, 10, 0)},
    {"a second past the only slot",
     moment(2026, 3, 4, 10, 0, 1),
     {WeekSlot{3, 10, 0}},
     0,
     moment(2026, 3, 11, 10, 0)},
    {"Sunday night past the only slot",
     moment(2026, 3, 8, 23, 59, 30),
     {WeekSlot{7, 23, 59}},
     0,
     moment(2026, 3, 15, 23, 59)},
    {"Sunday night, before Monday's first minute",
     moment(2026, 3, 8, 23, 59, 59),
     {WeekSlot{1, 0, 0}, WeekSlot{7, 23, 0}},
     0,
     moment(2026, 3, 9, 0, 0)},
    {"Monday's first second looks back on no slot",
     moment(2026, 3, 9, 0, 0, 0),
     {WeekSlot{1, 0, 0}, WeekSlot{7, 23, 0}},
     1,
     moment(2026, 3, 15, 23, 0)},
    {"across the year's end",
     moment(2025, 12, 31, 23, 30, 0),
     {WeekSlot{3, 23, 0}, WeekSlot{4, 0, 15}},
     1,
     moment(2026, 1, 1, 0, 15)},
    {"across a leap day",
     moment(2028, 2, 29, 12, 0, 0),
     {WeekSlot{2, 11, 0}, WeekSlot{3, 6, 0}},
     1,
     moment(2028, 3, 1, 6, 0)},
    {"several tasks in a slot: the first row",
     moment(2026, 3, 4, 9, 0, 0),
     {WeekSlot{3, 10, 0}, WeekSlot{3, 10, 0}},
     0,
     moment(2026, 3, 4, 10, 0)},
    {"unusable rows are passed over in this week",
     moment(2026, 3, 4, 9, 0, 0),
     {std::nullopt, WeekSlot{3, 8, 0}, std::nullopt, WeekSlot{3, 10, 0}},
     3,
     moment(2026, 3, 4, 10, 0)},
    {"and in the next",
     moment(2026, 3, 4, 9, 0, 0),
     {std::nullopt, WeekSlot{1, 8, 0}, std::nullopt},
     1,
     moment(2026, 3, 9, 8, 0)},
    {"hours and minutes carry",
     moment(2026, 3, 4, 9, 0, 0),
     {WeekSlot{3, 24, 60}},
     0,
     moment(2026, 3, 5, 1, 0)},
    {"day 0 of next week counts as its day 7",
     moment(2026, 3, 4, 9, 0, 0),
     {WeekSlot{0, 8, 0}},
     0,
     moment(2026, 3, 15, 8, 0)},
    {"day 8 of this week is next Monday",
     moment(2026, 3, 4, 9, 0, 0),
     {WeekSlot{8, 8, 0}},
     0,
     moment(2026, 3, 9, 8, 0)},
};

TEST(NextSlot, IsChosenByTheRules)
{
    for (const Case &test : cases) {
        ListedRows rows(test.rows);
        const auto chosen = chooseSlot(rows, [&] { return test.now; });
        ASSERT_TRUE(chosen) << test.what;
        EXPECT_EQ(chosen->row, test.row) << test.what;
        EXPECT_EQ(chosen->moment, test.chosen) << test.what;
    }
}

TEST(NextSlot, IsMissingWithoutUsableRows)
{
    for (const auto &unusable : {std::vector<std::optional<WeekSlot>>{}, {std::nullopt}}) {
        ListedRows rows(unusable);
        EXPECT_FALSE(chooseSlot(rows, [] { return moment(2026, 3, 4); }));
    }
}

// Whatever the moment, the choice is the earliest later one among this week's and next week's.
TEST(NextSlot, IsTheEarliestLaterMomentThroughoutAWeek)
{
    const std::vector<std::optional<WeekSlot>> slots_ = {WeekSlot{1, 0, 0}, WeekSlot{2, 23, 59},
                                                         WeekSlot{5, 12, 30}, WeekSlot{7, 23, 59}};
    for (auto now = moment(2026, 3, 2, 0, 0, 30); now < moment(2026, 3, 9);
         now += std::chrono::minutes{7}) {
        auto earliest = std::chrono::local_seconds::max();
        for (const auto &slot : slots_)
            for (const auto candidate : {momentThisWeek(*slot, now), momentNextWeek(*slot, now)})
                if (candidate > now)
                    earliest = std::min(earliest, candidate);
        ListedRows rows(slots_);
        EXPECT_EQ(chooseSlot(rows, [&] { return now; })->moment, earliest);
    }
}
