#pragma once

#include <QString>

// What a value is worth between Min and Max.
namespace controls {

/// Max for a value above it, otherwise Min for one below that.
qint32 cutToRange(qint32 value, qint32 min, qint32 max);

/// How far the value is from Min to Max, as a whole percentage, a half rounded up: "45%".
/// Raises DivisionByZero for an empty range.
QString percentageText(qint32 value, qint32 min, qint32 max);

} // namespace controls
