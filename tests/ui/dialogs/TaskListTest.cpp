#include "tests/ui/dialogs/TaskListTest.h"

#include "store/Statements.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>

using store::bNieuweOpdracht;
using store::rsOpdrachten;
using store::sOpdrachtnaam;

namespace {

// Three tasks, none of them where its name would be in a sorted list.
class TaskList : public TaskListTest
{
protected:
    TaskList() { fill(); }

    void fill()
    {
        addTask(u"Noon"_s, u"http://a/noon.mp2"_s, u"noon.mp2"_s, 12);
        addTask(u"Late"_s, u"http://a/late.mp2"_s, u"late.mp2"_s, 23, false);
        addTask(u"Early"_s, u"http://a/early.mp2"_s, u"early.mp2"_s, 5);
    }

    std::function<void()> add(const QString &name)
    {
        return [name] {
            addTask(store::withDoubledQuotes(name), u"http://a/b"_s, u"b"_s);
            sOpdrachtnaam = name;
        };
    }

    std::function<void()> rename(const QString &name)
    {
        return [name] {
            setTasks(u"Opdrachtnaam = '%1' WHERE Opdrachtnaam = '%2'"_s.arg(
                store::withDoubledQuotes(name), sOpdrachtnaam));
            sOpdrachtnaam = name;
        };
    }
};

} // namespace

TEST_F(TaskList, ShowsTheTasksInTheOrderOfTheTable)
{
    openList();
    EXPECT_EQ(list->windowTitle(), u"Ostravelin 1.8.1"_s);
    EXPECT_EQ(names(), (QStringList{u"Noon"_s, u"Late"_s, u"Early"_s}));
    EXPECT_EQ(cell(1, 4), u"True"_s);
    // titles, widths, and the texts in the inactive task's row
    const std::tuple<QString, int, QString> columns[] = {
        {u"Taskname"_s, 147, u"Late"_s},     {u"Download address"_s, 263, u"http://a/late.mp2"_s},
        {u"Filename"_s, 120, u"late.mp2"_s}, {u""_s, 0, u"23"_s},
        {u"Active"_s, 43, u"False"_s},
    };
    for (int column = 0; column < 5; ++column) {
        const auto &[title, width, late] = columns[column];
        EXPECT_EQ(grid()->model()->headerData(column, Qt::Horizontal).toString(), title);
        EXPECT_EQ(grid()->columnWidth(column), width);
        EXPECT_EQ(cell(2, column), late);
    }
}

TEST_F(TaskList, InactiveTasksAreRedInAllColumns)
{
    openList();
    const auto ground = [this](int row, int column) {
        const QRect cell = grid()->visualRect(index(row, column));
        return grid()->viewport()->grab().toImage().pixelColor(cell.topLeft() + QPoint(2, 2));
    };
    for (const int column : {0, 1, 2, 4}) {
        EXPECT_EQ(ground(2, column), QColor(255, 0, 0));
        EXPECT_EQ(ground(3, column), grid()->palette().color(QPalette::Base));
        clickRow(2);
        const QColor selected = ground(2, column);
        EXPECT_NE(selected, QColor(255, 0, 0));
        EXPECT_GT(selected.red(), 4 * qMax(selected.green(), selected.blue()));
        clickRow(1);
    }
}

TEST_F(TaskList, HasItsButtonsInOneRowAboveTheGrid)
{
    openList();
    const std::pair<QString, QString> buttons[] = {{u"Toevoegen"_s, u"&New task"_s},
                                                   {u"Verwijderen"_s, u"&Delete"_s},
                                                   {u"Wijzigen"_s, u"&Modify"_s}};
    QRect previous;
    for (const auto &[name, caption] : buttons) {
        EXPECT_EQ(button(name)->text(), caption);
        const QRect place = button(name)->geometry();
        EXPECT_GT(place.left(), previous.right());
        EXPECT_LT(place.bottom(), grid()->y());
        previous = place;
    }
    EXPECT_TRUE(canChange());
}

TEST_F(TaskList, KeepsTheSelectionWhereItBelongs)
{
    const QString New = u"Toevoegen"_s, Delete = u"Verwijderen"_s, Modify = u"Wijzigen"_s;
    const std::function<void()> cancel;
    const struct
    {
        const char *what;
        int clicked; // row that is selected before
        QString button;
        std::function<void()> edit;
        int selected; // row that is selected afterwards
    } cases[] = {
        {"added", 2, New, add(u"Aha"_s), 4},
        {"added, cancelled", 2, New, cancel, 1},
        {"added with quotes", 2, New, add(u"'Kid''s'"_s), 4},
        {"renamed", 3, Modify, rename(u"Aha"_s), 3},
        {"modified, cancelled", 3, Modify, cancel, 3},
        {"renamed with quotes and accents", 1, Modify, rename(u"l'été"_s), 1},
        {"renamed to an other's name", 3, Modify, rename(u"LATE"_s), 2},
        {"deleted", 3, Delete, cancel, 1},
    };
    for (const auto &[what, clicked, name, edited, selected] : cases) {
        SCOPED_TRACE(what);
        removeAll();
        fill();
        openList();
        EXPECT_EQ(selectedRow(), 1);
        clickRow(clicked);
        EXPECT_EQ(selectedRow(), clicked);
        edit = edited;
        host.answers = {true};
        click(name);
        EXPECT_EQ(selectedRow(), selected);
        EXPECT_TRUE(canChange());
        list.reset();
    }
}

TEST_F(TaskList, HasNothingToSelectWhenItIsEmpty)
{
    removeAll();
    openList();
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_FALSE(canChange());
    clickNew(); // and cancelled
    EXPECT_FALSE(canChange());

    edit = add(u"First"_s);
    clickNew();
    EXPECT_EQ(selectedRow(), 1);
    EXPECT_TRUE(canChange());

    clickDelete();
    EXPECT_EQ(names(), QStringList{});
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_FALSE(canChange());
}

TEST_F(TaskList, AsksBeforeATaskIsDeleted)
{
    addTask(u"Kid''s & <b>été</b>"_s, u"http://a/b"_s, u"b"_s);
    openList();
    for (const bool answer : {false, true}) {
        clickRow(4);
        clickDelete(answer);
        EXPECT_EQ(host.questions.back(), u"Ostravelin 1.8.1 | Do you realy want task "
                                         "'Kid's & <b>été</b>' will be removed?"_s);
        EXPECT_EQ(names().size(), answer ? 3 : 4);
        EXPECT_EQ(selectedRow(), answer ? 1 : 4);
    }
}

TEST_F(TaskList, TellsTheEditorWhatToDo)
{
    openList();
    QStringList told;
    edit = [&] {
        told << (bNieuweOpdracht == Boolean::True ? u"new "_s : u"old "_s) + sOpdrachtnaam;
    };
    clickRow(2);
    clickModify();
    clickNew();
    clickRow(2);
    QTest::keyClick(grid(), Qt::Key_Down);
    QTest::keyClick(grid(), Qt::Key_Return);
    clickRow(1);
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, placeInRow(1));
    EXPECT_EQ(told, (QStringList{u"old Late"_s, u"new "_s, u"old Early"_s, u"old Noon"_s}));
    clickRow(2);
    clickRow(2, Qt::ControlModifier); // takes no selection away
    EXPECT_EQ(selectedRow(), 2);
}

TEST_F(TaskList, ShowsTextsThatAreCutInFull)
{
    const QString address = u"http://station.example/<b>"_s + QString(74, u'x');
    addTask(u"Long"_s, address, u"b"_s);
    openList();
    for (const auto &[row, shown] : {std::pair(1, false), std::pair(4, true)}) {
        const QPoint place = placeInRow(row);
        QHelpEvent hover(QEvent::ToolTip, place, grid()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid()->viewport(), &hover);
        EXPECT_EQ(QToolTip::text().contains(address.toHtmlEscaped()), shown);
        EXPECT_EQ(QToolTip::text().isEmpty(), !shown);
    }
}

TEST_F(TaskList, KeepsTheRecordsetOpenUntilItIsClosed)
{
    openList();
    EXPECT_TRUE(rsOpdrachten->isOpen());
    QTest::keyClick(list.get(), Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    list.reset();
    EXPECT_FALSE(rsOpdrachten->isOpen());
}

TEST_F(TaskList, ADatabaseErrorIsReported)
{
    openList();
    edit = [] { execute(u"ALTER TABLE Opdrachtgegevens RENAME TO Lost"_s); };
    clickModify();
    EXPECT_EQ(host.endings, QList{1});
    ASSERT_EQ(host.messages.size(), 1);
    EXPECT_TRUE(host.messages[0].contains(u"no such table: Opdrachtgegevens"_s));

    list.reset();
    EXPECT_FALSE(rsOpdrachten->isOpen());
    EXPECT_EQ(errorOf([] { ui::frmOpdrachten({}); }), DatabaseEngine);
    EXPECT_FALSE(rsOpdrachten->isOpen());
}
