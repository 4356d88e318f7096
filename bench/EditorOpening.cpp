#include "store/TaskStore.h"
#include "store/Transaction.h"
#include "ui/dialogs/WeekGrid.h"
#include "ui/dialogs/frmSchedule.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

// editor_bench: how long the task editor takes from nothing to its first painting, beside an empty
// dialog, for a task with all of the week's slots among 50 such tasks. Both open in turn.

using namespace Qt::StringLiterals;

static void fillDatabase(const QString &programFolder)
{
    constexpr int tasks = 50;
    QDir().mkpath(programFolder + u"/database"_s);
    QFile::copy(QStringLiteral(EMPTY_DATABASE), programFolder + u"/database/ostravelin.mdb"_s);
    store::OpenDatabase(programFolder);
    store::Transaction transaction(store::dbConnection);
    for (int task = 0; task < tasks; ++task) {
        store::dbConnection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('Task %1', 'http://a/b', 'c', %1, 1)"_s.arg(
                task));
        for (int slot = 0; slot < ui::WeekGrid::boxCount; ++slot) {
            store::dbConnection.execute(u"INSERT INTO Tijden VALUES ('Task %1', %2, %3)"_s.arg(task)
                                            .arg(ui::WeekGrid::dayOf(slot))
                                            .arg(ui::WeekGrid::hourOf(slot)));
        }
    }
    transaction.commit();
}

class PaintWatch : public QObject
{
public:
    bool painted = false;

    bool eventFilter(QObject *, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

template <typename Dialog>
static double millisecondsToOpen()
{
    QElapsedTimer clock;
    clock.start();
    Dialog dialog;
    PaintWatch watch;
    dialog.installEventFilter(&watch);
    dialog.show();
    while (!watch.painted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

static double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    fillDatabase(folder.path());
    store::sOpdrachtnaam = u"Task 7"_s;

    std::vector<double> empty;
    std::vector<double> editor;
    for (int round = 0; round < 31; ++round) {
        empty.push_back(millisecondsToOpen<QDialog>());
        editor.push_back(millisecondsToOpen<ui::frmSchedule>());
    }
    std::printf("first: empty dialog %.1f ms, editor %.1f ms\n", empty.front(), editor.front());
    std::printf("median: empty dialog %.1f ms, editor %.1f ms\n", median(empty), median(editor));
    return EXIT_SUCCESS;
}
