#include "app/Module1.h"

#include "app/DownloadRecord.h"
#include "tests/support/Test.h"

using namespace app;

TEST(Log, AppendsStampedLinesToTheFileInTheProgramFolderOrRaises)
{
    FakeHost host;
    EXPECT_EQ(errorOf([] { WriteLog(u"no folder"_s); }), PathNotFound);
    QDir().mkpath(host.programFolder());
    host.clock = moment(2007, 3, 5, 9, 4, 5);
    WriteLog(u"Hourly - café"_s);
    WriteLog(u"on\r\none\tline\x85"_s);
    host.clock = moment(2010, 12, 31, 23, 59, 59);
    WriteLog(u""_s);
    EXPECT_EQ(fileBytes(host.programFolder() + u"/OstravelinLog.txt"_s),
              u"05-03-07 09:04:05 - Hourly - café\r\n"
              "05-03-07 09:04:05 - on  one line \r\n31-12-10 23:59:59 - \r\n"_s.toLocal8Bit());
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
    writeSetting(spcFolderKey, QString(300, u'd'));
    EXPECT_EQ(ReadIni(settingsFileName(), u"Bestandsmappen"_s, u"SPCmap"_s, {}),
              QString(254, u'd'));
}

TEST(FixedText, NeverSplitsACharacter)
{
    EXPECT_EQ((FixedText<4>() = u"abc🎵"_s).text(), u"abc "_s);
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
        {u"/srv/audio"_s + native + native, u"/srv/audio"_s + native},
        {u"/"_s, native == u"/"_s ? native : u"/"_s + native},
        {u"/srv/back\\slash"_s, u"/srv/back\\slash"_s + native},
        {u""_s, u""_s},
        {u"  /srv/audio  "_s, u"/srv/audio"_s + native},
        {u"  /srv"_s + QChar::Null, u"/srv"_s + native},
    };
    for (const auto &[setting, folder] : cases) {
        sBestemmingsmap = sSPCmap = FixedText<200>() = setting;
        EXPECT_EQ(DestinationFolder(), folder);
        EXPECT_EQ(SpcFolder(), folder);
    }
    EXPECT_FALSE(copiesSpcFiles());
    sBestemmingsmap = u"/SRV"_s; // compared as texts
    EXPECT_TRUE(copiesSpcFiles());
    // Trimmed in the setting, too, but with its NUL.
    EXPECT_EQ(sSPCmap.text(), u"/srv"_s + QChar::Null + QString(195, u' '));
}

TEST(AddPortToUrl, InsertsThePortBeforeTheFirstSlashFromTheEighthCharacter)
{
    EXPECT_EQ(AddPortToUrl(u"http://a.example:8000/b/c"_s), u"http://a.example:8000:80/b/c"_s);
    EXPECT_EQ(AddPortToUrl(u"https://a.example/b"_s), u"https:/:80/a.example/b"_s);
    EXPECT_EQ(errorOf([] { AddPortToUrl(u"http://a.example"_s); }), InvalidProcedureCall);
}

TEST(DownloadRecord, TakesATasksTextsAndTheLastSegmentOfItsAddress)
{
    DownloadRecord record;
    for (const auto &[address, name] :
         {std::pair(u"  http://h/a/hourly%20.mp3 "_s, u"hourly%20.mp3"_s),
          {u"no slash keeps the last name"_s, u"hourly%20.mp3"_s},
          {u"http://h/folder/"_s, u""_s}}) {
        record.takeTask(u"Kid's hour"_s, address, u" kids .mp3 "_s);
        EXPECT_EQ((QStringList{record.Opdracht, record.DownloadAdres, record.Filenaam,
                               record.spcFilenaam}),
                  (QStringList{u"Kid's hour"_s, address.trimmed(), name, u" kids .mp3 "_s}));
    }
}
