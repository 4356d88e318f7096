#include "tests/store/StoreTest.h"

#include <sys/stat.h>
#include <unistd.h>

using Permissions = StoreTest;

TEST_F(Permissions, FilesThatMustNotBeWrittenCanBeReadAndOthersAreDenied)
{
    connection.close();
    const QByteArray path = QFile::encodeName(databasePath());
    chmod(QFile::encodeName(programFolder()).constData(), 0755);
    chmod(QFile::encodeName(folder.filePath(u"database"_s)).constData(), 0555);
    const uid_t user = geteuid(); // permissions bind ordinary users only
    for (const auto &[permissions, error] :
         {std::pair(mode_t{0444}, std::optional<ErrorNumber>()), {mode_t{0}, PermissionDenied}}) {
        chmod(path.constData(), permissions);
        ASSERT_EQ(user == 0 ? seteuid(65534) : 0, 0);
        EXPECT_EQ(errorOf([&] { connect(); }), error);
        if (!error) {
            EXPECT_EQ(slotRows(), QStringList());
            EXPECT_EQ(errorOf([&] { addSlot(u"Hourly"_s, 1, 1); }), DatabaseEngine);
        }
        connection.close();
        ASSERT_EQ(seteuid(user), 0);
    }
    chmod(QFile::encodeName(folder.filePath(u"database"_s)).constData(), 0755);
}
