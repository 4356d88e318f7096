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
