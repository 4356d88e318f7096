#include "tests/store/StoreTest.h"

using store::Value;

// What a conversion to text gives, or the message of the error that it raises.
template <typename Conversion>
static QString outcome(Conversion convert)
{
    QString text;
    return messageOf([&] { text = convert(); }) + text;
}

TEST(Value, ConvertsOrRaises)
{
    // a value, and what it gives as an integer, a number, a text and a truth
    const std::pair<Value, QString> cases[] = {
        {Value(),
         u"Invalid use of Null|Invalid use of Null|Invalid use of Null|Invalid use of Null"_s},
        {-32768, u"-32768|-32768|-32768|True"_s},
        {32768, u"Overflow|32768|32768|True"_s},
        {9'000'000'000, u"Overflow|9000000000|9000000000|True"_s},
        {0, u"0|0|0|False"_s},
        {0.5, u"0|0.5|0.5|True"_s},
        {3.5, u"4|3.5|3.5|True"_s},
        {40000.25, u"Overflow|40000.25|40000.25|True"_s},
        {0.1 + 0.2, u"0|0.3|0.30000000000000004|True"_s},
        {1e300, u"Overflow|1e+300|1e+300|True"_s},
        {u" 1.5"_s, u"2|1.5| 1.5|True"_s},
        {u"0"_s, u"0|0|0|False"_s},
        {u"70000"_s, u"Overflow|70000|70000|True"_s},
        {u""_s, u"Type mismatch|Type mismatch||Type mismatch"_s},
        {u"12 uur"_s, u"Type mismatch|Type mismatch|12 uur|Type mismatch"_s},
        {u"inf"_s, u"Type mismatch|Type mismatch|inf|Type mismatch"_s},
        {true, u"-1|-1|True|True"_s},
        {false, u"0|0|False|False"_s},
    };
    for (const auto &[value, expected] : cases) {
        const QStringList given = {
            outcome([&v = value] { return QString::number(v.toInteger()); }),
            outcome([&v = value] { return QString::number(v.toDouble(), 'g', 10); }),
            outcome([&v = value] { return v.toText(); }),
            outcome([&v = value] { return v.toBool() ? u"True"_s : u"False"_s; }),
        };
        EXPECT_EQ(given.join(u'|'), expected);
    }
}
