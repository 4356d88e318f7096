#pragma once

#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/frmOpdrachten.h"

#include <QPushButton>
#include <QTableView>

/// The task list over a database of its own, with the test in the editor's place.
class TaskListTest : public MainFormTest
{
protected:
    TaskListTest();

    /// What the user does in the editor; nothing is a cancel.
    std::function<void()> edit;

    void openList();

    QPushButton *button(const QString &name) const;
    void click(const QString &name) const;
    void clickNew() const { click(u"Toevoegen"_s); }
    void clickModify() const { click(u"Wijzigen"_s); }
    /// Deletes the selected task, or not.
    void clickDelete(bool answer = true);
    /// Whether a selected task can be changed and deleted.
    bool canChange() const;

    QTableView *grid() const { return list->findChild<QTableView *>(); }
    /// A place in a row, from 1, of the grid.
    QPoint placeInRow(int row) const;
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) const;
    /// The selected row, from 1, or 0 when there is none.
    int selectedRow() const;
    QString cell(int row, int column) const;
    /// The names in the grid.
    QStringList names() const;

    std::unique_ptr<ui::frmOpdrachten> list;
};
