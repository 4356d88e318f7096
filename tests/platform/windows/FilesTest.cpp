#include "platform/Files.h"

#include "tests/support/Test.h"

using namespace platform;

TEST(FilesInUse, StayAsTheyAreAndSoDoesWhatWasToReplaceThem)
{
    const QTemporaryDir root;
    const QString used = root.filePath(u"used"_s);
    const QString fresh = root.filePath(u"fresh"_s);
    makeFile(used, "used");
    makeFile(fresh, "fresh");
    QFile player(used);
    ASSERT_TRUE(player.open(QIODevice::ReadOnly));
    EXPECT_EQ(errorOf([&] { replaceFile(fresh, used); }), PermissionDenied);
    EXPECT_EQ(errorOf([&] { copyFile(fresh, used); }), PermissionDenied);
    EXPECT_EQ(errorOf([&] { deleteFile(used); }), PermissionDenied);
    EXPECT_EQ(player.readAll(), "used");
    EXPECT_EQ(fileBytes(fresh), "fresh");
    EXPECT_EQ(filesIn(root.path()), (QStringList{u"fresh"_s, u"used"_s}));
}
