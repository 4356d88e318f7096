#include "store/PreparedStatement.h"

#include "platform/RuntimeError.h"
#include "store/DatabaseFile.h"
#include "store/SourceText.h"

#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

void PreparedStatement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

PreparedStatement::PreparedStatement(sqlite3 *database, const QString &text)
{
    const QByteArray utf8 = withTruthAsNumber(text).toUtf8();
    sqlite3_stmt *prepared = nullptr;
    const char *rest = nullptr;
    if (sqlite3_prepare_v2(database, utf8.constData(), -1, &prepared, &rest) != SQLITE_OK)
        raiseEngineError(database);
    m_handle.reset(prepared);
    if (!prepared || !isBlankStatement(QString::fromUtf8(rest)))
        throw RuntimeError(ErrorNumber::DatabaseEngine, u"Not exactly one statement: "_s + text);
}

namespace {

struct Binder
{
    int operator()(std::monostate) const { return sqlite3_bind_null(statement, parameter); }
    int operator()(std::int64_t number) const
    {
        return sqlite3_bind_int64(statement, parameter, number);
    }
    int operator()(double number) const
    {
        return sqlite3_bind_double(statement, parameter, number);
    }
    int operator()(bool truth) const { return sqlite3_bind_int(statement, parameter, truth); }
    int operator()(const QString &text) const
    {
        const QByteArray utf8 = text.toUtf8();
        return sqlite3_bind_text(statement, parameter, utf8.constData(),
                                 static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
    }

    sqlite3_stmt *statement;
    int parameter;
};

} // namespace

void PreparedStatement::bind(int parameter, const Value &value)
{
    if (value.visit(Binder{m_handle.get(), parameter}) != SQLITE_OK)
        raiseEngineError(sqlite3_db_handle(m_handle.get()));
}

bool PreparedStatement::step()
{
    switch (sqlite3_step(m_handle.get())) {
    case SQLITE_ROW:
        return true;
    case SQLITE_DONE:
        return false;
    default:
        raiseEngineError(sqlite3_db_handle(m_handle.get()));
    }
}

void PreparedStatement::reset()
{
    sqlite3_reset(m_handle.get());
}

} // namespace store
