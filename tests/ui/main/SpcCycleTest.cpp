#include "tests/ui/main/SpcCycle.h"

#include "tests/support/System.h"
#include "ui/main/SpcHeader.h"

#include <QRegularExpression>

static QByteArray header(const QString &fileName)
{
    return ("FILE: " + fileName.toLatin1() +
            "\r\nDESCRIPTION: NL 1.8.1\r\nSAMPLE RATE: 48000\r\nFILTER CUTOFF: 0\r\n"
            "SAMPLE SIZE: 16 bits\r\nSAMPLE FORMAT: MPEG\r\nCHANNELS: 2\r\nSECONDS: 1.199934.00"
            "\r\nSAMPLES PER BLOCK: 1152\r\nBYTES PER BLOCK: 768\r\n"
            "EXTRA INFO: L=2/M=st/Kb=128/E=0/C=0/O=1/Em=0/A=4\x1A")
        .leftJustified(256, '\0');
}

TEST_F(SpcCycle, MakesTheSpcFileAndItsCopyAndGoesOn)
{
    const QString downloaded = u"Hourly - 38.4 kB - 38.40 kB/s"_s;
    const QString done = u"SPC header is toegevoegd..."_s;
    const QString unpadded = u"Invalid procedure call or argument"_s; // a header of 258 bytes
    const QString missing = u"SPC map niet gevonden"_s;
    const std::tuple<QString, QString, QString, QString> cases[] = {
        // the task's file name, the SPC folder, the last line of the log and the last status
        {u"news.spc"_s, spcFolder({}), downloaded, done},
        {u"hourly-news.spc"_s, spcFolder({}), unpadded, done},
        // exactly 256 bytes
        {u"nouvell"_s + accentForBatches() + u"1.spc"_s, spcFolder({}), downloaded, done},
        {u"news.spc"_s, u"  "_s, u"Hourly - "_s + missing, missing},
        {u"news.spc"_s, host.folder() + u"/none"_s, u"Hourly - "_s + missing, missing},
        // what is equal loses nothing: names of task and address, both folders
        {u"latest.mp2"_s, spcFolder({}), downloaded, done},
        {u"news.spc"_s, destination({}), downloaded, done},
        {u"news.spc"_s, destination(u"../audio"_s), downloaded, done},
    };
    // what a program that was killed in the middle, two days ago, may have left
    for (const auto &leftover : {u"tijdelijk.txt"_s, u"tijdelijk.bat"_s, u"latest.mp2"_s,
                                 u".ostravelin-batch-1-1.part"_s, u".ostravelin-1.part"_s}) {
        makeFile(destination(leftover), QByteArray(50'000, 'x'));
        QFile file(destination(leftover));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.setFileTime(QDateTime::currentDateTime().addDays(-2), QFile::FileModificationTime);
    }
    openForm();
    onProgress([this] { host.ticks = 1000; });
    for (const auto &[fileName, folder, logged, told] : cases) {
        SCOPED_TRACE((fileName + u' ' + folder).toStdString());
        const QString spcFile = destination(fileName);
        const QString copy = spcFolder(fileName);
        const bool copies = folder == spcFolder({});
        makeFile(spcFile, "old");
        makeFile(copy, "old");
        setTasks(u"Filenaam = '%1'"_s.arg(fileName));
        app::sSPCmap = folder;
        lookUpBeforeDue();
        host.ticks = 0;
        runDownload();
        EXPECT_TRUE(watch()->isActive());
        EXPECT_FALSE(formControl<QAction>(u"mnuOpties"_s)->isEnabled());
        EXPECT_EQ(status(), u"SPC header wordt toegevoegd..."_s);
        EXPECT_EQ(pauses, QStringList());
        waitForBatch();
        EXPECT_EQ(fileBytes(destination(u"tijdelijk.txt"_s)), header(fileName));
        EXPECT_EQ(fileBytes(destination(u"tijdelijk.bat"_s)),
                  "copy /b tijdelijk.txt + latest.mp2 " + fileName.toLatin1());

        tick(watch());
        EXPECT_EQ(fileBytes(spcFile), header(fileName) + audio);
        EXPECT_EQ(fileBytes(copy), copies ? header(fileName) + audio : "old");
        EXPECT_EQ(destinationFiles(), QStringList{fileName});
        EXPECT_EQ(log().back(), logged);
        EXPECT_EQ(pauses, QStringList{told + u" for 1000 ms"_s});
        EXPECT_EQ(form->DownloadEntry.DownloadTime, due + std::chrono::days(7));
        expectNextArmed();
        QFile::remove(spcFile);
    }
    EXPECT_EQ(log().size(), std::size(cases) + 3); // with those of the header and of no folders
}

TEST_F(SpcCycle, WatchesOnWhileTheBatchRunsAndLooksUpTheNextDownload)
{
    for (const QString &mode : {u"0"_s, u"1"_s}) {
        app::sPreXP = mode;
        const QString folder = destination(u"slow"_s + mode);
        makeSlowBatch(folder);
        openForm();
        host.startBatch({folder + u'/', u"slow.bat"_s, u"header"_s, u"audio"_s, u"out"_s},
                        [](auto) {});
        watch()->start();
        host.failsToBeepAndToFindBatches = true; // as if it ran on
        tick(watch());
        host.failsToBeepAndToFindBatches = false;
        EXPECT_EQ(log().back(), u"Overflow"_s);
        pauses.clear();
        tick(watch());
        EXPECT_TRUE(watch()->isActive());
        EXPECT_EQ(pauses, QStringList{u" for 1000 ms"_s});
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);

        endSlowBatch(folder);
        waitForBatch();
        host.closedBatchWindows.clear();
        tick(watch());
        EXPECT_EQ(host.closedBatchWindows.isEmpty(), mode == u"1"_s);
        expectNextArmed();
    }
}

TEST_F(SpcCycle, MissingFilesAreLoggedAndTheOldSpcFileStays)
{
    makeFile(destination(u"news.spc"_s), "old");
    openForm();
    form->WriteSpcHeader(); // the download is gone
    waitForBatch();
    EXPECT_TRUE(fileBytes(destination(u"tijdelijk.txt"_s)).contains("\r\nSECONDS: \r\n"));
    QFile::remove(destination(u"tijdelijk.txt"_s));
    tick(watch());
    EXPECT_EQ(log().count(u"File not found"_s), 3); // the download, twice, and tijdelijk.txt
    EXPECT_EQ(log().filter(QRegularExpression(u"^Hourly - .*latest.mp2"_s)).size(), 1);
    EXPECT_EQ(log().size(), 4);
    EXPECT_EQ(fileBytes(destination(u"news.spc"_s)), "old");
    EXPECT_EQ(destinationFiles(), QStringList{u"news.spc"_s});
}

TEST(SpcHeader, SecondsFollowTheirRulesInBothLocales)
{
    const std::tuple<qint64, QString, QString> cases[] = {
        // size, with a decimal comma, with a decimal point
        {1'920'000, u"59.99"_s, u"59.99672.00"_s},
        {3'840'209, u"120.00"_s, u"120.00"_s},
        {395'077'248, u"12345,49.00"_s, u"12345.49"_s},
        {39'507'725, u"1234.54"_s, u"1234.549.00"_s},
    };
    for (const auto &[size, comma, point] : cases) {
        EXPECT_EQ(ui::secondsText(size, u','), comma);
        EXPECT_EQ(ui::secondsText(size, u'.'), point);
    }
}
