#include "store/TaskStore.h"

#include "platform/RuntimeError.h"

namespace store {

using namespace Qt::StringLiterals;

Connection dbConnection;
std::unique_ptr<Recordset> rsOpdrachten; // behind the connection, which has to outlive it
platform::Boolean bNieuweOpdracht = platform::Boolean::False;
QString sOpdrachtnaam;

static void requireTables()
{
    dbConnection.prepare(u"SELECT * FROM Opdrachtgegevens, Tijden"_s);
}

static void openDatabase(const QString &programFolder, OpenMode mode)
{
    dbConnection.open(taskDatabase(programFolder), mode);
    try {
        requireTables();
    } catch (const platform::RuntimeError &) {
        dbConnection.close();
        throw;
    }
}

void OpenDatabase(const QString &programFolder)
{
    openDatabase(programFolder, OpenMode::ReadWrite);
}

void OpenDatabaseForReading(const QString &programFolder)
{
    openDatabase(programFolder, OpenMode::ReadOnly);
}

void createTaskRecordset()
{
    rsOpdrachten = std::make_unique<Recordset>(dbConnection);
}

QString withDoubledQuotes(QString text)
{
    return text.replace(u"'"_s, u"''"_s);
}

QString scheduleStatement()
{
    return u"SELECT * FROM Opdrachtgegevens LEFT JOIN Tijden ON "
           "Opdrachtgegevens.Opdrachtnaam = Tijden.Opdrachtnaam "
           "WHERE Opdrachtgegevens.Aktief = True "
           "ORDER BY Tijden.Dagen,Tijden.Uren,Opdrachtgegevens.Minuten;"_s;
}

QString tasksSource()
{
    return u"Opdrachtgegevens"_s;
}

QString taskCriterion(const QString &name)
{
    return u"Opdrachtnaam = '%1'"_s.arg(withDoubledQuotes(name));
}

// The capitals stand as they always have.
QString chosenTaskStatement(const QString &name)
{
    return u"SELECT * FROM Opdrachtgegevens WHERE Opdrachtnaam = '%1';"_s.arg(
        withDoubledQuotes(name));
}

QString newTaskStatement(const QString &name)
{
    return u"Select * FROM Opdrachtgegevens where Opdrachtnaam = '%1';"_s.arg(
        withDoubledQuotes(name));
}

QString editedTaskStatement(const QString &name)
{
    return u"SELECT * FROM Opdrachtgegevens where Opdrachtnaam = '%1';"_s.arg(
        withDoubledQuotes(name));
}

QString taskWithSlotsStatement(const QString &name)
{
    return u"SELECT Opdrachtgegevens.*, Tijden.Dagen, Tijden.Uren "
           "FROM Opdrachtgegevens LEFT JOIN Tijden ON "
           "Opdrachtgegevens.Opdrachtnaam = Tijden.Opdrachtnaam "
           "where Opdrachtgegevens.Opdrachtnaam = '%1';"_s.arg(withDoubledQuotes(name));
}

QString tasksByMinuteStatement()
{
    return u"SELECT * From Opdrachtgegevens ORDER BY Minuten DESC;"_s;
}

QString slotsSource()
{
    return u"Tijden"_s;
}

QString deleteSlotsStatement(const QString &taskName)
{
    return u"DELETE FROM Tijden WHERE Opdrachtnaam = '%1';"_s.arg(withDoubledQuotes(taskName));
}

} // namespace store
