#include "tests/controls/DL/Downloads.h"

#include <QEventLoop>
#include <QFileInfo>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

using controls::DL;
using controls::Limits;

static const QByteArray Audio = QByteArray("0123456789").repeated(300'000);
constexpr qint32 Size = 3'000'000;

class ControlTest : public Downloads
{
protected:
    ControlTest() { station.answer(u"/raw.mp2"_s, {.body = Audio}); }

    const QString address = Station::url(u"/raw.mp2"_s);
};

TEST_F(ControlTest, NeverShowsAndKeepsItsSize)
{
    QWidget form;
    DL dl(&form);
    form.show();
    EXPECT_FALSE(dl.isVisible());
    dl.show();
    EXPECT_FALSE(dl.isVisible());
    for (const QSize wanted : {QSize(28, 28), QSize(200, 100), QSize(1, 1)}) {
        dl.resize(wanted);
        EXPECT_EQ(dl.size(), QSize(28, 28));
    }
}

TEST_F(ControlTest, TellsOfEveryBlockInOrder)
{
    DL dl;
    QSignalSpy progress(&dl, &DL::Progress);
    EXPECT_EQ(download(dl, address, destination()), (Counts{Size, Size}));
    EXPECT_EQ(contents(destination()), Audio);
    ASSERT_GE(progress.size(), Size / (256 * 1024));
    qint32 before = 0;
    for (const auto &event : progress) {
        EXPECT_GT(countsOf(event).downloaded, before);
        EXPECT_LE(countsOf(event).downloaded - before, 256 * 1024);
        EXPECT_EQ(countsOf(event).total, Size);
        before = countsOf(event).downloaded;
    }
}

// Ids and errors -------------------------------------------------------------------------------

TEST_F(ControlTest, RunsDownloadsOfDifferentIdsAtOnce)
{
    station.answer(u"/slow.mp2"_s, {.body = Audio, .bytesPerSecond = 10 * Size});
    station.answer(u"/broken.mp2"_s, {.body = Audio, .cutAfter = 10, .ending = Ending::Close});
    DL dl;
    QSignalSpy completed(&dl, &DL::Completed);
    dl.Download(Station::url(u"/slow.mp2"_s), destination(), u"slow"_s);
    dl.Download(Station::url(u"/broken.mp2"_s), destination() + u"2"_s, u"broken"_s);
    EXPECT_EQ(dl.PendingDestinations().value(u"slow"_s), destination());
    EXPECT_EQ(dl.PendingDestinations().size(), 2);
    while (completed.size() < 2)
        ASSERT_TRUE(completed.wait(20'000));

    EXPECT_EQ(completed[0], (QVariantList{10, Size, u"broken"_s}));
    EXPECT_EQ(completed[1], (QVariantList{Size, Size, u"slow"_s}));
    EXPECT_EQ(contents(destination()), Audio);
    EXPECT_TRUE(dl.PendingDestinations().isEmpty());
}

TEST_F(ControlTest, RefusesAnIdThatIsPending)
{
    DL dl;
    QSignalSpy completed(&dl, &DL::Completed);
    dl.Download(address, destination());
    EXPECT_EQ(errorOf([&] { dl.Download(address, destination() + u"2"_s); }),
              ErrorNumber::DuplicateKey);
    ASSERT_TRUE(completed.wait(20'000));
    EXPECT_EQ(contents(destination()), Audio);
    EXPECT_EQ(station.requests().size(), 1U);
    EXPECT_EQ(errorOf([&] { dl.Download(address, destination()); }), std::nullopt);
}

TEST_F(ControlTest, RefusesWithoutATemporaryFileAndKeepsTheIdFree)
{
    DL dl;
    qputenv("TMPDIR", "/proc"); // where nobody can make a file
    EXPECT_EQ(errorOf([&] { dl.Download(address, destination()); }), ErrorNumber::PathFileAccess);
    qputenv("TMPDIR", QFile::encodeName(temporaryFolder()));
    EXPECT_EQ(download(dl, address, destination()), (Counts{Size, Size}));
}

// Files ----------------------------------------------------------------------------------------

TEST_F(ControlTest, IgnoresAFailedMove)
{
    const QString missing = folder.filePath(u"missing/raw.mp2"_s);
    QFile old(destination());
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    DL dl;
    for (const QString &path : {missing, destination(), QString()}) {
        EXPECT_EQ(download(dl, address, path), (Counts{Size, Size}));
        ASSERT_EQ(temporaryFiles().size(), 1);
        EXPECT_EQ(contents(temporaryFolder() + u'/' + temporaryFiles().first()), Audio);
    }
    EXPECT_EQ(contents(destination()), "old");
}

TEST_F(ControlTest, MovesToAnotherFileSystem)
{
    const QTemporaryDir other(u"/dev/shm/XXXXXX"_s);
    struct stat here = {};
    struct stat there = {};
    stat(QFile::encodeName(temporaryFolder()).constData(), &here);
    if (stat(QFile::encodeName(other.path()).constData(), &there) != 0 ||
        here.st_dev == there.st_dev)
        GTEST_SKIP() << "needs a second file system";
    DL dl;
    EXPECT_EQ(download(dl, address, other.filePath(u"raw.mp2"_s)), (Counts{Size, Size}));
    EXPECT_EQ(contents(other.filePath(u"raw.mp2"_s)), Audio);
    EXPECT_EQ(QDir(other.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST_F(ControlTest, GivesFilesOrdinaryPermissions)
{
    const mode_t mask = umask(0027);
    DL dl;
    download(dl, address, destination());
    umask(mask);
    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(destination()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(ControlTest, KeepsPartialDataUntilTheNextDownloadOrItsEnd)
{
    station.answer(u"/broken.mp2"_s, {.body = Audio, .cutAfter = 10, .ending = Ending::Close});
    const QString broken = Station::url(u"/broken.mp2"_s);
    {
        DL dl;
        download(dl, broken, destination());
        const QStringList first = temporaryFiles();
        ASSERT_EQ(first.size(), 1);
        EXPECT_EQ(contents(temporaryFolder() + u'/' + first[0]), Audio.left(10));

        download(dl, broken, destination());
        EXPECT_EQ(temporaryFiles().size(), 1);
        EXPECT_NE(temporaryFiles(), first);
    }
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST_F(ControlTest, CountsOnlyWhatAFullDiskTakes)
{
    constexpr rlim_t Room = 1'000'000;
    station.answer(u"/raw.mp2"_s, {.body = Audio, .cutAfter = 2 * Room}); // then it stalls
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit lowered{Room, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN); // so that writing fails instead
    setrlimit(RLIMIT_FSIZE, &lowered);
    DL dl;
    const Counts counts = download(dl, address, destination());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(counts, (Counts{Room, Size}));
    EXPECT_FALSE(contents(destination()));
}

// Limits ---------------------------------------------------------------------------------------

TEST_F(ControlTest, EndsATransferThatStalls)
{
    station.answer(u"/mute.mp2"_s, {.raw = ""});
    station.answer(u"/head.mp2"_s, {.body = Audio, .cutAfter = 0});
    station.answer(u"/body.mp2"_s, {.body = Audio, .cutAfter = 10});
    DL dl(nullptr, {.idle = 300ms});
    EXPECT_EQ(download(dl, Station::url(u"/mute.mp2"_s), destination()), (Counts{0, 0}));
    EXPECT_EQ(download(dl, Station::url(u"/head.mp2"_s), destination()), (Counts{0, Size}));
    EXPECT_EQ(download(dl, Station::url(u"/body.mp2"_s), destination()), (Counts{10, Size}));
}

TEST_F(ControlTest, EndsATransferThatDrips)
{
    station.answer(u"/drip.mp2"_s, {.body = Audio, .bytesPerSecond = 200});
    DL dl(nullptr, {.period = 500ms, .leastBytes = 2000});
    const Counts counts = download(dl, Station::url(u"/drip.mp2"_s), destination());
    EXPECT_GT(counts.downloaded, 0);
    EXPECT_LT(counts.downloaded, 2000);
    EXPECT_EQ(counts.total, Size);

    // Each period counts for itself, however much came before.
    station.answer(u"/burst.mp2"_s, {.body = Audio, .cutAfter = 3000});
    EXPECT_EQ(download(dl, Station::url(u"/burst.mp2"_s), destination()), (Counts{3000, Size}));
}

TEST_F(ControlTest, LetsASlowTransferFinishThatKeepsItsRate)
{
    station.answer(u"/slow.mp2"_s, {.body = Audio.left(48'000), .bytesPerSecond = 48'000});
    DL dl(nullptr, {.period = 400ms, .leastBytes = 500});
    EXPECT_EQ(download(dl, Station::url(u"/slow.mp2"_s), destination()), (Counts{48'000, 48'000}));
}

TEST_F(ControlTest, EndsAStreamWithoutLength)
{
    DL dl(nullptr, {.mostUnannounced = 1'000'000});
    for (const Answer &stream : {
             Answer{.body = Audio, .framing = Framing::Chunked},
             Answer{.body = Audio, .framing = Framing::UntilClose},
             Answer{.body = Audio, .announced = 3LL << 30},
         }) {
        station.answer(u"/stream.mp2"_s, stream);
        EXPECT_EQ(download(dl, Station::url(u"/stream.mp2"_s), destination()),
                  (Counts{1'000'000, 0}));
    }
    EXPECT_EQ(download(dl, address, destination()), (Counts{Size, Size}));
}

// Handlers -------------------------------------------------------------------------------------

TEST_F(ControlTest, StartsAgainFromItsOwnHandler)
{
    DL dl;
    QSignalSpy completed(&dl, &DL::Completed);
    QObject::connect(&dl, &DL::Completed, &dl, [&] {
        if (completed.size() < 3)
            dl.Download(address, destination() + QString::number(completed.size()));
    });
    dl.Download(address, destination());
    while (completed.size() < 3)
        ASSERT_TRUE(completed.wait(20'000));
    EXPECT_EQ(contents(destination() + u"2"_s), Audio);
}

TEST_F(ControlTest, GoesOnWhileAHandlerRunsAnEventLoop)
{
    DL dl;
    QSignalSpy completed(&dl, &DL::Completed);
    QSignalSpy progress(&dl, &DL::Progress);
    QEventLoop inner;
    QObject::connect(&dl, &DL::Completed, &inner, [&] {
        QCoreApplication::processEvents();
        inner.quit();
    });
    QObject::connect(&dl, &DL::Progress, &dl, [&] {
        if (progress.size() == 1)
            inner.exec();
    });
    dl.Download(address, destination());
    ASSERT_TRUE(progress.wait(20'000));
    ASSERT_EQ(completed.size(), 1);
    EXPECT_EQ(countsOf(completed.first()), (Counts{Size, Size}));
    EXPECT_EQ(contents(destination()), Audio);
    EXPECT_EQ(countsOf(progress.last()), (Counts{Size, Size}));

    EXPECT_EQ(download(dl, address, destination() + u"2"_s), (Counts{Size, Size}));
    EXPECT_EQ(completed.size(), 2);
}

TEST_F(ControlTest, MayBeDestroyedByItsHandlers)
{
    // The first block ends the transfer, so that its end is still to come when Progress is raised.
    station.answer(u"/stream.mp2"_s, {.body = Audio, .framing = Framing::Chunked});
    for (const bool inProgress : {true, false}) {
        auto dl = std::make_unique<DL>(nullptr, Limits{.mostUnannounced = 1000});
        QSignalSpy destroyed(dl.get(), &QObject::destroyed);
        const auto destroy = [&] { dl.reset(); };
        if (inProgress)
            QObject::connect(dl.get(), &DL::Progress, dl.get(), destroy);
        else
            QObject::connect(dl.get(), &DL::Completed, dl.get(), destroy);
        dl->Download(Station::url(u"/stream.mp2"_s), destination());
        ASSERT_TRUE(destroyed.wait(20'000));
        EXPECT_TRUE(temporaryFiles().isEmpty());
    }
}

TEST_F(ControlTest, AbandonsDownloadsWithoutAnEvent)
{
    DL dl;
    QSignalSpy completed(&dl, &DL::Completed);
    QSignalSpy progress(&dl, &DL::Progress);
    QObject::connect(&dl, &DL::Progress, &dl, [&] {
        if (progress.size() == 1)
            dl.abandonAll();
    });
    dl.Download(u"nowhere"_s, destination(), u"2"_s);
    dl.abandonAll();
    dl.Download(address, destination());
    dl.Download(address, destination(), u"2"_s);
    ASSERT_TRUE(progress.wait(20'000));
    EXPECT_TRUE(dl.PendingDestinations().isEmpty());
    EXPECT_TRUE(temporaryFiles().isEmpty());

    // Whatever was under way would have arrived with this one.
    EXPECT_EQ(download(dl, address, destination()), (Counts{Size, Size}));
    EXPECT_EQ(completed.size(), 1);
}
