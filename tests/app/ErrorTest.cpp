#include "app/ErrorReport.h"
#include "app/ErrorTrap.h"
#include "app/Module1.h"
#include "tests/support/Test.h"

using namespace app;

static void fail()
{
    throw platform::RuntimeError(FileNotFound);
}

TEST(ErrorTrap, LogsAndGoesOnEvenWithoutALog)
{
    const FakeHost host;
    const ErrorTrap trap;
    EXPECT_FALSE(trap.step(fail));
    QDir().mkpath(host.programFolder());
    EXPECT_FALSE(trap.step(fail));
    EXPECT_TRUE(trap.step([] {}));
    EXPECT_TRUE(fileBytes(logFilePath()).endsWith(" - File not found\r\n"));
    EXPECT_EQ(errorOf([] { ErrorTrap(FileNotFound).step(fail); }), FileNotFound);
    EXPECT_FALSE(ErrorTrap(PathNotFound).step(fail));
}

TEST(ErrorReport, ComesToRestTellsOnceAndEnds)
{
    FakeHost host;
    QDir().mkpath(host.programFolder());
    int rested = 0;
    beforeErrorReport([&] { ++rested; });
    host.onMessage = [] { handleEvent(fail); };
    handleEvent([] { throw std::runtime_error("unforeseen"); });
    EXPECT_EQ(rested, 1);
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 51: unforeseen"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_EQ(fileBytes(logFilePath()).count('\n'), 1);
}
