#include "tests/support/Test.h"

using namespace platform;

namespace {

class Profile : public testing::Test
{
protected:
    QString read(const QByteArray &content, int size = 255) const
    {
        makeFile(path, content);
        return host.profileString(u"settings.ini"_s, u"Section"_s, u"Key"_s, u"?"_s, size);
    }

    bool write(const QString &value, const QString &file = u"settings.ini"_s)
    {
        return host.writeProfileString(file, u"Section"_s, u"Key"_s, value);
    }

    QByteArray written(const QByteArray &content, const QString &value)
    {
        makeFile(path, content);
        EXPECT_TRUE(write(value));
        return fileBytes(path);
    }

    FakeHost host;
    QString path = host.settingsDirectory() + u"/settings.ini"_s;
};

} // namespace

TEST_F(Profile, ReadsWhatTheFileHolds)
{
    const std::pair<QByteArray, QString> cases[] = {
        {"[Section]\r\nKey=value\r\n", u"value"_s},
        {"[SECTION]\nkEY=value", u"value"_s},
        {"\xEF\xBB\xBF[Section]\nKey=caf\xC3\xA9\n", u"café"_s},
        {" [ Section ] \n  Key \t=  two words  \n", u"two words"_s},
        {"[Section]\nKey=\" kept \"\n", u" kept "_s},
        {"[Section]\nKey=' kept '\n", u" kept "_s},
        {"[Section]\nKey=\"\"twice\"\"\n", u"\"twice\""_s},
        {"[Section]\nKey=\"half\n", u"\"half"_s},
        {"[Section]\nKey=\n", u""_s},
        {"[Section]\nKey=a=b;c\n", u"a=b;c"_s},
        {"[Section]\nKey=first\nKey=second\n", u"first"_s},
        {"[Section]\n;Key=comment\nKey=value\n", u"value"_s},
        {"[Section]\nOther=1\n[Section]\nKey=second section\n", u"?"_s},
        {"[Other]\nKey=other\n", u"?"_s},
        {"[Section\nKey=unclosed\n", u"?"_s},
        {"Key=outside\n", u"?"_s},
        {"[Section]\nKey\n", u"?"_s},
        {"", u"?"_s},
        {QByteArray(5000, '\0'), u"?"_s},
        {"\xFF\xFE[\0S\0", u"?"_s},
    };
    for (const auto &[content, value] : cases)
        EXPECT_EQ(read(content), value) << content.toStdString();
}

TEST_F(Profile, CutsToTheSizeWithoutSplittingACharacter)
{
    const auto content = [](const QByteArray &value) { return "[Section]\nKey=" + value; };
    EXPECT_EQ(read(content(QByteArray(300, 'x'))), QString(254, u'x'));
    EXPECT_EQ(read(content("abc\xF0\x9F\x8E\xB5"), 5), u"abc"_s);
    EXPECT_EQ(read(content("abc\xF0\x9F\x8E\xB5"), 6), u"abc🎵"_s);
    EXPECT_EQ(read({}, 1), u""_s);
}

TEST_F(Profile, WritesOneLineAndKeepsTheOthers)
{
    const std::tuple<QByteArray, QString, QByteArray> cases[] = {
        {"", u"v"_s, "[Section]\r\nKey=v\r\n"},
        {"; c\n[Other]\nKey=1", u"v"_s, "; c\n[Other]\nKey=1\n[Section]\nKey=v\n"},
        {"[section]\r\n; c\r\nkey = old\r\nKey=2\r\n", u"v"_s,
         "[section]\r\n; c\r\nKey=v\r\nKey=2\r\n"},
        {"[Section]\nA=1\n\n[Other]\n\xFF junk\n", u"v"_s,
         "[Section]\nA=1\nKey=v\n\n[Other]\n\xFF junk\n"},
        {"[Section]\n", u"two\r\nlines"_s, "[Section]\nKey=two\r\nlines\n"},
        {"[Section]\n", u"until"_s + QChar::Null + u"nul"_s, "[Section]\nKey=until\n"},
        {"[Section]\n", u" \"é\" "_s, "[Section]\nKey= \"\xC3\xA9\" \n"},
    };
    for (const auto &[before, value, after] : cases)
        EXPECT_EQ(written(before, value).toStdString(), after.toStdString());
}

TEST_F(Profile, AFailedWriteLeavesTheFile)
{
    makeFile(path, "[Section]\nKey=old\n");
    EXPECT_FALSE(write(u"v"_s, u"."_s));
    EXPECT_FALSE(write(u"v"_s, u"settings.ini/below"_s));
    EXPECT_EQ(fileBytes(path), "[Section]\nKey=old\n");
}
