#include "store/TaskStore.h"
#include "store/Transaction.h"
#include "tests/trust/Rig.h"

#include <QAction>
#include <QApplication>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <string_view>

// trust_year [--days N]: the main window in a year of 60 tasks, with a leap day, summer
// time, a clock that is set by hand, a machine that sleeps and a station that fails. Says what
// became of every slot, and ends with status 1 when one was missed or fetched without being due.

using namespace Qt::StringLiterals;
using namespace std::chrono;
using testing_support::Ending;
using testing_support::fileBytes;
using testing_support::moment;

namespace {

// What became of a slot each time that the clock came to it.
using Fate = std::string_view;
constexpr Fate fetched = "fetched";
constexpr Fate missing = "tried: the station had no such file";
constexpr Fate refused = "tried: no connection";
constexpr Fate reset = "tried: the connection was reset";
constexpr Fate cutOff = "tried: the file broke off";
constexpr Fate shared = "passed over: another task had the same minute";
constexpr Fate held = "passed over: during another download or its wait";
constexpr Fate listOpen = "passed over: while the task list was open";
constexpr Fate asleep = "passed over: asleep, behind the one waited for";
constexpr Fate setForward = "passed over: clock set forward, behind the one waited for";
constexpr Fate summerTime = "passed over: in the skipped hour, behind the one waited for";
constexpr Fate setBack = "passed over: came again after the clock was set back";
constexpr Fate winterTime = "passed over: came again in the repeated hour";
constexpr Fate missed = "MISSED";
constexpr Fate outcomes[] = {missing, refused, reset, cutOff, fetched};

// After this moment the clock goes on from elsewhere, or the task list is open for a while.
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
    {moment(2027, 11, 2, 14, 20, 30), -2h, setBack},
    {moment(2027, 11, 2, 13, 0, 15), 20s, listOpen}, // among what comes again
    {moment(2027, 11, 4, 9, 0, 30), 3h, setForward},
    {moment(2027, 11, 6, 17, 45, 15), -90min, setBack},
    {moment(2027, 12, 31, 23, 50, 20), -10min, setBack},
    {moment(2028, 2, 28, 23, 1, 30), 2h, setForward},
    {moment(2028, 2, 29, 12, 1, 30), -26h, setBack},
    {moment(2028, 3, 26, 1, 59, 59), 1h + 1s, summerTime},
    {moment(2028, 6, 11, 22, 30, 30), days{9}, asleep},
    {local_seconds::max(), 0s, missed}, // never
};

class Year : public trust::Rig
{
public:
    explicit Year(int dayCount)
        : m_end(start + days{dayCount})
    {
        m_closedPort.bind(QHostAddress::LocalHost); // nobody listens there
        makeTasks();
        prepareStation();
        host.clock = start;
        host.onSleep = [this](auto duration) {
            pass(floor<seconds>(duration), held);
            host.clock -= floor<seconds>(duration); // which the host adds
        };
        openForm({.taskList = [this] { pass(m_listStaysOpen, listOpen); }});
    }

    bool run()
    {
        while (host.clock < m_end) {
            const local_seconds next = m_calendar.upper_bound(m_settled)->first;
            if (m_event->at < next) {
                meet(*m_event++);
            } else {
                reach(next - 1s, missed);
                reach(next, missed);
            }
        }
        checkSlots();
        expect(destinationFiles() == m_lastGood.keys(), u"other files"_s);
        for (const QString &file : m_lastGood.keys())
            expect(fileBytes(destination(file)) == m_lastGood[file],
                   u"wrong bytes at the end: "_s + file);
        std::printf("%8d  faults\n", faults);
        return faults == 0;
    }

private:
    using Due = std::pair<const local_seconds, std::map<int, std::vector<Fate>>>;

    int random(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    static QString taskName(int task) { return u"Task %1"_s.arg(task, 2, 10, QChar(u'0')); }

    // Three of the 60 tasks for each hour of the week, dealt like cards. Fifteen minutes of the
    // hour belong to two tasks each. The calendar has weeks more, so there is always a next slot.
    void makeTasks()
    {
        store::Transaction transaction(store::dbConnection);
        std::vector<int> deck(60);
        std::iota(deck.begin(), deck.end(), 0);
        const auto minute = [](int task) { return task % 45 * 4 / 3; };
        for (const int task : deck)
            addTask(taskName(task), station.url(u"/%1"_s.arg(task)), taskName(task), minute(task));
        for (int hour = 0; hour < 168; ++hour) {
            if (hour % 20 == 0)
                std::shuffle(deck.begin(), deck.end(), m_random);
            std::rotate(deck.begin(), deck.begin() + 3, deck.end());
            for (const int task : {deck[0], deck[1], deck[2]}) {
                addSlot(taskName(task), hour / 24 + 1, hour % 24);
                const seconds offset = hour * 1h + minute(task) * 1min;
                m_weeksLast = std::max(m_weeksLast, offset);
                for (auto due = start + offset; due < m_end + days{21}; due += days{7})
                    m_calendar[due][task] = {};
            }
        }
        transaction.commit();
    }

    // Decides what the next download meets, how long it lasts, and what the log is to tell of it.
    void prepareStation()
    {
        m_duration = random(50) == 0 ? 1s + random(900) * 1s : 2s + random(60) * 1s;
        m_body = QByteArray::number(++m_files).leftJustified(1000 + random(30'000), '.');
        m_outcome = random(10) == 0 ? random(4) : 4;
        const testing_support::Answer answers[] = {
            {.status = 404},
            {},
            {.raw = "", .ending = Ending::Reset},
            {.body = m_body, .cutAfter = 9, .ending = Ending::Close},
            {.body = m_body},
        };
        station.answerOthers(answers[m_outcome]);
        station.routeHere();
        if (outcomes[m_outcome] == refused)
            QNetworkProxy::setApplicationProxy(
                {QNetworkProxy::HttpProxy, u"127.0.0.1"_s, m_closedPort.localPort()});
    }

    static void note(Due &due, Fate fate)
    {
        for (auto &[task, fates] : due.second)
            fates.push_back(fate);
    }

    // Time in which the program cannot start anything. Then it looks up the next slot; on the very
    // second of the week's last one, that one is still found.
    void pass(seconds duration, Fate fate)
    {
        const auto settle = [&](local_seconds last) {
            for (auto due = m_calendar.upper_bound(m_settled); due->first <= last; ++due)
                note(*due, fate);
            m_settled = std::max(m_settled, last);
        };
        local_seconds until = host.clock + duration;
        for (; m_event->at <= until && m_event->kind != listOpen; ++m_event) {
            settle(m_event->at);
            until += m_event->by;
            m_settled = std::min(m_settled, m_event->at + m_event->by);
        }
        settle((until - start) % days{7} == m_weeksLast ? until - 1s : until);
        host.clock = until;
        host.ticks += static_cast<int>(duration.count() * 1000);
        m_againUntil = {};
    }

    // The waiting program's clock gets there at one go. The first slot on the way starts, if it did
    // not come again after the clock was set back.
    void reach(local_seconds when, Fate others)
    {
        if (when <= m_settled)
            return;
        Due *starts = nullptr;
        for (auto due = m_calendar.upper_bound(m_settled); due->first <= when; ++due) {
            if (due->first >= m_againUntil && !starts)
                starts = &*due;
            else
                note(*due, due->first < m_againUntil ? m_again : others);
        }
        m_settled = host.clock = when;
        if (tickStarts())
            return download(starts);
        expect(!starts, u"missed"_s);
        if (starts)
            note(*starts, missed);
    }

    void meet(const Event &event)
    {
        reach(event.at, missed);
        if (event.kind == listOpen) {
            m_listStaysOpen = event.by;
            form->findChild<QAction *>(u"mnuMutaties"_s)->trigger();
        } else if (event.by > 0s) {
            reach(host.clock + event.by, event.kind);
        } else {
            m_again = event.kind;
            m_againUntil = m_calendar.upper_bound(m_settled)->first;
            m_settled = host.clock += event.by;
        }
    }

    // A download that has just started for one of the tasks of that moment.
    void download(Due *due)
    {
        m_late += due && due->first < host.clock;
        const size_t asked = station.requests().size();
        pass(m_duration, held);
        if (m_calendar.upper_bound(m_settled)->first > host.clock + 3s)
            expect(!tickStarts(), u"two downloads at once"_s);
        awaitEnd();

        const Fate fate = outcomes[m_outcome];
        const QString log = takeLog();
        const int task = log.mid(5, 2).toInt();
        const QString told = fate == fetched  ? u"%1 kB - "_s.arg(double(m_body.size()) / 1000)
                             : fate == cutOff ? u"Disconnected"_s
                                              : u"Can not connect"_s;
        expect(log.startsWith(taskName(task) + u" - "_s + told) && !log.contains(u'|'), log);
        const size_t requests = station.requests().size() - asked; // one, but for a reset: again
        expect(requests == (fate != refused) || (fate == reset && requests > 1), u"requests"_s);
        expect(!requests || station.requests().back().path() == "/" + QByteArray::number(task),
               u"wrong address of "_s + taskName(task));
        expect(due && due->second.contains(task), u"not due: "_s + taskName(task));
        if (due)
            for (auto &[other, fates] : due->second)
                fates.push_back(other == task ? fate : shared);
        if (fate == fetched)
            m_lastGood[taskName(task)] = m_body;
        expect(fileBytes(destination(taskName(task))) == m_lastGood.value(taskName(task)),
               u"wrong bytes of "_s + taskName(task));
        prepareStation();
    }

    // The whole calendar was met.
    void checkSlots()
    {
        std::map<Fate, int> counts;
        for (const auto &[due, tasks] : m_calendar) {
            for (const auto &[task, fates] : tasks) {
                expect(!fates.empty() || due <= start || due >= m_end, u"never met"_s);
                for (const Fate fate : fates)
                    ++counts[fate];
            }
        }
        int sum = 0;
        for (const auto &[fate, count] : counts) {
            std::printf("%8d  %s\n", count, fate.data());
            sum += count;
        }
        std::printf("%8d  slots in all; %d of them fetched late, after a jump\n", sum, m_late);
    }

    const local_seconds m_end;
    std::mt19937 m_random; // the same each time
    QTcpSocket m_closedPort;
    std::map<local_seconds, std::map<int, std::vector<Fate>>> m_calendar;
    seconds m_weeksLast{};           ///< its last slot, from Monday on
    local_seconds m_settled = start; ///< slots up to here have their fate
    local_seconds m_againUntil{};    ///< slots before this one came again
    Fate m_again;
    const Event *m_event = events;
    seconds m_listStaysOpen{};
    int m_outcome = 0;
    seconds m_duration{};
    QByteArray m_body;
    int m_files = 0;
    int m_late = 0;
    QMap<QString, QByteArray> m_lastGood;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    const QApplication application(argc, argv);
    return Year(argc == 3 ? std::atoi(argv[2]) : 366).run() ? 0 : 1;
}
