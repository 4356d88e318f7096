#include "ui/main/SpcHeader.h"

#include "tests/support/Test.h"

using namespace ui;

TEST(SpcHeader, SecondsFollowTheirRulesInBothLocales)
{
    const std::tuple<qint64, QString, QString> cases[] = {
        // size, with a decimal comma, with a decimal point
        {1'920'000, u"59.99"_s, u"59.99672.00"_s},
        {3'840'209, u"120.00"_s, u"120.00"_s},
        {395'077'248, u"12345,49.00"_s, u"12345.49"_s},
        {39'507'725, u"1234.54"_s, u"1234.549.00"_s},
        {16'001, u"0.50"_s, u"0.500003.00"_s},
        {0, u"0.00"_s, u"0.00"_s},
    };
    for (const auto &[size, comma, point] : cases) {
        EXPECT_EQ(secondsText(size, u','), comma) << size;
        EXPECT_EQ(secondsText(size, u'.'), point) << size;
    }
}
