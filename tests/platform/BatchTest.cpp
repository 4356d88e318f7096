#include "platform/Text.h"
#include "tests/support/System.h"
#include "tests/support/Test.h"

#include <QApplication>
#include <QProcess>
#include <QTest>

using namespace platform;

namespace {

class Batch : public testing::Test
{
protected:
    void start(const QString &audio, const QString &output,
               const QString &batchFile = u"tijdelijk.bat"_s)
    {
        const QString command = u"copy /b header + "_s + audio + u' ' + output;
        makeFile(at(u"tijdelijk.bat"_s), singleByteText(command));
        failure.clear();
        host.startBatch({folder.path() + u'/', batchFile, u"header"_s, audio, output},
                        [this](const QString &reason) { failure = reason; });
        EXPECT_NE(host.findBatchWindow(BatchWindowKind::Running), 0U);
        EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), 0U);
    }

    // A batch of "audio" into "out".
    void startSlowOne()
    {
        makeSlowBatch(folder.path());
        start(u"audio"_s, u"out"_s, u"slow.bat"_s);
    }

    void waitForEnd()
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { // a console outlives its process by a moment
            return host.findBatchWindow(BatchWindowKind::Finished) != 0 &&
                   host.findBatchWindow(BatchWindowKind::Running) == 0;
        }));
    }

    // Returns why there is no output.
    QString run(const QString &audio, const QString &output)
    {
        start(audio, output);
        waitForEnd();
        return failure;
    }

    QString at(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    NativeHost host;
    QString failure;
};

} // namespace

TEST_F(Batch, JoinsFilesOfAnyNameThatItTakes)
{
    makeFile(at(u"header"_s), "header");
    QStringList names = {u"audio.mp2"_s, u"-n"_s, u"--help"_s};
    if (QDir::separator() == u'/') // the other system's command interpreter has its limits
        names << u"a b"_s << u";touch x"_s << u"$(touch x)"_s << u"`x`&"_s << u"'\""_s << u"*é"_s;
    for (const QString &name : names) {
        makeFile(at(name), "audio");
        EXPECT_EQ(run(name, u"out"_s), u""_s) << name.toStdString();
        EXPECT_EQ(fileBytes(at(u"out"_s)), "headeraudio");
        EXPECT_EQ(run(name, name), u""_s); // the output takes the input's place
        EXPECT_EQ(fileBytes(at(name)), "headeraudio");
        QFile::remove(at(name));
        EXPECT_EQ(filesIn(folder.path()), (QStringList{u"header"_s, u"out"_s, u"tijdelijk.bat"_s}));
        makeFile(at(u"out"_s), "old"); // for the next one to replace
    }
}

TEST_F(Batch, AFailedOneSaysWhyAndLeavesTheOldOutput)
{
    makeFile(at(u"header"_s), "header");
    makeFile(at(u"out"_s), "old");
    QDir(folder.path()).mkdir(u"folder"_s);
    EXPECT_NE(run(u"folder"_s, u"out"_s), u""_s);
    startSlowOne();
    qApp->findChild<QProcess *>()->kill();
    waitForEnd();
    EXPECT_EQ(failure, u"the process was ended"_s);
    EXPECT_EQ(fileBytes(at(u"out"_s)), "old");
    EXPECT_TRUE(filesIn(folder.path()).filter(u".part"_s).isEmpty());
}

TEST_F(Batch, ASlowOneAndTheNextKeepApart)
{
    startSlowOne();
    makeFile(at(u"more"_s), "more");
    start(u"more"_s, u"next"_s);
    // not opened while it is written, which on Windows would keep the batch from it
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFileInfo(at(u"next"_s)).size() == 10; }));
    EXPECT_EQ(fileBytes(at(u"next"_s)), "headermore");
    EXPECT_FALSE(QFile::exists(at(u"out"_s)));
    EXPECT_EQ(host.findBatchWindow(BatchWindowKind::Finished), 0U);
    endSlowBatch(folder.path());
    waitForEnd();
    EXPECT_EQ(fileBytes(at(u"out"_s)), "headeraudio");
}

TEST(SingleByteText, ReplacesWhatTheCodePageLacks)
{
    const std::pair<QString, QByteArray> cases[] = {
        {u"Beëindigd"_s, "Be\xEBindigd"},
        {u"e\u0308"_s, "\xEB"},
        {u"€ “œ” Ÿ"_s, "\x80 \x93\x9C\x94 \x9F"},
        {u"Ω 🎵 \u0080 \u0081 \u00A0ÿ"_s, "? ? ? \x81 \xA0\xFF"},
    };
    for (const auto &[text, bytes] : cases)
        EXPECT_EQ(singleByteText(text), bytes) << text.toStdString();
}
