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

} // namespace store
