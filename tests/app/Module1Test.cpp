#include "app/Module1.h"

#include "tests/support/Test.h"

using namespace app;

TEST(Log, AppendsStampedLinesToTheFileInTheProgramFolderOrRaises)
{
    FakeHost host;
    EXPECT_THROW(WriteLog(u"no folder"_s), platform::RuntimeError);
    QDir().mkpath(host.programFolder());
    host.clock = moment(2007, 3, 5, 9, 4, 5);
    WriteLog(u"Hourly - café"_s);
    host.clock = moment(2010, 12, 31, 23, 59, 59);
    WriteLog(u""_s);
    EXPECT_EQ(fileBytes(host.programFolder() + u"/OstravelinLog.txt"_s),
              u"05-03-07 09:04:05 - Hourly - café\r\n31-12-10 23:59:59 - \r\n"_s.toLocal8Bit());
}

TEST(Settings, AreReadAndQuestionMarksWhenMissing)
{
    const FakeHost host;
    const auto load = [&](const QByteArray &file) {
        makeFile(host.settingsDirectory() + u"/Ostravelin.ini"_s, file);
        LoadSettings();
        return sBestemmingsmap.text() + sSPCmap.text() + sSPC.text() + sPreXP.text();
    };
    const QString blanks(199, u' ');
    EXPECT_EQ(load("[bestandsmappen]\nbestemmingsmap=" + QByteArray(300, 'd') +
                   "\nSPCmap=s\n[Opties]\nSPC=10\npreXP=2\n"),
              QString(200, u'd') + u's' + blanks + u"12"_s);
    EXPECT_EQ(load({}), u'?' + blanks + u'?' + blanks + u"??"_s);
}

TEST(Settings, AWrittenValueKeepsTheLineBreakThatTheCallersVariableLoses)
{
    const FakeHost host;
    QString value = u"a\r\nb"_s;
    QDir().mkpath(host.settingsDirectory());
    WriteIni(settingsFileName(), u"Bestandsmappen"_s, u"SPCmap"_s, value);
    EXPECT_EQ(value, u"a  b"_s);
    EXPECT_EQ(fileBytes(host.settingsDirectory() + u"/Ostravelin.ini"_s),
              "[Bestandsmappen]\r\nSPCmap=a\r\nb\r\n");
    EXPECT_EQ(ReadIni(settingsFileName(), u"Bestandsmappen"_s, u"SPCmap"_s, u"?"_s), u"a"_s);
}

TEST(FixedText, CutsPadsAndNeverSplitsACharacter)
{
    FixedText<4> text;
    EXPECT_EQ(text.text(), u"    "_s);
    for (const auto &[assigned, held] : {std::pair(u"abcdef"_s, u"abcd"_s), {u"abc🎵"_s, u"abc "_s}})
        EXPECT_EQ((text = assigned).text(), held);
}

TEST(Folders, EndInOneSeparatorOfTheirStyle)
{
    const QString native = QDir::separator();
    const std::pair<QString, QString> cases[] = {
        {u"D:\\"_s, u"D:\\"_s},
        {u"D:\\Audio"_s, u"D:\\Audio\\"_s},
        {u"D:\\Audio\\"_s, u"D:\\"_s}, // odd, and required
        {u"D:"_s, u"D:\\"_s},
        {u"\\\\server\\share"_s, u"\\\\server\\share\\"_s},
        {u"\\\\server\\share\\"_s, u"\\\\s"_s},
        {u"/srv/audio"_s + native + native, u"/srv/audio"_s + native},
        {u"/"_s, native == u"/"_s ? native : u"/"_s + native},
        {u"/srv/back\\slash"_s, u"/srv/back\\slash"_s + native},
        {u"?"_s, u"?"_s + native},
        {u""_s, u""_s},
        {u"  /srv/audio  "_s, u"/srv/audio"_s + native},
        {u"  /srv"_s + QChar::Null, u"/srv"_s + native},
    };
    for (const auto &[setting, folder] : cases) {
        sBestemmingsmap = sSPCmap = FixedText<200>() = setting;
        EXPECT_EQ(DestinationFolder(), folder);
        EXPECT_EQ(SpcFolder(), folder);
        EXPECT_EQ(SpcFolder(), folder);
    }
    // Trimmed in the setting, too, but with its NUL.
    EXPECT_EQ(sSPCmap.text(), u"/srv"_s + QChar::Null + QString(195, u' '));
}

TEST(AddPortToUrl, InsertsThePortBeforeTheFirstSlashFromTheEighthCharacter)
{
    const std::pair<QString, QString> cases[] = {
        {u"http://station.example/a/b.mp3"_s, u"http://station.example:80/a/b.mp3"_s},
        {u"http://station.example:8000/a"_s, u"http://station.example:8000:80/a"_s},
        {u"https://station.example/a"_s, u"https:/:80/station.example/a"_s},
        {u"http:///a"_s, u"http://:80/a"_s},
        {u"1234567/"_s, u"1234567:80/"_s},
    };
    for (const auto &[address, result] : cases)
        EXPECT_EQ(AddPortToUrl(address), result);
    for (const QString &address : {u"http://station.example"_s, u""_s, u"a/b/c"_s})
        EXPECT_EQ(errorOf([&] { AddPortToUrl(address); }), InvalidProcedureCall);
}
