#include "store/ConnectionString.h"

#include "tests/support/Test.h"

static QString parsed(const QString &text)
{
    const auto address = store::parsedConnectionString(text);
    return address.path + u'|' + address.password;
}

TEST(ConnectionString, JoinsItsPiecesAsTheyStand)
{
    EXPECT_EQ(store::connectionString(u"C:\\Ostravelin"_s),
              u"Provider=Microsoft.Jet.OLEDB.4.0;"
              "Data Source=C:\\Ostravelin\\database\\ostravelin.mdb;"
              "Jet OLEDB:Database Password = kelp@vastrumboren;"_s);
}

TEST(ConnectionString, GivesThePathInEveryProgramFolder)
{
    const QString file = QDir::toNativeSeparators(u"/database/ostravelin.mdb|kelp@vastrumboren"_s);
    for (const QString &folder : {u"/"_s, u"/srv/a;b/x"_s, u"/srv/a;"_s, u"/srv/=;x"_s,
                                  u"/srv/back\\slash"_s, u"/srv/Émission d'été"_s, u"D:\\Audio"_s})
        EXPECT_EQ(parsed(store::connectionString(folder)), folder + file);
}

TEST(ConnectionString, IsReadHoweverItIsWritten)
{
    const std::pair<QString, QString> cases[] = {
        {u""_s, u"|"_s},
        {u"  DATA SOURCE \t=  /a b.mdb  ;x=y"_s, u"/a b.mdb|"_s},
        {u"jet oledb:database password= p=q ;Data Source=/a.mdb;;"_s, u"/a.mdb|p=q"_s},
        {u"Data Source=/a;b;c.mdb; ;Mode=x"_s, u"/a;b;c.mdb|"_s},
        {u"Data Source Name=/b;Data Source=/a\\x.mdb"_s, u"/a\\x.mdb|"_s},
    };
    for (const auto &[text, pathAndPassword] : cases)
        EXPECT_EQ(parsed(text), pathAndPassword);
}
