#include "bench/Measure.h"
#include "bench/Schedule.h"
#include "platform/NativeHost.h"
#include "store/TaskStore.h"
#include "ui/main/MainForm.h"

#include <QApplication>
#include <QTemporaryDir>

#include <sqlite3.h>

// next_download_bench: what finding the next download costs beside the engine's own time for the
// largest schedule that is planned for, 60 tasks in all of the week's 168 slots, when each of them
// has gone by. Both run in turn on one connection.

using namespace Qt::StringLiterals;

static constexpr int tasks = 60;
static constexpr int rounds = 101;

static int stepThroughEngine()
{
    store::PreparedStatement statement = store::dbConnection.prepare(store::scheduleStatement());
    int rows = 0;
    while (sqlite3_step(statement.handle()) == SQLITE_ROW)
        ++rows;
    return rows;
}

// A quarter of a minute after the last slot of the week, when each row has to be looked at.
class SundayNight : public platform::NativeHost
{
public:
    std::chrono::local_seconds now() const override
    {
        using namespace std::chrono;
        return local_days{2026y / November / 22} + 23h + 59min + 15s;
    }
};

int main(int argc, char **argv)
{
    SundayNight host;
    platform::installHost(host);
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    openFullSchedule(folder.path(), tasks);
    std::vector<double> openings;
    for (int round = 0; round < 15; ++round) {
        store::dbConnection.close();
        openings.push_back(milliseconds([&] { store::OpenDatabase(folder.path()); }));
    }

    ui::MainForm window;
    std::vector<double> engine;
    std::vector<double> whole;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        int rows = 0;
        engine.push_back(milliseconds([&] { rows = stepThroughEngine(); }));
        whole.push_back(milliseconds([&] { window.ZoekVolgende(); }));
        ratios.push_back(whole.back() / engine.back());
        if (rows != tasks * 168 || window.DownloadEntry.Opdracht != u"Hourly news 0"_s) {
            std::fprintf(stderr, "%d rows, next is %s\n", rows,
                         qPrintable(window.DownloadEntry.Opdracht));
            return EXIT_FAILURE;
        }
    }
    print("open the database", "ms", spreadOf(openings));
    print("engine alone", "ms", spreadOf(engine));
    print("next download", "ms", spreadOf(whole));
    print("ratio", "", spreadOf(ratios));
    return EXIT_SUCCESS;
}
