#include "store/Statements.h"

namespace store {

using namespace Qt::StringLiterals;

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

QString taskStatement(const QString &name)
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
