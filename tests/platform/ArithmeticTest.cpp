#include "platform/Arithmetic.h"

#include "platform/Text.h"
#include "tests/support/Test.h"

using namespace platform;

TEST(Arithmetic, ThirtyTwoBitsOverflowOnBothSides)
{
    EXPECT_EQ(product(21'474'836, 100), 2'147'483'600);
    EXPECT_EQ(errorOf([] { product(21'474'837, 100); }), Overflow);
    EXPECT_EQ(difference(5, -2'147'483'642), 2'147'483'647);
    EXPECT_EQ(errorOf([] { difference(5, -2'147'483'643); }), Overflow);
    EXPECT_EQ(errorOf([] { difference(-2'147'483'647, 2); }), Overflow);
}

TEST(Arithmetic, DivisionByZeroRaises)
{
    EXPECT_DOUBLE_EQ(quotient(1, 4), 0.25);
    EXPECT_EQ(errorOf([] { quotient(1, 0); }), DivisionByZero);
    EXPECT_EQ(errorOf([] { quotient(0, 0); }), DivisionByZero);
}

TEST(Arithmetic, HalvesRoundToTheEvenNeighbour)
{
    for (const auto &[value, rounded] : {std::pair{12.5, 12}, {13.5, 14}, {-0.5, 0}, {0.51, 1}})
        EXPECT_EQ(roundedHalfToEven<std::int16_t>(value), rounded) << value;
    EXPECT_EQ(errorOf([] { roundedHalfToEven<std::int16_t>(32767.5); }), Overflow);
    EXPECT_EQ(errorOf([] { roundedHalfToEven<std::int32_t>(std::nan("")); }), Overflow);
}

TEST(Text, OnlyBlanksAreTrimmed)
{
    EXPECT_EQ(trimmedBlanks(u"  a b\t "_s), u"a b\t"_s);
    EXPECT_EQ(trimmedBlanks(u"   "_s), u""_s);
}
