#include "store/Value.h"

#include "platform/Arithmetic.h"

#include <QLocale>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

namespace {

struct ToDouble
{
    double operator()(std::monostate) const { throw RuntimeError(ErrorNumber::InvalidUseOfNull); }
    double operator()(std::int64_t number) const { return static_cast<double>(number); }
    double operator()(double number) const { return number; }
    double operator()(bool truth) const { return truth ? -1 : 0; }

    double operator()(const QString &text) const
    {
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number))
            throw RuntimeError(ErrorNumber::TypeMismatch);
        return number;
    }
};

struct ToText
{
    QString operator()(std::monostate) const { throw RuntimeError(ErrorNumber::InvalidUseOfNull); }
    QString operator()(std::int64_t number) const { return QString::number(number); }
    QString operator()(const QString &text) const { return text; }

    QString operator()(double number) const
    {
        return QString::number(number, 'g', QLocale::FloatingPointShortest);
    }

    QString operator()(bool truth) const { return truth ? u"True"_s : u"False"_s; }
};

} // namespace

std::int16_t Value::toInteger() const
{
    if (const auto *number = std::get_if<std::int64_t>(&m_value))
        return platform::narrowed<std::int16_t>(*number);
    return platform::roundedHalfToEven<std::int16_t>(toDouble());
}

double Value::toDouble() const
{
    return visit(ToDouble());
}

QString Value::toText() const
{
    return visit(ToText());
}

bool Value::toBool() const
{
    return toDouble() != 0;
}

} // namespace store
