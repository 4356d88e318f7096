#include "store/Statements.h"
#include "store/TaskStore.h"
#include "store/Transaction.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <sqlite3.h>
#include <vector>

// next_download_bench: what the recordset adds to the engine's own time for the largest schedule
// that is planned for, 60 tasks in all of the week's 168 slots. Both run in turn on one connection.

using namespace Qt::StringLiterals;

static constexpr int tasks = 60;
static constexpr int rounds = 101;

static void fillDatabase(const QString &programFolder)
{
    QDir().mkpath(programFolder + u"/database"_s);
    QFile::copy(QStringLiteral(EMPTY_DATABASE), programFolder + u"/database/ostravelin.mdb"_s);
    store::OpenDatabase(programFolder);
    store::Transaction transaction(store::dbConnection);
    for (int task = 0; task < tasks; ++task) {
        store::dbConnection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('Hourly news %1', "
            "'http://station.example/news/hourly%1.mp3', 'hourly%1.mp3', %1, 1)"_s.arg(task));
        for (int slot = 0; slot < 168; ++slot) {
            store::dbConnection.execute(
                u"INSERT INTO Tijden VALUES ('Hourly news %1', %2, %3)"_s.arg(task)
                    .arg(slot / 24 + 1)
                    .arg(slot % 24));
        }
    }
    transaction.commit();
}

static int stepThroughEngine()
{
    store::Statement statement = store::dbConnection.prepare(store::scheduleStatement());
    int rows = 0;
    while (sqlite3_step(statement.handle()) == SQLITE_ROW)
        ++rows;
    return rows;
}

// Reads what the choice of the next download reads when every slot of the week has gone by.
static int walkRecordset(store::Recordset &rows)
{
    rows.setSource(store::scheduleStatement());
    rows.open();
    const int day = rows.fieldIndex(u"Dagen");
    const int hour = rows.fieldIndex(u"Uren");
    const int minute = rows.fieldIndex(u"minuten");
    const int count = rows.recordCount();
    int sum = 0;
    for (; !rows.atEnd(); rows.moveNext()) {
        sum += rows.value(day).toInteger() + rows.value(hour).toInteger() +
               rows.value(minute).toInteger();
    }
    rows.setAbsolutePosition(count);
    for (const auto *name : {u"Opdrachtgegevens.Opdrachtnaam", u"Download_adres", u"Filenaam"})
        sum += static_cast<int>(rows.value(name).toText().size());
    rows.close();
    return sum > 0 ? count : 0;
}

struct Spread
{
    double low, median, high; ///< the middle half
};

static Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return {values[values.size() / 4], values[values.size() / 2], values[values.size() * 3 / 4]};
}

static void print(const char *name, const char *unit, const Spread &spread)
{
    std::printf("%-18s %7.3f %-2s  (middle half %.3f to %.3f)\n", name, spread.median, unit,
                spread.low, spread.high);
}

template <typename Action>
static double milliseconds(Action &&action)
{
    QElapsedTimer clock;
    clock.start();
    action();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

int main()
{
    const QTemporaryDir folder;
    fillDatabase(folder.path());
    store::dbConnection.close();
    std::vector<double> openings;
    for (int round = 0; round < 15; ++round) {
        if (store::dbConnection.isOpen())
            store::dbConnection.close();
        openings.push_back(milliseconds([&] { store::OpenDatabase(folder.path()); }));
    }

    store::Recordset rows(store::dbConnection);
    std::vector<double> engine;
    std::vector<double> recordset;
    std::vector<double> ratios;
    int engineRows = 0;
    int recordsetRows = 0;
    for (int round = 0; round < rounds; ++round) {
        engine.push_back(milliseconds([&] { engineRows = stepThroughEngine(); }));
        recordset.push_back(milliseconds([&] { recordsetRows = walkRecordset(rows); }));
        ratios.push_back(recordset.back() / engine.back());
    }
    if (engineRows != tasks * 168 || recordsetRows != engineRows) {
        std::fprintf(stderr, "%d and %d rows\n", engineRows, recordsetRows);
        return EXIT_FAILURE;
    }
    print("open the database", "ms", spreadOf(openings));
    print("engine alone", "ms", spreadOf(engine));
    print("recordset", "ms", spreadOf(recordset));
    print("ratio", "", spreadOf(ratios));
    return EXIT_SUCCESS;
}
