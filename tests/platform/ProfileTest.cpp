#include "tests/support/Test.h"

using namespace platform;

namespace {

class Profile : public testing::Test
{
protected:
    QString read(const QByteArray &content) const
    {
        makeFile(path, content);
        return host.profileString(u"settings.ini"_s, u"Section"_s, u"Key"_s, u"?"_s, 10);
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
        {u"[Section]\nKey=café\n"_s.toLocal8Bit(), u"café"_s},
        {"\xEF\xBB\xBF[Section]\nKey=marked\n", u"marked"_s},
        {" [ Section ] \n  Key \t=  2 words  \n", u"2 words"_s},
        {"[Section]\nKey=\" kept \"\n", u" kept "_s},
        {"[Section]\nKey='\"twice\"'\n", u"\"twice\""_s},
        {"[Section]\nKey=\"half\n", u"\"half"_s},
        {"[Section]\nKey=\n", u""_s},
        {"[Section]\nKey=a=b;c|and on\n", u"a=b;c|and"_s},
        {"[Section]\nKey=first\nKey=second\n", u"first"_s},
        {"[Section]\n;Key=comment\nKey=value\n", u"value"_s},
        {"[Section]\nOther=1\n[Section]\nKey=second\n", u"?"_s},
        {"[Section\nKey=unclosed\n", u"?"_s},
        {"Key=outside\n", u"?"_s},
        {"[Section]\nKey\n", u"?"_s},
        {QByteArray(5000, '\0'), u"?"_s},
        {"\xFF\xFE[\0S\0", u"?"_s},
    };
    for (const auto &[content, value] : cases)
        EXPECT_EQ(read(content), value) << content.toStdString();
}

TEST_F(Profile, WritesOneLineAndKeepsTheOthers)
{
    const std::tuple<QByteArray, QString, QByteArray> cases[] = {
        {"", u"v"_s, "[Section]\r\nKey=v\r\n"},
        {"; c\r\n[Other]\r\nKey=1", u"v"_s, "; c\r\n[Other]\r\nKey=1\r\n[Section]\r\nKey=v\r\n"},
        {"[section]\r\n; c\r\nKey=old\r\nKey=2\r\n", u"v"_s,
         "[section]\r\n; c\r\nKey=v\r\nKey=2\r\n"},
        {"[Section]\r\nA=1\r\n[Other]\r\n\xFF junk\r\n", u"v"_s,
         "[Section]\r\nA=1\r\nKey=v\r\n[Other]\r\n\xFF junk\r\n"},
        {"[Section]\r\n", u"two\r\nlines"_s, "[Section]\r\nKey=two\r\nlines\r\n"},
        {"[Section]\r\n", u"until"_s + QChar::Null + u"nul"_s, "[Section]\r\nKey=until\r\n"},
        {"[Section]\r\n", u"\"é\""_s, u"[Section]\r\nKey=\"é\"\r\n"_s.toLocal8Bit()},
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
