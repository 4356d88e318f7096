#include "tests/ui/main/MainFormTest.h"

#include <algorithm>
#include <map>
#include <random>
#include <string_view>
#include <vector>

// trust_year [--days N]: the main window in a year of 60 tasks, with a leap day, summer time, a
// clock that is set by hand, a machine that sleeps and a station that fails. Says what became of
// every slot, and fails when one was missed or fetched without being due.

using namespace std::chrono;

namespace {

// What became of a task's slot each time that the clock came to it.
using Fate = std::string_view;
constexpr Fate fetched = "fetched";
constexpr Fate brokenOff = "tried: the file broke off";
constexpr Fate shared = "passed over: another task had the same minute";
constexpr Fate held = "passed over: during another download or its wait";
constexpr Fate listOpen = "passed over: while the task list was open";
constexpr Fate asleep = "passed over: asleep, behind the one waited for";
constexpr Fate setForward = "passed over: clock set forward, behind the one waited for";
constexpr Fate summerTime = "passed over: in the skipped hour, behind the one waited for";
constexpr Fate setBack = "passed over: came again after the clock was set back";
constexpr Fate winterTime = "passed over: came again in the repeated hour";

// After this moment the waiting program's clock goes on from elsewhere, or the task list is open.
struct Event
{
    local_seconds at;
    seconds by;
    Fate kind;
};

constexpr auto start = moment(2027, 10, 25); // a Monday
constexpr Event events[] = {
    {moment(2027, 10, 26, 9, 31, 10), 45min, listOpen},
    {moment(2027, 10, 27, 3, 10, 30), 6h, asleep},
    {moment(2027, 10, 31, 2, 59, 59), -1h, winterTime},
    {moment(2027, 10, 31, 23, 40), 1min, listOpen}, // up to the week's last slot
    {moment(2027, 11, 2, 14, 20, 30), -2h, setBack},
    {moment(2027, 11, 2, 13, 0, 15), 20s, listOpen}, // among what comes again
    {moment(2027, 11, 4, 9, 0, 30), 3h, setForward},
    {moment(2027, 11, 6, 17, 45, 15), -90min, setBack},
    {moment(2027, 12, 24, 18, 5, 5), 39h, asleep},
    {moment(2027, 12, 31, 23, 50, 20), -10min, setBack},
    {moment(2028, 2, 28, 23, 1, 30), 2h, setForward},
    {moment(2028, 2, 29, 12, 1, 30), -26h, setBack},
    {moment(2028, 3, 26, 1, 59, 59), 1h + 1s, summerTime},
    {moment(2028, 6, 11, 22, 30, 30), days{9}, asleep},
    {local_seconds::max(), 0s, {}}};

class Year : public MainFormTest
{
protected:
    Year()
    {
        makeTasks();
        prepareStation();
        host.clock = start;
        host.onSleep = [this](auto duration) {
            pass(floor<seconds>(duration), held);
            host.clock -= floor<seconds>(duration); // which the host adds
        };
        openForm({.taskList = [this] { pass(m_event[-1].by, listOpen); }});
    }

    using Tasks = std::vector<int>;

    int random(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    static QString taskName(int task) { return u"Task %1"_s.arg(task, 2, 10, QChar(u'0')); }

    // Three of 60 tasks in each hour of the week. Some share their minute with another one. The
    // calendar has weeks more than are asked for, so that there is always a next slot.
    void makeTasks()
    {
        store::Transaction transaction(store::dbConnection);
        const auto minute = [](int task) { return task % 53; };
        for (int task = 0; task < 60; ++task)
            addTask(taskName(task), station.url(u"/%1"_s.arg(task)), taskName(task), minute(task));
        for (int slot = 0; slot < 3 * 168; ++slot) {
            const int task = slot * 7 % 60;
            addSlot(taskName(task), slot / 72 + 1, slot / 3 % 24);
            const seconds offset = slot / 3 * 1h + minute(task) * 1min;
            m_weeksLast = std::max(m_weeksLast, offset);
            for (auto when = start + offset; when < m_end + days{21}; when += days{7})
                m_calendar[when].push_back(task);
        }
        transaction.commit();
    }

    // Decides what the next download meets and how long it lasts: now and then for minutes, up to
    // the very second of a slot, its wait included.
    void prepareStation()
    {
        m_body = QByteArray(1000 + random(30'000), static_cast<char>(random(256)));
        m_outcome = random(10) > 0 ? fetched : brokenOff;
        const seconds wait = m_outcome == fetched ? 2s : 3s;
        m_duration = random(25) == 0 ? (1 + random(12)) * 1min - wait : 2s + random(60) * 1s;
        Answer answer = {.body = m_body};
        if (m_outcome == brokenOff) {
            answer.cutAfter = 9;
            answer.ending = Ending::Close;
        }
        station.answerOthers(answer);
    }

    bool tickStarts()
    {
        const int beeps = host.beeps;
        tick();
        return host.beeps > beeps;
    }

    // Time in which the program cannot start anything. Then it looks up the next slot; on the very
    // second of the week's last one, that one is still found.
    void pass(seconds duration, Fate fate)
    {
        host.clock += duration;
        host.ticks += static_cast<int>(duration.count() * 1000);
        const bool isWeeksLast = (host.clock - start) % days{7} == m_weeksLast;
        const local_seconds last = isWeeksLast ? host.clock - 1s : host.clock;
        for (auto slot = m_calendar.upper_bound(m_settled); slot->first <= last; ++slot)
            m_counts[fate] += slot->second.size();
        m_settled = last;
        m_againUntil = {};
    }

    // The waiting program's clock gets there at one go. The first slot on the way starts, if it did
    // not come again after the clock was set back.
    void reach(local_seconds when, Fate others = {})
    {
        if (when <= m_settled)
            return;
        SCOPED_TRACE(testing::Message() << (when - start) / 1min << " minutes after the start");
        const Tasks *starts = nullptr;
        for (auto slot = m_calendar.upper_bound(m_settled); slot->first <= when; ++slot) {
            if (slot->first >= m_againUntil && !starts)
                starts = &slot->second;
            else
                m_counts[slot->first < m_againUntil ? m_again : others] += slot->second.size();
        }
        m_settled = host.clock = when;
        if (tickStarts())
            return download(starts);
        EXPECT_FALSE(starts) << "missed";
    }

    void meet(const Event &event)
    {
        reach(event.at);
        if (event.kind == listOpen) {
            trigger(u"mnuMutaties"_s);
        } else if (event.by > 0s) {
            reach(host.clock + event.by, event.kind);
        } else {
            m_again = event.kind;
            m_againUntil = m_calendar.upper_bound(m_settled)->first;
            m_settled = host.clock += event.by;
        }
    }

    // A download that has just started for one of the tasks that are due, if there are any.
    void download(const Tasks *dueTasks)
    {
        QSignalSpy completed(formControl<controls::DL>(), &controls::DL::Completed);
        pass(m_duration, held);
        const auto next = m_calendar.upper_bound(m_settled)->first; // may start within the tick
        EXPECT_TRUE(next <= host.clock + 3s || !tickStarts()) << "two downloads at once";
        if (completed.isEmpty())
            completed.wait(60'000);
        EXPECT_EQ(completed.size(), 1);

        const QStringList lines = log();
        ASSERT_EQ(lines.size(), 1);
        const int task = lines[0].mid(5, 2).toInt();
        const QString told = m_outcome == fetched ? u" kB/s"_s : u" - Disconnected"_s;
        EXPECT_TRUE(lines[0].startsWith(taskName(task)) && lines[0].endsWith(told));
        QFile::remove(app::logFilePath());
        EXPECT_EQ(station.requests().size(), 1U);
        EXPECT_EQ(station.requests().back().path().mid(1).toInt(), task);
        station.forgetRequests();
        ASSERT_TRUE(dueTasks && std::ranges::count(*dueTasks, task) == 1) << "not due";
        ++m_counts[m_outcome];
        m_counts[shared] += dueTasks->size() - 1;
        if (m_outcome == fetched)
            m_lastGood[taskName(task)] = m_body;
        EXPECT_EQ(fileBytes(destination(taskName(task))), m_lastGood.value(taskName(task)));
        prepareStation();
    }

    const local_seconds m_end =
        start + days{QCoreApplication::arguments().value(2, u"366"_s).toInt()};
    std::mt19937 m_random; // gives the same each time
    std::map<local_seconds, Tasks> m_calendar;
    std::map<Fate, std::size_t> m_counts;
    seconds m_weeksLast{};           ///< its last slot, from Monday on
    local_seconds m_settled = start; ///< slots up to here have their fate
    local_seconds m_againUntil{};    ///< slots before this one came again
    Fate m_again;
    const Event *m_event = events;
    Fate m_outcome = fetched;
    seconds m_duration{};
    QByteArray m_body;
    QMap<QString, QByteArray> m_lastGood;
};

} // namespace

TEST_F(Year, FetchesEachSlotOnce)
{
    while (host.clock < m_end && !HasFailure()) {
        const local_seconds next = m_calendar.upper_bound(m_settled)->first;
        if (m_event->at < next) {
            meet(*m_event++);
        } else {
            reach(next - 1s);
            reach(next);
        }
    }
    std::size_t sum = 0;
    for (const auto &[fate, count] : m_counts) {
        std::printf("%8zu  %s\n", count, fate.data());
        sum += count;
    }
    std::printf("%8zu  slots in all\n", sum);
    EXPECT_GT(m_counts[fetched], 0U);
    EXPECT_EQ(destinationFiles(), m_lastGood.keys());
    for (const auto &[file, body] : m_lastGood.asKeyValueRange())
        EXPECT_EQ(fileBytes(destination(file)), body);
}
