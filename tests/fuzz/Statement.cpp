#include "store/SourceText.h"
#include "store/TaskStore.h"
#include "tests/fuzz/Fuzz.h"

#include <sqlite3.h>

static sqlite3 *database()
{
    static const store::DatabaseHandle handle = [] {
        sqlite3 *opened = nullptr;
        fuzz::require(sqlite3_open(":memory:", &opened) == SQLITE_OK);
        store::DatabaseHandle made(opened);
        store::runScript(opened, u"CREATE TABLE Tijden (Opdrachtnaam, Dagen, Uren);"_s);
        return made;
    }();
    return handle.get();
}

// A name that was put between quotes reaches the engine, and a search, as it is.
static void requireName(const QString &name)
{
    const QString quoted = u'\'' + store::withDoubledQuotes(name) + u'\'';
    fuzz::require(store::parsedCriterion(u"Opdrachtnaam = "_s + quoted).text == name);
    store::PreparedStatement statement(database(), u"SELECT "_s + quoted);
    fuzz::require(statement.step());
    const auto *read = reinterpret_cast<const char *>(sqlite3_column_text(statement.handle(), 0));
    fuzz::require(QString::fromUtf8(read) == name);
}

void fuzz::meet(const QByteArray &input)
{
    const QString text = QString::fromUtf8(input);
    require(text.contains(u"true"_s, Qt::CaseInsensitive) ||
            store::withTruthAsNumber(text) == text);
    store::rowSource(text);
    allowingErrors([&] { store::PreparedStatement(database(), text); });
    allowingErrors([&] { store::parsedCriterion(text); });
    if (!text.contains(QChar::Null))
        requireName(text);
}
