#include "app/Module1.h"
#include "tests/support/Test.h"

using namespace app;

static QString settingsPath(const FakeHost &host)
{
    return host.settingsDirectory() + u"/Ostravelin.ini"_s;
}

TEST(Settings, AreReadAndQuestionMarksWhenMissing)
{
    FakeHost host;
    makeFile(settingsPath(host), "[bestandsmappen]\nbestemmingsmap=" + QByteArray(300, 'd') +
                                     "\nSPCmap=/spc\n[Opties]\nSPC=10\npreXP=1\n");
    LoadSettings();
    EXPECT_EQ(sBestemmingsmap.text(), QString(200, u'd'));
    EXPECT_EQ(sSPCmap.text(), u"/spc"_s + QString(196, u' '));
    EXPECT_EQ(sSPC.text(), u"1"_s);
    EXPECT_EQ(sPreXP.text(), u"1"_s);

    makeFile(settingsPath(host), {});
    LoadSettings();
    EXPECT_EQ(sBestemmingsmap.text(), u"?"_s + QString(199, u' '));
    EXPECT_EQ(sSPC.text(), u"?"_s);
}

TEST(Settings, AWrittenValueKeepsTheLineBreakThatTheCallersVariableLoses)
{
    FakeHost host;
    makeFile(settingsPath(host), {});
    QString value = u"a\r\nb"_s;
    WriteIni(settingsFileName(), u"Bestandsmappen"_s, u"SPCmap"_s, value);
    EXPECT_EQ(value, u"a  b"_s);
    EXPECT_EQ(fileBytes(settingsPath(host)), "[Bestandsmappen]\r\nSPCmap=a\r\nb\r\n");
    EXPECT_EQ(ReadIni(settingsFileName(), u"Bestandsmappen"_s, u"SPCmap"_s, u"?"_s), u"a"_s);
}

TEST(FixedText, CutsPadsAndNeverSplitsACharacter)
{
    FixedText<4> text;
    EXPECT_EQ(text.text(), u"    "_s);
    text = u"abcdef"_s;
    EXPECT_EQ(text.text(), u"abcd"_s);
    text = u"abc🎵"_s;
    EXPECT_EQ(text.text(), u"abc "_s);
}
