#include "tests/ui/main/SpcCycle.h"

#include "tests/support/System.h"

TEST_F(SpcCycle, MakesTheSpcFileAndItsCopyAndGoesOn)
{
    makeFile(destination(u"news.spc"_s), "old");
    makeFile(spcFolder(u"news.spc"_s), "old");
    // what a program that was killed in the middle, a day ago, may have left
    for (const auto &leftover : {u"tijdelijk.txt"_s, u"tijdelijk.bat"_s, u"latest.mp2"_s,
                                 u".ostravelin-batch-1-1.part"_s, u".ostravelin-1.part"_s}) {
        makeFile(destination(leftover), QByteArray(50'000, 'x'));
        QFile file(destination(leftover));
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.setFileTime(QDateTime::currentDateTime().addDays(-2), QFile::FileModificationTime);
    }
    openForm();
    runDownloadAndBatch();
    EXPECT_EQ(fileBytes(destination(u"tijdelijk.txt"_s)),
              expectedHeader("news.spc", "1.199934.00"));
    EXPECT_EQ(fileBytes(destination(u"tijdelijk.bat"_s)),
              "copy /b tijdelijk.txt + latest.mp2 news.spc");
    EXPECT_EQ(status(), u"SPC header wordt toegevoegd..."_s);
    EXPECT_FALSE(canUse(u"mnuOpdrachten"_s));
    EXPECT_EQ(host.sleeps, QList<std::chrono::milliseconds>{});

    tickWatch();
    const QByteArray spc = expectedHeader("news.spc", "1.199934.00") + audio;
    EXPECT_EQ(fileBytes(destination(u"news.spc"_s)), spc);
    EXPECT_EQ(fileBytes(spcFolder(u"news.spc"_s)), spc);
    EXPECT_EQ(destinationFiles(), QStringList{u"news.spc"_s});
    EXPECT_EQ(statusesDuringPauses, QStringList{u"SPC header is toegevoegd..."_s});
    EXPECT_EQ(host.sleeps, QList{1000ms});
    EXPECT_FALSE(watch()->isActive());
    EXPECT_EQ(form->DownloadEntry.DownloadTime, due + std::chrono::days(7));
    EXPECT_EQ(log(), QStringList{u"Hourly - 38.4 kB - 38.40 kB/s"_s});
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
        host.sleeps.clear();
        tickWatch();
        EXPECT_TRUE(watch()->isActive());
        EXPECT_EQ(host.sleeps, QList{1000ms});
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);

        endSlowBatch(folder);
        waitForBatch();
        tickWatch();
        EXPECT_FALSE(watch()->isActive());
    }
}

TEST_F(SpcCycle, ALongerHeaderIsLoggedAndStaysUnpadded)
{
    setFileName(u"hourly-news.spc"_s);
    station.answerOthers(Answer{.body = QByteArray(1'920'000, 'a')});
    openForm();
    runDownloadAndBatch();
    tickWatch();
    EXPECT_EQ(QFile(destination(u"hourly-news.spc"_s)).size(), 1'920'258);
    EXPECT_EQ(log().back(), u"Invalid procedure call or argument"_s);
    EXPECT_EQ(log().size(), 2);
}

TEST_F(SpcCycle, AMissingSpcFolderIsToldAndTheSpcFileStays)
{
    app::sSPCmap = host.folder() + u"/none"_s;
    openForm();
    runDownloadAndBatch();
    tickWatch();
    EXPECT_EQ(log().back(), u"Hourly - SPC map niet gevonden"_s);
    EXPECT_EQ(statusesDuringPauses, QStringList{u"SPC map niet gevonden"_s});
    EXPECT_EQ(host.sleeps, QList{1000ms});
    EXPECT_EQ(destinationFiles(), QStringList{u"news.spc"_s});
    EXPECT_FALSE(watch()->isActive());
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
}

TEST_F(SpcCycle, EqualNamesAndFoldersLoseNothing)
{
    const std::pair<QString, QString> cases[] = {
        // names of task and folder
        {u"latest.mp2"_s, spcFolder({})},
        {u"latest.mp2"_s, destination({})},
        {u"news.spc"_s, destination({})},
        {u"news.spc"_s, destination(u"../audio"_s)},
    };
    openForm();
    for (const auto &[fileName, folder] : cases) {
        SCOPED_TRACE((fileName + u' ' + folder).toStdString());
        setFileName(fileName);
        app::sSPCmap = folder;
        lookUpBeforeDue();
        runDownloadAndBatch();
        tickWatch();
        EXPECT_EQ(destinationFiles(), QStringList{fileName});
        EXPECT_EQ(fileBytes(destination(fileName)),
                  expectedHeader(fileName.toUtf8(), "1.199934.00") + audio);
        QFile::remove(destination(fileName));
    }
}

TEST_F(SpcCycle, MissingFilesAreLoggedAndTheOldSpcFileStays)
{
    makeFile(destination(u"news.spc"_s), "old");
    openForm();
    form->WriteSpcHeader(); // the download is gone
    EXPECT_EQ(log(), QStringList{u"File not found"_s});
    waitForBatch();
    QFile::remove(destination(u"tijdelijk.txt"_s));
    tickWatch();
    ASSERT_EQ(log().size(), 4);
    EXPECT_TRUE(log()[1].startsWith(u"Hourly - "_s) && log()[1].contains(u"latest.mp2"_s));
    EXPECT_EQ(log()[2], u"File not found"_s); // tijdelijk.txt
    EXPECT_EQ(log()[3], u"File not found"_s); // the download
    EXPECT_EQ(fileBytes(destination(u"news.spc"_s)), "old");
    EXPECT_EQ(destinationFiles(), QStringList{u"news.spc"_s});
}
