#pragma once

#include "platform/RuntimeError.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

// Arithmetic whose failure the program's users can meet, and which C++ does not report by itself.
namespace platform {

/// The value as a Target. Raises Overflow when it does not fit.
template <std::integral Target>
Target narrowed(std::integral auto value)
{
    if (!std::in_range<Target>(value))
        throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<Target>(value);
}

/// The product in 32 bits. Raises Overflow.
inline std::int32_t product(std::int32_t a, std::int32_t b)
{
    return narrowed<std::int32_t>(std::int64_t{a} * b);
}

/// The difference in 32 bits. Raises Overflow.
inline std::int32_t difference(std::int32_t a, std::int32_t b)
{
    return narrowed<std::int32_t>(std::int64_t{a} - b);
}

/// The quotient of two doubles. Raises DivisionByZero.
inline double quotient(double dividend, double divisor)
{
    if (divisor == 0)
        throw RuntimeError(ErrorNumber::DivisionByZero);
    return dividend / divisor;
}

/// The nearest whole number, a half going to the even neighbour. Raises Overflow when it does not
/// fit into a Target.
template <std::integral Target>
Target roundedHalfToEven(double value)
{
    static_assert(sizeof(Target) <= 4, "wider bounds are not exact doubles");
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Target>::min() &&
          rounded <= std::numeric_limits<Target>::max()))
        throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<Target>(rounded);
}

} // namespace platform
