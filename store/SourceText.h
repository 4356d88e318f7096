#pragma once

#include <QString>

// What is read out of the texts that callers give as statements, sources of rows and criteria.
namespace store {

/// The statement with 1, the stored truth, for the literal True in any case: older engines know no
/// word for it. Names, texts and comments stay as they are.
QString withTruthAsNumber(const QString &statement);

/// Whether a text holds no statement: nothing but blanks and comments.
bool isBlankStatement(const QString &text);

/// How the rows of a recordset are read.
struct RowSource
{
    QString statement;
    bool isKeyed; ///< the rows are those of one table, with their row numbers as the last column
};

/// The source is the name of a table, whose rows come in the order of their row numbers, or a
/// statement. It is keyed when it is a table or "SELECT * FROM table", followed at most by WHERE,
/// ORDER BY and LIMIT.
RowSource rowSource(const QString &source);

/// What a search looks for: a field that holds a text.
struct Criterion
{
    QString field;
    QString text;
};

/// Reads "Field = 'text'", a quote inside the text being doubled. Raises InvalidProcedureCall for
/// anything else.
Criterion parsedCriterion(const QString &criterion);

} // namespace store
