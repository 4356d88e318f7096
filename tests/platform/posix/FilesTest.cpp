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

TEST(FilesOnAFullDisk, AreWrittenWholeOrStayAsTheyWere)
{
    const QTemporaryDir root;
    const QString old = root.filePath(u"old"_s);
    const QString large = root.filePath(u"large"_s);
    makeFile(old, "older");
    makeFile(large, "and wiser");
    const FileSizeLimit limit(8);
    EXPECT_EQ(errorOf([&] { appendToFile(old, "and wiser"); }), DiskFull);
    EXPECT_EQ(errorOf([&] { copyFile(large, old); }), PathFileAccess);
    EXPECT_EQ(fileBytes(old), "older");
    EXPECT_EQ(errorOf([&] { writeFile(old, "and wiser"); }), DiskFull);
    EXPECT_EQ(filesIn(root.path()), (QStringList{u"large"_s, u"old"_s}));
}
