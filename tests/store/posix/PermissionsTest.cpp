#include "tests/store/StoreTest.h"

#include <sys/stat.h>
#include <unistd.h>

using Permissions = StoreTest;

// File permissions bind ordinary users only.
static void asOrdinaryUser(const std::function<void()> &act)
{
    const uid_t user = geteuid();
    ASSERT_EQ(user == 0 ? seteuid(65534) : 0, 0);
    act();
    ASSERT_EQ(seteuid(user), 0);
}

TEST_F(Permissions, FilesThatMustNotBeWrittenCanBeReadAndOthersAreDenied)
{
    connection.close();
    chmod(QFile::encodeName(programFolder()).constData(), 0755);
    chmod(QFile::encodeName(folder.filePath(u"database"_s)).constData(), 0555);
    QFile::setPermissions(databasePath(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    asOrdinaryUser([&] {
        for (const auto mode : {store::OpenMode::ReadWrite, store::OpenMode::ReadOnly}) {
            connection.open(store::taskDatabase(programFolder()), mode);
            EXPECT_EQ(slotRows(), QStringList());
            EXPECT_EQ(errorOf([&] { addSlot(u"Hourly"_s, 1, 1); }), DatabaseEngine);
            connection.close();
        }
    });
    QFile::setPermissions(databasePath(), {});
    asOrdinaryUser([&] { EXPECT_EQ(errorOf([&] { connect(); }), PermissionDenied); });
    chmod(QFile::encodeName(folder.filePath(u"database"_s)).constData(), 0755);
}
