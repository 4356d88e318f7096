#include "store/TaskStore.h"
#include "store/Transaction.h"
#include "tests/trust/Rig.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <algorithm>
#include <deque>
#include <map>
#include <numeric>
#include <random>
#include <string_view>

// trust_year [--days N] [--seed N]: the main window in a year of 60 tasks, with a leap day, summer
// time, a clock that is set by hand, a machine that sleeps and a station that fails. Says what
// became of every slot, and ends with status 1 when one was missed or fetched without being due.

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using std::chrono::days;
using std::chrono::floor;
using std::chrono::local_seconds;
using std::chrono::seconds;
using testing_support::Answer;
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
constexpr Fate shared = "passed over: another task's slot of the same minute was taken";
constexpr Fate held = "passed over: during another download or its wait";
constexpr Fate listOpen = "passed over: while the task list was open";
constexpr Fate asleep = "passed over: asleep, behind the one waited for";
constexpr Fate setForward = "passed over: clock set forward, behind the one waited for";
constexpr Fate summerTime = "passed over: in the skipped hour, behind the one waited for";
constexpr Fate setBack = "passed over: came again after the clock was set back";
constexpr Fate winterTime = "passed over: came again in the repeated hour";
constexpr Fate missed = "MISSED";

constexpr int taskCount = 60;
constexpr auto start = moment(2027, 10, 25); // a Monday

// From the moment on, the clock shows another time, or the task list is open for a while. The
// first two weeks have nearly all kinds.
struct Event
{
    local_seconds at;
    seconds by;
    Fate kind;
};

const std::deque<Event> eventsOfTheYear = {
    {moment(2027, 10, 26, 9, 31, 10), 45min, listOpen},
    {moment(2027, 10, 27, 3, 10, 30), 6h, asleep},
    {moment(2027, 10, 31, 2, 59, 59), -1h, winterTime},
    {moment(2027, 11, 2, 14, 20, 30), -2h, setBack},
    {moment(2027, 11, 2, 13, 0, 15), 20s, listOpen}, // in the hours that came again
    {moment(2027, 11, 4, 9, 0, 30), 3h, setForward},
    {moment(2027, 11, 6, 17, 45, 15), -90min, setBack},
    {moment(2027, 12, 24, 18, 5, 5), 39h, asleep},
    {moment(2027, 12, 31, 23, 50, 20), -10min, setBack},
    {moment(2028, 2, 28, 23, 1, 30), 2h, setForward},
    {moment(2028, 2, 29, 12, 1, 30), -26h, setBack},
    {moment(2028, 3, 26, 1, 59, 59), 1h + 1s, summerTime},
    {moment(2028, 6, 11, 22, 30, 30), days{9}, asleep},
    {moment(2028, 7, 30, 23, 58, 10), 5min, setForward},
    {moment(2028, 8, 14, 0, 3, 10), -8min, setBack},
};

// What the next download meets, and what the log is to tell of it.
struct Outcome
{
    Fate fate;
    QString told;
    Answer answer;
};

class Year : public trust::Rig
{
public:
    Year(int dayCount, int seed)
        : m_end(start + days{dayCount})
        , m_random(static_cast<unsigned>(seed))
    {
        m_closedPort.bind(QHostAddress::LocalHost); // bound, and nobody listens
        makeTasks();
        prepareStation();
        host.clock = start;
        host.onSleep = [this](auto duration) {
            pass(floor<seconds>(duration), held);
            host.clock -= floor<seconds>(duration); // which the host adds
        };
        openWindow({.taskList = [this] { pass(m_listStaysOpen, listOpen); }});
    }

    void run()
    {
        while (host.clock < m_end) {
            const local_seconds next = m_calendar.upper_bound(m_settled)->first;
            if (!m_events.empty() && m_events.front().at < next) {
                meet(takeEvent());
            } else {
                waitUntil(next - 1s);
                reach(next, missed);
            }
        }
        checkCalendar();
        checkFiles();
    }

private:
    using Due = std::map<local_seconds, std::map<int, std::vector<Fate>>>::value_type;

    int random(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    static QString taskName(int task) { return u"Task %1"_s.arg(task, 2, 10, QChar(u'0')); }
    static QString fileName(int task) { return u"task%1.mp2"_s.arg(task); }
    static QString text(local_seconds when)
    {
        return QDateTime::fromSecsSinceEpoch(when.time_since_epoch().count(), Qt::UTC).toString();
    }

    // Three tasks for each hour of the week, dealt like cards. Fifteen minutes of the hour belong
    // to two tasks each. The calendar has a week more, so that there is always a next slot.
    void makeTasks()
    {
        store::Transaction transaction(store::dbConnection);
        std::vector<int> deck(taskCount);
        std::iota(deck.begin(), deck.end(), 0);
        const auto minute = [](int task) { return task % 45 * 4 / 3; };
        for (const int task : deck)
            addTask(taskName(task), station.url(u"/%1"_s.arg(task)), fileName(task), minute(task));
        for (int slot = 0; slot < 3 * 168; ++slot) {
            if (slot % taskCount == 0)
                std::shuffle(deck.begin(), deck.end(), m_random);
            const int task = deck[static_cast<size_t>(slot % taskCount)];
            addSlot(taskName(task), slot / 3 / 24 + 1, slot / 3 % 24);
            const auto first = start + slot / 3 * 1h + minute(task) * 1min;
            for (auto due = first; due < m_end + days{7}; due += days{7})
                if (due > start)
                    m_calendar[due][task] = {};
        }
        transaction.commit();
    }

    void prepareStation()
    {
        const QByteArray number = QByteArray::number(++m_files);
        m_duration = random(50) == 0 ? 1s + random(900) * 1s : 2s + random(60) * 1s;
        m_body = number.leftJustified(1000 + random(30'000), '.');
        const double kilobytes = static_cast<double>(m_body.size()) / 1000;
        const Outcome failures[] = {
            {missing, u"Can not connect"_s, {.status = 404}},
            {refused, u"Can not connect"_s, {}},
            {reset, u"Can not connect"_s, {.raw = "", .ending = Ending::Reset}},
            {cutOff, u"Disconnected"_s, {.body = m_body, .cutAfter = 900, .ending = Ending::Close}},
        };
        m_outcome = random(10) == 0
                        ? failures[random(4)]
                        : Outcome{fetched, u"%1 kB - "_s.arg(kilobytes), {.body = m_body}};
        station.answerOthers(m_outcome.answer);
        station.routeHere();
        if (m_outcome.fate == refused)
            QNetworkProxy::setApplicationProxy(
                {QNetworkProxy::HttpProxy, u"127.0.0.1"_s, m_closedPort.localPort()});
    }

    Event takeEvent()
    {
        const Event event = m_events.front();
        m_events.pop_front();
        return event;
    }

    static void note(Due &due, Fate fate)
    {
        for (auto &[task, fates] : due.second)
            fates.push_back(fate);
    }

    // Time passes in which the program cannot start anything; then it looks up the next slot. When
    // it is the very second of the week's last one, that one is still found.
    void pass(seconds duration, Fate fate)
    {
        host.ticks += static_cast<int>(duration.count() * 1000);
        local_seconds until = host.clock + duration;
        const auto settle = [&](local_seconds last) {
            for (auto due = m_calendar.upper_bound(m_settled); due->first <= last; ++due)
                note(*due, fate);
            m_settled = std::max(m_settled, last);
        };
        while (!m_events.empty() && m_events.front().kind != listOpen &&
               m_events.front().at <= until) {
            const Event event = takeEvent();
            settle(event.at);
            until += event.by;
            m_settled = std::min(m_settled, event.at + event.by);
        }
        host.clock = until;
        const auto next = m_calendar.upper_bound(until);
        const bool endsWeek = std::prev(next)->first == until &&
                              (next->first - start) / days{7} > (until - start) / days{7};
        settle(endsWeek ? until - 1s : until);
        m_againUntil = {};
    }

    void waitUntil(local_seconds when)
    {
        host.clock = std::max(host.clock, when);
        if (tickStarts())
            download(nullptr);
    }

    // The waiting program's clock gets to `when` at one go. The first slot on the way starts,
    // except those that came again after the clock was set back.
    void reach(local_seconds when, Fate others)
    {
        Due *starts = nullptr;
        for (auto due = m_calendar.upper_bound(m_settled); due->first <= when; ++due) {
            if (due->first >= m_againUntil && !starts)
                starts = &*due;
            else
                note(*due, due->first < m_againUntil ? m_again : others);
        }
        m_settled = host.clock = when;
        if (tickStarts())
            download(starts);
        else if (starts)
            note(*starts, missed);
    }

    void meet(const Event &event)
    {
        waitUntil(event.at);
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
        const QString when = text(host.clock);
        m_late += due && due->first < host.clock;
        const size_t asked = station.requests().size();
        pass(m_duration, held);
        if (m_calendar.upper_bound(host.clock)->first > host.clock + 3s)
            expect(!tickStarts(), when + u" two downloads at once"_s);
        awaitEnd();

        const QString log = takeLog();
        const int task = log.mid(5, 2).toInt();
        expect(log.startsWith(taskName(task) + u" - "_s + m_outcome.told) && !log.contains(u'|'),
               when + u" logged "_s + log);
        const size_t requests = station.requests().size() - asked; // a reset one is sent again
        expect(m_outcome.fate == refused ? requests == 0
                                         : requests == 1 || (m_outcome.fate == reset && requests),
               when + u" %1 requests"_s.arg(requests));
        for (size_t request = asked; request < station.requests().size(); ++request)
            expect(station.requests()[request].path() == "/" + QByteArray::number(task),
                   when + u" asked for another file than "_s + fileName(task));

        expect(due && due->second.contains(task), when + u" was not due: "_s + taskName(task));
        if (due)
            for (auto &[other, fates] : due->second)
                fates.push_back(other == task ? m_outcome.fate : shared);
        if (m_outcome.fate == fetched)
            m_lastGood[fileName(task)] = m_body;
        expect(fileBytes(destination(fileName(task))) == m_lastGood.value(fileName(task)),
               when + u" wrong bytes: "_s + fileName(task));
        prepareStation();
    }

    void checkCalendar()
    {
        std::map<Fate, int> counts;
        int together = 0;
        for (const auto &[moment, tasks] : m_calendar) {
            for (const auto &[task, fates] : tasks) {
                const bool isWhole = !fates.empty() && std::ranges::count(fates, missed) == 0;
                expect(isWhole || moment >= m_end, text(moment) + u" missed "_s + taskName(task));
                for (const Fate fate : fates)
                    together += ++counts[fate] > 0;
            }
        }
        for (const auto &[fate, count] : counts)
            std::printf("%8d  %s\n", count, fate.data());
        std::printf("%8d  slots in all; %d started late, after a jump of the clock\n", together,
                    m_late);
    }

    void checkFiles()
    {
        expect(destinationFiles() == m_lastGood.keys(), destinationFiles().join(u' '));
        for (const auto &[file, bytes] : m_lastGood.asKeyValueRange())
            expect(fileBytes(destination(file)) == bytes, u"wrong bytes: "_s + file);
        expect(host.messages.isEmpty(), host.messages.join(u'|'));
    }

    const local_seconds m_end;
    std::mt19937 m_random;
    QTcpSocket m_closedPort;
    std::map<local_seconds, std::map<int, std::vector<Fate>>> m_calendar; ///< by moment and task
    std::deque<Event> m_events = eventsOfTheYear;
    local_seconds m_settled = start; ///< the slots up to here have their fate
    local_seconds m_againUntil{};    ///< slots before this one came again
    Fate m_again;
    seconds m_listStaysOpen{};
    Outcome m_outcome;
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
    Year year(trust::numberOption(u"--days"_s, 366), trust::numberOption(u"--seed"_s, 1));
    year.run();
    return year.report();
}
