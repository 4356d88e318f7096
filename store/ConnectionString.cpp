#include "store/ConnectionString.h"

#include <QDir>
#include <QStringList>

namespace store {

using namespace Qt::StringLiterals;

static const auto placeInProgramFolder = u"\\database\\ostravelin.mdb"_s;

QString connectionString(const QString &programFolder)
{
    return u"Provider=Microsoft.Jet.OLEDB.4.0;"_s + u"Data Source="_s + programFolder +
           placeInProgramFolder + u";"_s + u"Jet OLEDB:Database Password = "_s +
           taskDatabasePassword.toString() + u';';
}

static QStringList assignments(const QString &text)
{
    QStringList found;
    bool ended = true;
    for (const QString &piece : text.split(u';')) {
        if (ended || piece.contains(u'='))
            found += piece;
        else if (!piece.trimmed().isEmpty())
            found.last() += u';' + piece;
        ended = piece.trimmed().isEmpty();
    }
    return found;
}

static QString withNativeSeparators(const QString &path)
{
    if (!path.endsWith(placeInProgramFolder))
        return path;
    return path.chopped(placeInProgramFolder.size()) +
           QString(placeInProgramFolder).replace(u'\\', QDir::separator());
}

DatabaseAddress parsedConnectionString(const QString &text)
{
    DatabaseAddress address;
    for (const QString &assignment : assignments(text)) {
        const QString key = assignment.section(u'=', 0, 0).trimmed();
        const QString value = assignment.section(u'=', 1).trimmed();
        if (key.compare(u"Data Source", Qt::CaseInsensitive) == 0)
            address.path = withNativeSeparators(value);
        else if (key.compare(u"Jet OLEDB:Database Password", Qt::CaseInsensitive) == 0)
            address.password = value;
    }
    return address;
}

} // namespace store
