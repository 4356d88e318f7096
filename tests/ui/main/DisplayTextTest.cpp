#include "ui/main/DisplayText.h"

#include "tests/support/Test.h"

using namespace ui;

TEST(DisplayText, FollowsTheLocale)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale dutch(QLocale::Dutch, QLocale::Netherlands);
    EXPECT_EQ(kilobytesText(2'147'483'647, english), u"2147483.647"_s);
    EXPECT_EQ(kilobytesText(2'147'483'647, dutch), u"2147483,647"_s);
    EXPECT_EQ(speedText(10'000, english), u"10,000.00"_s);
    EXPECT_EQ(speedText(10'000, dutch), u"10.000,00"_s);
    const auto afternoon = moment(2026, 3, 4, 15, 7, 9);
    EXPECT_EQ(momentText(afternoon, dutch), u"04-03-2026 15:07:09"_s);
    const QString format =
        english.timeFormat(QLocale::ShortFormat); // some data has U+202F before "AP"
    const QChar blank = format[format.lastIndexOf(u'm') + 1];
    EXPECT_TRUE(blank.isSpace());
    EXPECT_EQ(momentText(afternoon, english), u"3/4/26 3:07:09"_s + blank + u"PM"_s);
}
