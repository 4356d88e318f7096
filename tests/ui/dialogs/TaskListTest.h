#pragma once

#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/frmOpdrachten.h"

#include <QPushButton>
#include <QTableView>

/// The task list over a database of its own, with the test in the editor's place. Rows of its grid
/// count from 1.
class TaskListTest : public MainFormTest
{
protected:
    TaskListTest() { store::createTaskRecordset(); }

    void openList()
    {
        list = std::make_unique<ui::frmOpdrachten>([this](QWidget *) {
            if (edit)
                edit();
        });
        list->show();
        list->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(list.get()));
    }

    QPushButton *button(const QString &name) const { return list->findChild<QPushButton *>(name); }
    void click(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void clickNew() const { click(u"Toevoegen"_s); }
    void clickModify() const { click(u"Wijzigen"_s); }
    void clickDelete(bool answer = true)
    {
        host.answers = {answer};
        click(u"Verwijderen"_s);
    }

    /// Whether a selected task can be changed and deleted.
    bool canChange() const
    {
        EXPECT_TRUE(button(u"Toevoegen"_s)->isEnabled());
        EXPECT_EQ(button(u"Wijzigen"_s)->isEnabled(), button(u"Verwijderen"_s)->isEnabled());
        return button(u"Wijzigen"_s)->isEnabled();
    }

    QTableView *grid() const { return list->findChild<QTableView *>(); }
    QModelIndex index(int row, int column) const { return grid()->model()->index(row - 1, column); }
    QString cell(int row, int column) const { return index(row, column).data().toString(); }
    QPoint placeInRow(int row) const { return grid()->visualRect(index(row, 1)).center(); }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, modifiers, placeInRow(row));
    }

    /// The selected row, or 0 when there is none.
    int selectedRow() const
    {
        const QModelIndexList rows = grid()->selectionModel()->selectedRows();
        if (rows.isEmpty())
            return 0;
        EXPECT_EQ(rows.size(), 1);
        EXPECT_EQ(rows[0].row(), grid()->currentIndex().row());
        return rows[0].row() + 1;
    }

    /// The names in the grid.
    QStringList names() const
    {
        QStringList names;
        for (int row = 1; row <= grid()->model()->rowCount(); ++row)
            names << cell(row, 0);
        return names;
    }

    std::function<void()> edit; ///< what the user does in the editor; nothing is a cancel
    std::unique_ptr<ui::frmOpdrachten> list;
};
