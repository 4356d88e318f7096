#include "tests/ui/dialogs/Editor.h"
#include "ui/dialogs/frmOpdrachten.h"

#include <QHelpEvent>
#include <QTableView>
#include <QToolTip>

using store::rsOpdrachten;
using store::sOpdrachtnaam;

namespace {

// The list over three tasks, none of them where its name would be in a sorted list. Rows of its
// grid count from 1.
class TaskList : public MainFormTest
{
protected:
    TaskList()
    {
        store::createTaskRecordset();
        addTask(u"Noon"_s, u"http://a/noon.mp2"_s, u"noon.mp2"_s, 12);
        addTask(u"Late"_s, u"http://a/late.mp2"_s, u"late.mp2"_s, 23, false);
        addTask(u"Early"_s, u"http://a/early.mp2"_s, u"early.mp2"_s, 5);
    }

    void openList()
    {
        list = std::make_unique<ui::frmOpdrachten>([this](QWidget *) { edit(); });
        list->show();
        list->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(list.get()));
    }

    QPushButton *button(const QString &name) const { return list->findChild<QPushButton *>(name); }
    void click(const QString &name, bool answer = true)
    {
        host.answers = {answer};
        button(name)->click();
    }

    QTableView *grid() const { return list->findChild<QTableView *>(); }
    QModelIndex index(int row, int column) const { return grid()->model()->index(row - 1, column); }
    QString cell(int row, int column) const { return index(row, column).data().toString(); }
    QPoint placeInRow(int row) const { return grid()->visualRect(index(row, 1)).center(); }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, modifiers, placeInRow(row));
    }

    // The selected row, or 0 when there is none that could be changed and deleted.
    int selectedRow() const
    {
        const QModelIndexList rows = grid()->selectionModel()->selectedRows();
        EXPECT_LE(rows.size(), 1);
        EXPECT_TRUE(rows.isEmpty() || rows[0].row() == grid()->currentIndex().row());
        EXPECT_TRUE(button(u"Toevoegen"_s)->isEnabled());
        EXPECT_EQ(button(u"Wijzigen"_s)->isEnabled(), !rows.isEmpty());
        EXPECT_EQ(button(u"Verwijderen"_s)->isEnabled(), !rows.isEmpty());
        return rows.isEmpty() ? 0 : rows[0].row() + 1;
    }

    QString names() const
    {
        QStringList names;
        for (int row = 1; row <= grid()->model()->rowCount(); ++row)
            names << cell(row, 0);
        return names.join(u' ');
    }

    std::function<void()> edit = [] {}; // what the user does in the editor
    std::unique_ptr<ui::frmOpdrachten> list;
};

} // namespace

TEST_F(TaskList, ShowsTheTasksInTheOrderOfTheTable)
{
    openList();
    EXPECT_EQ(list->windowTitle(), u"Ostravelin 1.8.1"_s);
    EXPECT_EQ(names(), u"Noon Late Early"_s);
    QStringList columns; // titles, widths, and the texts in the inactive task's row
    for (int column = 0; column < 5; ++column)
        columns << u"%1 %2 %3"_s.arg(grid()->model()->headerData(column, Qt::Horizontal).toString(),
                                     QString::number(grid()->columnWidth(column)), cell(2, column));
    EXPECT_EQ(columns.join(u'|'), u"Taskname 147 Late|Download address 263 http://a/late.mp2|"
                                  "Filename 120 late.mp2| 0 23|Active 43 False"_s);
    EXPECT_EQ(cell(1, 4), u"True"_s);

    QMap<int, QString> captions; // by their places
    for (const auto *each : list->findChildren<QPushButton *>()) {
        captions[each->x()] = each->text();
        EXPECT_LT(each->geometry().bottom(), grid()->y());
    }
    EXPECT_EQ(captions.values().join(u' '), u"&New task &Delete &Modify"_s);

    QTest::keyClick(list.get(), Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    EXPECT_TRUE(rsOpdrachten->isOpen());
    list.reset();
    EXPECT_FALSE(rsOpdrachten->isOpen());
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

TEST_F(TaskList, TheEditorsWorkIsShownAndTheSelectionKeptWhereItBelongs)
{
    const std::tuple<int, QString, Hours, int, QString> steps[] = {
        // the clicked row, or 0 for a new task; the name, or none for a cancel, and the hours that
        // are entered; the row selected afterwards; names and slots, or none when as before
        {0, u"d'Or"_s, {0}, 4, u"Noon Late Early d'Or, d'Or|1|0"_s},
        {0, u"D'OR"_s, {5}, 1, {}}, // refused
        {3, u"été"_s, {1}, 3, u"Noon Late été d'Or, d'Or|1|0 été|1|1"_s},
        {3, u"ÉTÉ"_s, {25}, 3, u"Noon Late ÉTÉ d'Or, d'Or|1|0 ÉTÉ|2|1"_s},
        // kept: a renamed task takes any name, and leaves its old slots
        {4, u"LATE"_s, {9}, 2, u"Noon Late ÉTÉ LATE, d'Or|1|0 ÉTÉ|2|1 LATE|1|9"_s},
        {3, {}, {}, 3, {}},
        // kept: a new task finds the slots that are left of its name
        {0, u"D'OR"_s, {2}, 5, u"Noon Late ÉTÉ LATE D'OR, d'Or|1|0 ÉTÉ|2|1 LATE|1|9 D'OR|1|2"_s},
        {5, u"D'OR"_s, {3}, 5, u"Noon Late ÉTÉ LATE D'OR, ÉTÉ|2|1 LATE|1|9 D'OR|1|3"_s},
    };
    openList();
    Hours shown;
    QString tables;
    for (const auto &[clicked, name, hours, selected, changed] : steps) {
        SCOPED_TRACE(name.toStdString());
        edit = [&, name = name, hours = hours] {
            const Editor editor(list.get());
            shown = editor.hours();
            if (name.isEmpty())
                return editor.cancel();
            editor.fill({name, u"a"_s, u"a"_s, u"7"_s, u"True"_s}, hours);
            editor.save();
        };
        clickRow(qMax(clicked, 1));
        EXPECT_EQ(selectedRow(), qMax(clicked, 1));
        click(clicked == 0 ? u"Toevoegen"_s : u"Wijzigen"_s);
        EXPECT_EQ(selectedRow(), selected);
        if (!changed.isEmpty())
            tables = changed;
        const QStringList slotRows = stored().mid(grid()->model()->rowCount());
        EXPECT_EQ(names() + u", "_s + slotRows.join(u' '), tables);
    }
    EXPECT_EQ(shown, (Hours{0, 2}));
    EXPECT_EQ(host.messages.size(), 1);

    click(u"Verwijderen"_s);
    EXPECT_EQ(names(), u"Noon Late ÉTÉ LATE"_s);
    EXPECT_EQ(selectedRow(), 1);
    EXPECT_EQ(stored().last(), u"D'OR|1|3"_s); // kept: a deleted task leaves its slots
}

TEST_F(TaskList, HasNothingToSelectWhenItIsEmptyAndAsksBeforeATaskIsDeleted)
{
    removeAll();
    openList();
    EXPECT_EQ(selectedRow(), 0);
    click(u"Toevoegen"_s); // and cancelled
    EXPECT_EQ(selectedRow(), 0);

    edit = [] {
        addTask(u"Kid''s & <b>été</b>"_s, u"http://a/b"_s, u"b"_s);
        sOpdrachtnaam = u"Kid's & <b>été</b>"_s;
    };
    click(u"Toevoegen"_s);
    for (const bool answer : {false, true}) {
        EXPECT_EQ(selectedRow(), 1);
        click(u"Verwijderen"_s, answer);
        EXPECT_EQ(host.questions.back(), u"Ostravelin 1.8.1 | Do you realy want task "
                                         "'Kid's & <b>été</b>' will be removed?"_s);
    }
    EXPECT_EQ(names(), u""_s);
    EXPECT_EQ(selectedRow(), 0);
}

TEST_F(TaskList, TellsTheEditorWhichTaskToModify)
{
    openList();
    QStringList told;
    edit = [&] { told << sOpdrachtnaam; };
    clickRow(2);
    click(u"Toevoegen"_s);
    clickRow(2);
    QTest::keyClick(grid(), Qt::Key_Down);
    QTest::keyClick(grid(), Qt::Key_Return);
    clickRow(1);
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, placeInRow(1));
    EXPECT_EQ(told, (QStringList{u""_s, u"Early"_s, u"Noon"_s}));
    clickRow(2);
    clickRow(2, Qt::ControlModifier); // takes no selection away
    EXPECT_EQ(selectedRow(), 2);
}

TEST_F(TaskList, ShowsTextsThatAreCutInFull)
{
    const QString address = u"http://station.example/<b>"_s + QString(74, u'x');
    addTask(u"Long"_s, address, u"b"_s);
    openList();
    for (const auto &[row, shown] :
         {std::pair(1, QString()), {4, u"<span>"_s + address.toHtmlEscaped() + u"</span>"_s}}) {
        const QPoint place = placeInRow(row);
        QHelpEvent hover(QEvent::ToolTip, place, grid()->viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid()->viewport(), &hover);
        EXPECT_EQ(QToolTip::text(), shown);
    }
}

TEST_F(TaskList, ADatabaseErrorIsReported)
{
    openList();
    edit = [] { execute(u"ALTER TABLE Opdrachtgegevens RENAME TO Lost"_s); };
    click(u"Wijzigen"_s);
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_TRUE(host.messages.join(u'\n').contains(u"no such table: Opdrachtgegevens"_s));

    list.reset();
    EXPECT_FALSE(rsOpdrachten->isOpen());
    EXPECT_EQ(errorOf([] { ui::frmOpdrachten({}); }), DatabaseEngine);
    EXPECT_FALSE(rsOpdrachten->isOpen());
}
