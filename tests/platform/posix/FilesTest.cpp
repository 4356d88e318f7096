#include "platform/Files.h"

#include "tests/support/Test.h"
#include "tests/support/posix/FileSizeLimit.h"

using namespace platform;

TEST(FilesElsewhere, AreMovedWithoutLeftovers)
{
    const QTemporaryDir root;
    const QTemporaryDir memory(u"/dev/shm/files-test-XXXXXX"_s);
    if (!memory.isValid())
        GTEST_SKIP() << "no second file system";
    const QString source = root.filePath(u"file"_s);
    const QString moved = memory.filePath(u"moved"_s);
    makeFile(source, "new");
    moveFile(source, moved);
    EXPECT_EQ(fileBytes(moved), "new");
    EXPECT_EQ(filesIn(root.path()), QStringList());
    EXPECT_EQ(filesIn(memory.path()), QStringList{u"moved"_s});
    makeFile(source, "newer");
    EXPECT_EQ(errorOf([&] { moveFile(source, moved); }), FileAlreadyExists);
    EXPECT_EQ(fileBytes(moved) + fileBytes(source), "newnewer");
}

TEST(FilesOnAFullDisk, TakeAllThatIsAppendedOrNothing)
{
    const QTemporaryDir root;
    const QString log = root.filePath(u"log"_s);
    makeFile(log, "older");
    const FileSizeLimit limit(8);
    EXPECT_EQ(errorOf([&] { appendToFile(log, "and wiser"); }), DiskFull);
    EXPECT_EQ(fileBytes(log), "older");
}
