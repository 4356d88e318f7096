#pragma once

#include <QString>

#include <concepts>
#include <cstdint>
#include <variant>

namespace store {

/// The value of one field of one row: empty, a whole number, a floating number, a text or a
/// Boolean. Conversions of an empty value raise InvalidUseOfNull, those of a text that is no number
/// raise TypeMismatch.
class Value
{
public:
    /// An empty value.
    Value() = default;
    template <std::integral Number>
        requires(!std::same_as<Number, bool>)
    Value(Number number)
        : m_value(std::int64_t{number})
    {}
    Value(double number)
        : m_value(number)
    {}
    Value(const QString &text)
        : m_value(text)
    {}
    Value(std::same_as<bool> auto truth)
        : m_value(truth)
    {}

    bool isEmpty() const { return std::holds_alternative<std::monostate>(m_value); }

    /// The number in 16 bits, fractions rounded half to even. A true Boolean is -1. Raises
    /// Overflow.
    std::int16_t toInteger() const;

    /// The number; a text is read in decimal form with a point. A true Boolean is -1.
    double toDouble() const;

    /// The text; numbers in their shortest decimal form, Booleans as "True" or "False".
    QString toText() const;

    /// Any number other than 0 is true.
    bool toBool() const;

    bool operator==(const Value &) const = default;

    /// Calls `visitor` with the value as it is held, std::monostate when it is empty.
    template <typename Visitor>
    decltype(auto) visit(Visitor &&visitor) const
    {
        return std::visit(std::forward<Visitor>(visitor), m_value);
    }

private:
    std::variant<std::monostate, std::int64_t, double, QString, bool> m_value;
};

} // namespace store
