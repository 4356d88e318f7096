#include "tests/controls/DL/Downloads.h"

#include <QEventLoop>

using controls::DL;

static const QByteArray Audio = QByteArray("0123456789").repeated(300'000);
constexpr qint32 Size = 3'000'000;
constexpr Counts Whole(Size, Size);

class ControlTest : public Downloads
{
protected:
    ControlTest() { station.answer(u"/raw.mp2"_s, {.body = Audio}); }

    void onNext(void (DL::*event)(qint32, qint32, const QString &),
                const std::function<void()> &act) const
    {
        QObject::connect(dl.get(), event, dl.get(), act, Qt::SingleShotConnection);
    }

    const QString address = Station::url(u"/raw.mp2"_s);
    const QString second = destination() + u'2';
};

TEST_F(ControlTest, NeverShowsAndKeepsItsSize)
{
    QWidget form;
    DL control(&form);
    form.show();
    control.show();
    EXPECT_FALSE(control.isVisible());
    control.resize(200, 1);
    EXPECT_EQ(control.size(), QSize(28, 28));
}

TEST_F(ControlTest, TellsOfEveryBlockInOrder)
{
    EXPECT_EQ(download(u"/raw.mp2"_s), Whole);
    EXPECT_EQ(fileBytes(destination()), Audio);
    qint32 before = 0;
    for (const auto &event : progress) {
        const auto [downloaded, total] = countsOf(event);
        EXPECT_GT(downloaded, before);
        EXPECT_LE(downloaded - before, 256 * 1024);
        EXPECT_EQ(total, Size);
        before = downloaded;
    }
    EXPECT_EQ(before, Size);
}

TEST_F(ControlTest, RunsDownloadsOfDifferentIdsAtOnce)
{
    station.answer(u"/slow.mp2"_s, {.body = Audio, .bytesPerSecond = 10 * Size});
    station.answer(u"/broken.mp2"_s, {.body = Audio, .cutAfter = 10, .ending = Ending::Close});
    const QMap<QString, QString> pending = {{u"slow"_s, destination()}, {u"broken"_s, second}};
    for (const auto &[id, path] : pending.asKeyValueRange())
        dl->Download(Station::url(u"/%1.mp2"_s.arg(id)), path, id);
    EXPECT_EQ(dl->PendingDestinations(), pending);
    waitFor(2, completed);
    EXPECT_EQ(completed[0], (QVariantList{10, Size, u"broken"_s}));
    EXPECT_EQ(completed[1], (QVariantList{Size, Size, u"slow"_s}));
    EXPECT_EQ(fileBytes(destination()), Audio);
    EXPECT_TRUE(dl->PendingDestinations().isEmpty());
}

TEST_F(ControlTest, RefusesAnIdThatIsPendingUntilItsHandlersRun)
{
    onNext(&DL::Completed, [&] { dl->Download(address, second); });
    dl->Download(address, destination());
    EXPECT_EQ(errorOf([&] { dl->Download(address, destination()); }), DuplicateKey);
    waitFor(2, completed);
    EXPECT_EQ(station.requests().size(), 2U);
    EXPECT_EQ(fileBytes(destination()), Audio);
    EXPECT_EQ(fileBytes(second), Audio);
}

TEST_F(ControlTest, RefusesWithoutATemporaryFileAndKeepsTheIdFree)
{
    makeFile(second, {});
    useTemporaryFolder(second); // no folder, so that nobody can make a file in it
    EXPECT_EQ(errorOf([&] { dl->Download(address, destination()); }), PathFileAccess);
    useTemporaryFolder(temporaryFolder());
    EXPECT_EQ(download(u"/raw.mp2"_s), Whole);
}

TEST_F(ControlTest, IgnoresAFailedMove)
{
    makeFile(destination(), "old");
    for (const QString &path : {folder.filePath(u"missing/raw.mp2"_s), destination(), QString()}) {
        EXPECT_EQ(download(address, path), Whole);
        EXPECT_EQ(temporaryFiles().size(), 1);
    }
    EXPECT_EQ(fileBytes(destination()), "old");
}

TEST_F(ControlTest, GoesOnWhileAHandlerRunsAnEventLoop)
{
    QEventLoop inner;
    onNext(&DL::Completed, [&] {
        QCoreApplication::processEvents();
        inner.quit();
    });
    onNext(&DL::Progress, [&] { inner.exec(); });
    dl->Download(address, destination());
    waitFor(1, progress);
    ASSERT_EQ(completed.size(), 1);
    EXPECT_EQ(countsOf(completed.first()), Whole);
    EXPECT_EQ(countsOf(progress.last()), Whole);
    EXPECT_EQ(fileBytes(destination()), Audio);
}

TEST_F(ControlTest, MayBeDestroyedByItsHandlers)
{
    // The first block ends the transfer, so that its end is still to come when Progress is raised.
    station.answer(u"/stream.mp2"_s, {.body = Audio, .framing = Framing::Chunked});
    for (const auto event : {&DL::Progress, &DL::Completed}) {
        dl = std::make_unique<DL>(nullptr, controls::Limits{.mostUnannounced = 1000});
        QSignalSpy destroyed(dl.get(), &QObject::destroyed);
        onNext(event, [this] { dl.reset(); });
        dl->Download(Station::url(u"/stream.mp2"_s), destination());
        waitFor(1, destroyed);
        EXPECT_TRUE(temporaryFiles().isEmpty());
    }
}

TEST_F(ControlTest, AbandonsDownloadsWithoutAnEvent)
{
    onNext(&DL::Progress, [&] { dl->abandonAll(); });
    dl->Download(u"nowhere"_s, destination(), u"2"_s);
    dl->abandonAll();
    dl->Download(address, destination());
    dl->Download(address, destination(), u"2"_s);
    waitFor(1, progress);
    EXPECT_TRUE(dl->PendingDestinations().isEmpty());
    EXPECT_TRUE(temporaryFiles().isEmpty());

    // Whatever was under way would have arrived with this one.
    EXPECT_EQ(download(u"/raw.mp2"_s), Whole);
    EXPECT_EQ(completed.size(), 1);
}
