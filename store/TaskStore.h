#pragma once

#include "platform/Boolean.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <memory>

// The task database as the whole program shares it, and what the program asks of it.
namespace store {

/// Opened once by OpenDatabase() and never closed before the program ends.
extern Connection dbConnection;

/// The recordset over the tasks that all windows share: whoever sets its source opens it, and
/// closes it again. Null until the main window loads.
extern std::unique_ptr<Recordset> rsOpdrachten;

/// What the task editor is opened for: to add a task, or else to edit the one named sOpdrachtnaam.
extern platform::Boolean bNieuweOpdracht;

/// The task to edit, empty when one is added. The editor leaves the name of a task that it saved.
extern QString sOpdrachtnaam;

/// Opens dbConnection on the task database of a program folder. Raises what Connection::open()
/// raises, and the engine's error when the database lacks one of the tables.
void OpenDatabase(const QString &programFolder);

/// The same for a look at the tasks beside the running program. Never writes or makes a file, and
/// needs no right to. The database is locked while rows are read, and no longer; the old rows can
/// be read until a save takes effect.
void OpenDatabaseForReading(const QString &programFolder);

/// Makes rsOpdrachten, closed.
void createTaskRecordset();

/// A text as it may stand between single quotes in a statement or criterion: its own single quotes
/// doubled, so that a task named "Kid's hour" works everywhere.
QString withDoubledQuotes(QString text);

/// Every slot of every active task in the order of day, hour and minute. An active task without
/// slots gives one row whose Dagen and Uren are empty.
QString scheduleStatement();

/// All tasks, in the order of the table.
QString tasksSource();

/// What finds the task of that name among all of them.
QString taskCriterion(const QString &name);

/// The tasks of that name, case not counting: the one chosen for a forced download, the one that is
/// to be added, the one that is edited. They differ in the capitals of their words only.
QString chosenTaskStatement(const QString &name);
QString newTaskStatement(const QString &name);
QString editedTaskStatement(const QString &name);

/// The tasks of that name with one row per slot. One without slots gives one row whose Dagen and
/// Uren are empty.
QString taskWithSlotsStatement(const QString &name);

/// All tasks, the one with the highest minute first.
QString tasksByMinuteStatement();

/// All slots of all tasks.
QString slotsSource();

QString deleteSlotsStatement(const QString &taskName);

} // namespace store
