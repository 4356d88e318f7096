#include "app/Module1.h"
#include "tests/support/Test.h"

using namespace app;

static const QString native = QDir::separator();

TEST(Folders, EndInOneSeparatorOfTheirStyle)
{
    const std::pair<QString, QString> cases[] = {
        {u"D:\\"_s, u"D:\\"_s},
        {u"D:\\Audio"_s, u"D:\\Audio\\"_s},
        {u"D:\\Audio\\"_s, u"D:\\"_s}, // odd, and required
        {u"D:"_s, u"D:\\"_s},
        {u"\\\\server\\share"_s, u"\\\\server\\share\\"_s},
        {u"\\\\server\\share\\"_s, u"\\\\s"_s},
        {u"  /srv/audio  "_s, u"/srv/audio"_s + native},
        {u"/srv/audio"_s + native + native, u"/srv/audio"_s + native},
        {u"/"_s, native == u"/"_s ? native : u"/"_s + native},
        {u"/srv/back\\slash"_s, u"/srv/back\\slash"_s + native},
        {u"?"_s, u"?"_s + native},
        {u""_s, u""_s},
    };
    for (const auto &[setting, folder] : cases) {
        sBestemmingsmap = setting;
        sSPCmap = setting;
        EXPECT_EQ(DestinationFolder(), folder);
        EXPECT_EQ(SpcFolder(), folder);
    }
}

TEST(Folders, TheTrimmedTextGoesBackIntoTheSetting)
{
    sBestemmingsmap = u"  /srv"_s;
    DestinationFolder();
    EXPECT_EQ(sBestemmingsmap.text(), u"/srv"_s + QString(196, u' '));
}

TEST(Folders, AChosenFolderIsUsedWithoutItsNulWhichTheSettingKeeps)
{
    sSPCmap = u"  /srv/spc"_s + QChar::Null;
    EXPECT_EQ(SpcFolder(), u"/srv/spc"_s + native);
    EXPECT_EQ(sSPCmap.text(), u"/srv/spc"_s + QChar::Null + QString(191, u' '));
    EXPECT_EQ(SpcFolder(), u"/srv/spc"_s + native);
}

TEST(AddPortToUrl, InsertsThePortBeforeTheFirstSlashFromTheEighthCharacter)
{
    const std::pair<QString, QString> cases[] = {
        {u"http://station.example/a/b.mp3"_s, u"http://station.example:80/a/b.mp3"_s},
        {u"http://station.example:8000/a"_s, u"http://station.example:8000:80/a"_s},
        {u"https://station.example/a"_s, u"https:/:80/station.example/a"_s},
        {u"http://h/"_s, u"http://h:80/"_s},
        {u"http:///a"_s, u"http://:80/a"_s},
        {u"1234567/"_s, u"1234567:80/"_s},
    };
    for (const auto &[address, result] : cases)
        EXPECT_EQ(AddPortToUrl(address), result);
    for (const QString &address :
         {u"http://station.example"_s, u""_s, u"/"_s, u"a/b/c"_s, QString(2000, u'x')})
        EXPECT_EQ(errorOf([&] { AddPortToUrl(address); }), InvalidProcedureCall)
            << address.toStdString();
}
