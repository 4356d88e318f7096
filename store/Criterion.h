#pragma once

#include <QString>

namespace store {

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
