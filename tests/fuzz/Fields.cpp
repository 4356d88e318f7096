#include "store/Value.h"
#include "tests/fuzz/Fuzz.h"

#include <cmath>
#include <cstring>

using store::Value;

static void convert(const Value &value)
{
    fuzz::allowingErrors([&] { value.toText(); });
    fuzz::allowingErrors([&] { value.toBool(); });
    fuzz::allowingErrors(
        [&] { fuzz::require(std::abs(value.toDouble() - value.toInteger()) <= 0.5); });
}

// A number that was written is read back as the same number.
void fuzz::meet(const QByteArray &input)
{
    convert(QString::fromUtf8(input));
    double number = 0;
    std::int64_t whole = 0;
    if (static_cast<std::size_t>(input.size()) < sizeof number)
        return;
    std::memcpy(&number, input.data(), sizeof number);
    std::memcpy(&whole, input.data(), sizeof whole);
    convert(number);
    convert(whole);
    require(!std::isfinite(number) || Value(Value(number).toText()).toDouble() == number);
}
