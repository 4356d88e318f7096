#include "store/ConnectionString.h"

#include "tests/support/Test.h"

TEST(ConnectionString, JoinsItsPiecesAsTheyStand)
{
    EXPECT_EQ(store::connectionString(u"C:\\Ostravelin"_s),
              u"Provider=Microsoft.Jet.OLEDB.4.0;"
              "Data Source=C:\\Ostravelin\\database\\ostravelin.mdb;"
              "Jet OLEDB:Database Password = kelp@vastrumboren;"_s);
}

TEST(ConnectionString, GivesThePathInEveryProgramFolder)
{
    const QString separator = QDir::separator();
    for (const QString &folder :
         {u"/srv/ostravelin"_s, u"/"_s, u"/srv/a;b/x"_s, u"/srv/a;"_s, u"/srv/=;x"_s,
          u"/srv/back\\slash"_s, u"/srv/Émission d'été"_s, u"D:\\Audio"_s}) {
        const auto address = store::parsedConnectionString(store::connectionString(folder));
        EXPECT_EQ(address.path,
                  folder + separator + u"database"_s + separator + u"ostravelin.mdb"_s);
        EXPECT_EQ(address.password, u"kelp@vastrumboren"_s);
    }
}

TEST(ConnectionString, IsReadHoweverItIsWritten)
{
    const std::tuple<QString, QString, QString> cases[] = {
        // texts, paths and passwords
        {u""_s, u""_s, u""_s},
        {u"data source=/a.mdb"_s, u"/a.mdb"_s, u""_s},
        {u"  DATA SOURCE \t=  /a b.mdb  ;x=y"_s, u"/a b.mdb"_s, u""_s},
        {u"jet oledb:database password= p=q ;Data Source=/a.mdb;;"_s, u"/a.mdb"_s, u"p=q"_s},
        {u"Data Source=/a;b;c.mdb; ;Mode=x"_s, u"/a;b;c.mdb"_s, u""_s},
        {u"Data Source Name=/b;Data Source=/a\\x.mdb"_s, u"/a\\x.mdb"_s, u""_s},
    };
    for (const auto &[text, path, password] : cases) {
        const auto address = store::parsedConnectionString(text);
        EXPECT_EQ(address.path, path);
        EXPECT_EQ(address.password, password);
    }
}
