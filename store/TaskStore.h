#pragma once

#include "platform/Boolean.h"
#include "store/Connection.h"
#include "store/Recordset.h"

#include <memory>

// The task database as the whole program shares it.
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

/// Makes rsOpdrachten, closed.
void createTaskRecordset();

} // namespace store
