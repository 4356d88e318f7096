#pragma once

#include "store/Recordset.h"

#include <QDialog>

#include <functional>

class QPushButton;
class QTableView;

namespace ui {

class TaskGridModel;

/// The window that lists all tasks, and from which they are added, changed and deleted. It keeps
/// store::rsOpdrachten open as long as it exists; the constructor raises what keeps it from that.
class frmOpdrachten : public QDialog
{
    Q_OBJECT

public:
    /// Shows the task editor and returns when it is closed. What it is to edit, and what it has
    /// saved, is in store::bNieuweOpdracht and store::sOpdrachtnaam.
    using Editor = std::function<void(QWidget *parent)>;

    explicit frmOpdrachten(Editor editor, QWidget *parent = nullptr);

    /// Fills the grid from the recordset, with the first task selected.
    void FormatFlexgrid();

private:
    void makeControls();
    void makeGrid();
    int gridWidth() const;
    void connectEvents();
    void Toevoegen_Click();
    void Verwijderen_Click();
    void Wijzigen_Click();
    void editTask(const QString &name, bool isNew);
    QString moveToGridRow();
    void selectGridRow(int row);
    void selectTask(const QString &name);

    store::OpenRecordset m_rows;
    Editor m_editor;
    TaskGridModel *m_tasks = nullptr;
    QTableView *MSHFlexGrid1 = nullptr;
    QPushButton *Toevoegen = nullptr;   // New task
    QPushButton *Verwijderen = nullptr; // Delete
    QPushButton *Wijzigen = nullptr;    // Modify
};

} // namespace ui
