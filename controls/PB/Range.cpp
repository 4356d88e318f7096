#include "controls/PB/Range.h"

#include "platform/Arithmetic.h"

#include <cmath>

namespace controls {

qint32 cutToRange(qint32 value, qint32 min, qint32 max)
{
    if (value > max)
        return max;
    if (value < min)
        return min;
    return value;
}

QString percentageText(qint32 value, qint32 min, qint32 max)
{
    const double percentage = platform::quotient(double(value) - min, double(max) - min) * 100;
    // A double is good for 15 decimal digits. Rounded from these, 57 of 200 is 28.5, thus 29;
    // the double itself is 28.499999999999996.
    const double decimal = QString::number(percentage, 'g', 15).toDouble();
    return QString::number(std::llround(decimal)) + u'%';
}

} // namespace controls
