#include "ui/main/DisplayText.h"

#include "tests/support/Test.h"

using namespace ui;

TEST(DisplayText, FollowsTheLocale)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale dutch(QLocale::Dutch, QLocale::Netherlands);
    const auto kilobytes = [&](qint32 bytes) {
        return kilobytesText(bytes, english) + u" | "_s + kilobytesText(bytes, dutch);
    };
    EXPECT_EQ(kilobytes(1), u"0.001 | 0,001"_s);
    EXPECT_EQ(kilobytes(1500), u"1.5 | 1,5"_s);
    EXPECT_EQ(kilobytes(100'000'000), u"100000 | 100000"_s);
    EXPECT_EQ(kilobytes(2'147'483'647), u"2147483.647 | 2147483,647"_s);

    const auto speed = [&](double kilobytesPerSecond) {
        return speedText(kilobytesPerSecond, english) + u" | "_s +
               speedText(kilobytesPerSecond, dutch);
    };
    EXPECT_EQ(speed(98.7654), u"98.77 | 98,77"_s);
    EXPECT_EQ(speed(10'000), u"10,000.00 | 10.000,00"_s);
    EXPECT_EQ(speed(-1.25), u"-1.25 | -1,25"_s);

    const auto afternoon = moment(2026, 3, 4, 15, 7, 9);
    EXPECT_EQ(momentText(afternoon, dutch), u"04-03-2026 15:07:09"_s);
    EXPECT_EQ(momentText(afternoon, english), u"3/4/26 3:07:09 PM"_s);
    EXPECT_EQ(twoDigits(7) + twoDigits(59), u"0759"_s);
}
