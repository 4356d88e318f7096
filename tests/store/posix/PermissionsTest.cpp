#include "tests/store/StoreTest.h"

#include <sys/stat.h>
#include <unistd.h>

using Permissions = StoreTest;

namespace {

// File permissions bind ordinary users only.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser() { EXPECT_EQ(m_isRoot ? seteuid(65534) : 0, 0); }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;
    ~AsOrdinaryUser() { EXPECT_EQ(m_isRoot ? seteuid(0) : 0, 0); }

private:
    bool m_isRoot = geteuid() == 0;
};

} // namespace

TEST_F(Permissions, FilesThatMustNotBeWrittenCanBeReadAndOthersAreDenied)
{
    connection.close();
    chmod(QFile::encodeName(programFolder()).constData(), 0755);
    QFile::setPermissions(databasePath(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    {
        const AsOrdinaryUser user;
        connect();
        EXPECT_EQ(slotRows(), QStringList());
        EXPECT_EQ(errorOf([&] { addSlot(u"Hourly"_s, 1, 1); }), DatabaseEngine);
        connection.close();
    }
    QFile::setPermissions(databasePath(), {});
    const AsOrdinaryUser user;
    EXPECT_EQ(errorOf([&] { connect(); }), PermissionDenied);
}
