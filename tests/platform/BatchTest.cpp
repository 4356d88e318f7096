#include "platform/NativeHost.h"
#include "platform/SingleByteText.h"
#include "tests/support/Test.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <sys/stat.h>

using namespace platform;

namespace {

class Batch : public testing::Test
{
protected:
    void start(const QString &audio, const QString &output)
    {
        failure.clear();
        host.startBatch({folder.path() + u'/', u"tijdelijk.bat"_s, u"header"_s, audio, output},
                        [this](const QString &reason) { failure = reason; });
        EXPECT_NE(host.findBatchWindow(BatchWindowKind::Running), 0U);
        EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), 0U);
    }

    void waitForEnd()
    {
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return host.findBatchWindow(BatchWindowKind::Finished) != 0; }));
        EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Running), 0U);
    }

    QString run(const QString &audio, const QString &output)
    {
        start(audio, output);
        waitForEnd();
        return failure;
    }

    // Nobody fills it, which keeps the process that reads it running.
    void makePipe() const
    {
        ASSERT_EQ(mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
    }

    QString at(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    NativeHost host;
    QString failure;
};

} // namespace

TEST_F(Batch, JoinsFilesOfAnyName)
{
    makeFile(at(u"header"_s), "header");
    for (const QString &name : {u"audio.mp2"_s, u"a b"_s, u"-n"_s, u"--help"_s, u";touch x"_s,
                                u"$(touch x)"_s, u"`touch x`&"_s, u"'\""_s, u"*"_s, u"é"_s}) {
        makeFile(at(name), "audio");
        EXPECT_EQ(run(name, u"out"_s), u""_s) << name.toStdString();
        EXPECT_EQ(fileBytes(at(u"out"_s)), "headeraudio");
        QFile::remove(at(u"out"_s));
        EXPECT_EQ(run(name, name), u""_s); // the output takes the input's place
        EXPECT_EQ(fileBytes(at(name)), "headeraudio");
        QFile::remove(at(name));
        EXPECT_EQ(filesIn(folder.path()), QStringList{u"header"_s});
    }
}

TEST_F(Batch, AFailedOneSaysWhyAndLeavesTheOldOutput)
{
    makeFile(at(u"header"_s), "header");
    makeFile(at(u"out"_s), "old");
    EXPECT_TRUE(run(u"missing"_s, u"out"_s).contains(u"missing"_s));
    EXPECT_EQ(fileBytes(at(u"out"_s)), "old");
    EXPECT_EQ(filesIn(folder.path()), (QStringList{u"header"_s, u"out"_s}));

    makePipe();
    QTimer::singleShot(0, [] { qApp->findChild<QProcess *>()->kill(); });
    EXPECT_EQ(run(u"pipe"_s, u"out"_s), u"the process was ended"_s);
    EXPECT_EQ(fileBytes(at(u"out"_s)), "old");
    EXPECT_EQ(filesIn(folder.path()), (QStringList{u"header"_s, u"out"_s})); // pipes are not listed
}

TEST_F(Batch, ASlowOneAndTheNextKeepApart)
{
    makeFile(at(u"header"_s), "header");
    makeFile(at(u"audio"_s), "audio");
    makePipe();
    start(u"pipe"_s, u"slow"_s);
    start(u"audio"_s, u"next"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fileBytes(at(u"next"_s)) == "headeraudio"; }));
    EXPECT_FALSE(QFile::exists(at(u"slow"_s)));
    EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), 0U);
    makeFile(at(u"pipe"_s), "late");
    waitForEnd();
    EXPECT_EQ(fileBytes(at(u"slow"_s)), "headerlate");
}

TEST(SingleByteText, ReplacesWhatTheCodePageLacks)
{
    const std::pair<QString, QByteArray> cases[] = {
        {u"news.spc"_s, "news.spc"}, {u"Beëindigd"_s, "Be\xEBindigd"},
        {u"e\u0308"_s, "\xEB"},      {u"€ “œ” Ÿ"_s, "\x80 \x93\x9C\x94 \x9F"},
        {u"Ω 🎵 \u0081"_s, "? ? ?"},  {u"\u00A0ÿ"_s, "\xA0\xFF"},
    };
    for (const auto &[text, bytes] : cases)
        EXPECT_EQ(singleByteText(text), bytes) << text.toStdString();
}
