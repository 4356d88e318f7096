#include "platform/posix/Profile.h"

#include "tests/support/Test.h"

using namespace platform;

TEST(ProfileText, IsCutBetweenCharacters)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"settings.ini"_s);
    makeFile(path, "[Section]\nKey=abc\xF0\x9F\x8E\xB5");
    EXPECT_EQ(readProfile(path, u"Section"_s, u"Key"_s, u"?"_s, 5), u"abc"_s);
    EXPECT_EQ(readProfile(path, u"Section"_s, u"Key"_s, u"?"_s, 6), u"abc🎵"_s);
}

TEST(ProfileText, KeepsItsLineEndsAndBlanks)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a b/settings.ini"_s);
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"", "[Section]\r\nKey= v \r\n"},
        {"; c\n[Other]\nKey=1", "; c\n[Other]\nKey=1\n[Section]\nKey= v \n"},
        {"[Section]\n key = 1\n\n[Other]\n", "[Section]\nKey= v \n\n[Other]\n"},
        {"[Section]\nA=1\n\n[Other]\n", "[Section]\nA=1\nKey= v \n\n[Other]\n"},
    };
    for (const auto &[before, after] : cases) {
        makeFile(path, before);
        EXPECT_TRUE(writeProfile(path, u"Section"_s, u"Key"_s, u" v "_s));
        EXPECT_EQ(fileBytes(path).toStdString(), after.toStdString());
    }
}
