#include "store/Value.h"
#include "tests/fuzz/Fuzz.h"

#include <cmath>
#include <cstring>

using store::Value;

static void convert(const Value &value)
{
    fuzz::allowingErrors([&] { value.toText(); });
    fuzz::allowingErrors([&] { value.toBoolean(); });
    fuzz::allowingErrors(
        [&] { fuzz::require(std::abs(value.toDouble() - value.toInteger()) <= 0.5); });
}

// A number that was written is read back as the same number.
static void requireRoundTrip(double number)
{
    if (std::isfinite(number))
        fuzz::require(Value(Value(number).toText()).toDouble() == number);
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    convert(fuzz::text(data, size));
    double number = 0;
    if (size < sizeof number)
        return 0;
    std::memcpy(&number, data, sizeof number);
    convert(number);
    requireRoundTrip(number);
    std::int64_t whole = 0;
    std::memcpy(&whole, data, sizeof whole);
    convert(whole);
    return 0;
}
