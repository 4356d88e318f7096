#include "tests/support/Test.h"

// clang-format off: the second needs the first
#include <windows.h>
#include <sddl.h>
// clang-format on

using namespace platform;

namespace {

/// A settings file that everybody has, and its place for a user who may not write there.
class RedirectedProfile : public testing::Test
{
protected:
    RedirectedProfile()
    {
        _wputenv_s(L"LOCALAPPDATA", QDir::toNativeSeparators(local).toStdWString().c_str());
        EXPECT_TRUE(write(u"everybody's"_s));
    }

    bool write(const QString &value)
    {
        return host.writeProfileString(u"settings.ini"_s, u"Section"_s, u"Key"_s, value);
    }

    QString read() const
    {
        return host.profileString(u"settings.ini"_s, u"Section"_s, u"Key"_s, u"?"_s, 255);
    }

    QString place() const { return QDir::fromNativeSeparators(host.redirectedPath(shared)); }

    // Lets everybody read and delete, and nobody write, in the system's own notation of rights.
    static void close(const QString &path)
    {
        PSECURITY_DESCRIPTOR rights = nullptr;
        ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
            L"D:P(A;;GRGXSD;;;WD)", SDDL_REVISION_1, &rights, nullptr));
        EXPECT_TRUE(SetFileSecurityW(QDir::toNativeSeparators(path).toStdWString().c_str(),
                                     DACL_SECURITY_INFORMATION, rights));
        LocalFree(rights);
    }

    FakeHost host;
    const QString local = host.folder() + u"/Зоя"_s; // in few code pages
    const QString shared = host.settingsDirectory() + u"/settings.ini"_s;
    const QString own = local + u"/VirtualStore"_s + shared.section(u':', 1);
};

} // namespace

TEST_F(RedirectedProfile, IsWhereTheSystemRedirectsUsersWhoMayNotWriteTheOther)
{
    EXPECT_EQ(place(), shared);
    close(shared);
    close(host.settingsDirectory());
    if (QFile(shared).open(QIODevice::Append))
        GTEST_SKIP() << "this user may write everywhere";
    EXPECT_EQ(place(), own);
    EXPECT_EQ(QDir::fromNativeSeparators(host.redirectedPath(shared + u'2')), own + u'2');
    EXPECT_EQ(read(), u"everybody's"_s);
    EXPECT_TRUE(write(u"own"_s));
    EXPECT_EQ(read(), u"own"_s);
    EXPECT_EQ(fileBytes(own), "[Section]\r\nKey=own\r\n");
    EXPECT_EQ(fileBytes(shared), "[Section]\r\nKey=everybody's\r\n");
}

TEST_F(RedirectedProfile, GoesBeforeTheOtherOnceItIsThere)
{
    makeFile(own, "[Section]\r\nKey=own\r\n");
    EXPECT_EQ(place(), own);
    EXPECT_EQ(read(), u"own"_s);
    EXPECT_TRUE(write(u"newer"_s));
    EXPECT_EQ(read(), u"newer"_s);
    EXPECT_EQ(fileBytes(shared), "[Section]\r\nKey=everybody's\r\n");
    EXPECT_EQ(filesIn(host.settingsDirectory()), QStringList{u"settings.ini"_s});
}
