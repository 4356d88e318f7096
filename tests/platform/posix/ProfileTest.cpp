#include "platform/posix/Profile.h"

#include "tests/support/Test.h"

TEST(ProfileText, KeepsItsLineEndsAndBlanksAndIsCutBetweenCharacters)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a b/settings.ini"_s);
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"", "[Section]\r\nKey= v🎵\r\n"},
        {"[Section]\n key = 1\n\n[Other]\n", "[Section]\nKey= v🎵\n\n[Other]\n"},
        {"[Section]\nA=1\n\n[Other]\n", "[Section]\nA=1\nKey= v🎵\n\n[Other]\n"},
    };
    for (const auto &[before, after] : cases) {
        makeFile(path, before);
        EXPECT_TRUE(platform::writeProfile(path, u"Section"_s, u"Key"_s, u" v🎵"_s));
        EXPECT_EQ(fileBytes(path).toStdString(), after.toStdString());
        for (const auto &[size, cut] : {std::pair{3, u"v"_s}, {4, u"v🎵"_s}})
            EXPECT_EQ(platform::readProfile(path, u"Section"_s, u"Key"_s, u"?"_s, size), cut);
    }
}
