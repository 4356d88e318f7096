#include "ui/main/DisplayText.h"

#include "tests/support/Test.h"

using namespace ui;

static const QLocale english(QLocale::English, QLocale::UnitedStates);
static const QLocale dutch(QLocale::Dutch, QLocale::Netherlands);

TEST(DisplayText, KilobytesAreShortestAndUngrouped)
{
    const std::tuple<qint32, QString, QString> cases[] = {
        {123456, u"123.456"_s, u"123,456"_s}, {1234567, u"1234.567"_s, u"1234,567"_s},
        {1500, u"1.5"_s, u"1,5"_s},           {100'000'000, u"100000"_s, u"100000"_s},
        {1, u"0.001"_s, u"0,001"_s},          {2'147'483'647, u"2147483.647"_s, u"2147483,647"_s},
    };
    for (const auto &[bytes, inEnglish, inDutch] : cases) {
        EXPECT_EQ(kilobytesText(bytes, english), inEnglish);
        EXPECT_EQ(kilobytesText(bytes, dutch), inDutch);
    }
}

TEST(DisplayText, SpeedHasTwoDecimalsAndGroups)
{
    const std::tuple<double, QString, QString> cases[] = {
        {98.7654, u"98.77"_s, u"98,77"_s},
        {10000, u"10,000.00"_s, u"10.000,00"_s},
        {0.5, u"0.50"_s, u"0,50"_s},
        {-1.25, u"-1.25"_s, u"-1,25"_s},
    };
    for (const auto &[speed, inEnglish, inDutch] : cases) {
        EXPECT_EQ(speedText(speed, english), inEnglish);
        EXPECT_EQ(speedText(speed, dutch), inDutch);
    }
}

TEST(DisplayText, MomentsShowTheShortDateAndTheSeconds)
{
    const auto afternoon = moment(2026, 3, 4, 15, 7, 9);
    EXPECT_EQ(momentText(afternoon, dutch), u"04-03-2026 15:07:09"_s);
    EXPECT_EQ(momentText(afternoon, english), u"3/4/26 3:07:09 PM"_s);
    EXPECT_EQ(momentText(moment(2026, 3, 4), dutch), u"04-03-2026 00:00:00"_s);
    EXPECT_EQ(twoDigits(7), u"07"_s);
    EXPECT_EQ(twoDigits(59), u"59"_s);
}
