#include "tests/ui/main/SpcCycle.h"

#include <QLocale>

// Runs in Dutch as well: the header's seconds have the user's decimal mark until they are cut.
TEST_F(SpcCycle, ABatchThatCannotBeStartedCountsAsEnded)
{
    openForm();
    makeFile(destination(u"latest.mp2"_s), audio);
    lookUpBeforeDue();
    const QByteArray programs = qgetenv("PATH");
    qputenv("PATH", "/none");
    form->WriteSpcHeader();
    qputenv("PATH", programs);
    EXPECT_EQ(log().size(), 1);
    EXPECT_TRUE(fileBytes(destination(u"tijdelijk.txt"_s))
                    .contains(QLocale::system().decimalPoint() == u","_s
                                  ? "SECONDS: 1.19\r\n"
                                  : "SECONDS: 1.199934.00\r\n"));
    EXPECT_TRUE(watch()->isActive());
    tick(watch());
    EXPECT_EQ(destinationFiles(), QStringList());
    expectNextArmed();
}

// The log is a program that runs, which not even an administrator may write.
TEST_F(MainFormTest, ALogThatMayOnlyBeReadIsShown)
{
    QFile::link(QCoreApplication::applicationFilePath(), app::logFilePath());
    openForm();
    trigger(u"mnuLogbestand"_s);
    EXPECT_EQ(host.openedInEditor, QStringList{app::logFilePath()});
    EXPECT_EQ(host.messages, QStringList());
}
