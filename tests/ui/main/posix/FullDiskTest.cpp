#include "tests/support/posix/FileSizeLimit.h"
#include "tests/ui/main/SpcCycle.h"

// A limit on the size of written files stands for a full disk, and meets the batch's process too.
TEST_F(SpcCycle, AFullDiskLeavesTheOldFilesWhole)
{
    const std::tuple<rlim_t, rlim_t, bool> cases[] = {
        {200, 200, false}, {1000, 1000, false}, {RLIM_INFINITY, 1000, true}};
    openForm();
    for (const auto &[forHeaderAndBatch, forCopy, makesSpcFile] : cases) {
        makeFile(destination(u"news.spc"_s), "old");
        makeFile(spcFolder(u"news.spc"_s), "old");
        makeFile(destination(u"latest.mp2"_s), audio);
        {
            const FileSizeLimit limit(forHeaderAndBatch);
            form->WriteSpcHeader();
            waitForBatch();
        }
        {
            const FileSizeLimit limit(forCopy);
            tick(watch());
        }
        EXPECT_EQ(QFile(destination(u"news.spc"_s)).size(), makesSpcFile ? 256 + audio.size() : 3);
        EXPECT_EQ(fileBytes(spcFolder(u"news.spc"_s)), "old");
        EXPECT_EQ(destinationFiles(), QStringList{u"news.spc"_s});
        EXPECT_FALSE(log().isEmpty());
        expectNextArmed();
    }
}

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
