#include "store/Value.h"

#include "tests/support/Test.h"

#include <optional>

using store::Value;

namespace {

// Each conversion's outcome: what it gives, or the error that it raises.
struct Conversions
{
    Value value;
    std::optional<std::int16_t> integer;
    std::optional<double> floating;
    std::optional<QString> text;
    std::optional<ErrorNumber> error; ///< of the conversions without an outcome
};

template <typename Conversion, typename Expected>
void expectConversion(Conversion convert, const std::optional<Expected> &expected,
                      std::optional<ErrorNumber> error)
{
    if (expected)
        EXPECT_EQ(convert(), *expected);
    else
        EXPECT_EQ(errorOf(convert), error);
}

} // namespace

TEST(Value, ConvertsOrRaises)
{
    const auto null = InvalidUseOfNull;
    const auto mismatch = TypeMismatch;
    const auto overflow = Overflow;
    const Conversions cases[] = {
        {Value(), {}, {}, {}, null},
        {7, 7, 7.0, u"7"_s, {}},
        {-32768, -32768, -32768.0, u"-32768"_s, {}},
        {32768, {}, 32768.0, u"32768"_s, overflow},
        {9'000'000'000, {}, 9e9, u"9000000000"_s, overflow},
        {15.0, 15, 15.0, u"15"_s, {}},
        {2.5, 2, 2.5, u"2.5"_s, {}},
        {3.5, 4, 3.5, u"3.5"_s, {}},
        {40000.25, {}, 40000.25, u"40000.25"_s, overflow},
        {u"12"_s, 12, 12.0, u"12"_s, {}},
        {u" 1.5"_s, 2, 1.5, u" 1.5"_s, {}},
        {u"70000"_s, {}, 70000.0, u"70000"_s, overflow},
        {u""_s, {}, {}, u""_s, mismatch},
        {u"12 uur"_s, {}, {}, u"12 uur"_s, mismatch},
        {u"inf"_s, {}, {}, u"inf"_s, mismatch},
        {Boolean::True, -1, -1.0, u"True"_s, {}},
        {Boolean::False, 0, 0.0, u"False"_s, {}},
    };
    for (const Conversions &c : cases) {
        SCOPED_TRACE(c.text.value_or(u"empty"_s).toStdString());
        expectConversion([&] { return c.value.toInteger(); }, c.integer, c.error);
        expectConversion([&] { return c.value.toDouble(); }, c.floating, c.error);
        expectConversion([&] { return c.value.toText(); }, c.text, c.error);
    }
}

TEST(Value, IsTrueForAnyNumberButZero)
{
    for (const Value &value : {Value(1), Value(-1), Value(0.5), Value(u"2"_s)})
        EXPECT_EQ(value.toBoolean(), Boolean::True);
    for (const Value &value : {Value(0), Value(0.0), Value(u"0"_s)})
        EXPECT_EQ(value.toBoolean(), Boolean::False);
    EXPECT_EQ(errorOf([] { Value().toBoolean(); }), InvalidUseOfNull);
}
