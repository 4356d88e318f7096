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

    void onNext(auto event, const std::function<void()> &act) const
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
    EXPECT_STREQ(DL::staticMetaObject.classInfo(0).value(), "Ostravelin.DL");
}

TEST_F(ControlTest, TellsOfEveryBlockInOrderAndBeforeItStoresTheFile)
{
    onNext(&DL::Storing, [this] {
        EXPECT_EQ(countsOf(progress.last()), Whole);
        EXPECT_FALSE(QFile::exists(destination()));
    });
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
    EXPECT_EQ(storing.size(), 1);
}

TEST_F(ControlTest, RunsDownloadsOfDifferentIdsAtOnceAndTellsThemApart)
{
    // More of them than the network library makes connections to one host.
    station.answerOthers({.body = Audio, .bytesPerSecond = 10 * Size});
    station.answer(u"/broken"_s, {.body = Audio, .cutAfter = 10, .ending = Ending::Close});
    QMap<QString, QString> pending;
    for (const QString &id : u"broken 1 2 3 4 5 6 7"_s.split(u' ')) {
        pending[id] = destination() + id;
        dl->Download(Station::url(u'/' + id), pending[id], id);
    }
    EXPECT_EQ(dl->PendingDestinations(), pending);
    waitFor(8, completed);
    QMap<QString, Counts> told;
    for (const auto &event : progress)
        told[event[2].toString()] = countsOf(event);
    for (const auto &event : completed) {
        const QString id = event[2].toString();
        SCOPED_TRACE(id.toStdString());
        const bool isWhole = id != u"broken"_s;
        EXPECT_EQ(countsOf(event), isWhole ? Whole : Counts(10, Size));
        EXPECT_EQ(countsOf(event), told[id]);
        EXPECT_EQ(fileBytes(pending.take(id)), isWhole ? Audio : QByteArray());
    }
    EXPECT_TRUE(pending.isEmpty() && dl->PendingDestinations().isEmpty());
    EXPECT_EQ(storing.size(), 7);
}

TEST_F(ControlTest, RefusesAPendingIdUntilItsHandlersRunAndOneWithoutATemporaryFile)
{
    const QString file = folder.filePath(u"file"_s); // nobody can make a file in it
    makeFile(file, {});
    useTemporaryFolder(file);
    EXPECT_EQ(errorOf([&] { dl->Download(address, destination()); }), PathFileAccess);
    useTemporaryFolder(temporaryFolder());
    onNext(&DL::Completed, [&] { dl->Download(address, second); });
    dl->Download(address, destination());
    EXPECT_EQ(errorOf([&] { dl->Download(address, destination()); }), DuplicateKey);
    waitFor(2, completed);
    EXPECT_EQ(station.requests().size(), 2U);
    EXPECT_EQ(fileBytes(destination()), Audio);
    EXPECT_EQ(fileBytes(second), Audio);
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
    const auto destroyedBy = [this](auto event, const QString &path) {
        dl = std::make_unique<DL>(nullptr, controls::Limits{.mostUnannounced = 1000});
        QSignalSpy destroyed(dl.get(), &QObject::destroyed);
        onNext(event, [this] { dl.reset(); });
        dl->Download(Station::url(path), destination());
        waitFor(1, destroyed);
        EXPECT_TRUE(temporaryFiles().isEmpty());
    };
    destroyedBy(&DL::Progress, u"/stream.mp2"_s);
    destroyedBy(&DL::Completed, u"/stream.mp2"_s);
    destroyedBy(&DL::Storing, u"/raw.mp2"_s);
    EXPECT_FALSE(QFile::exists(destination()));
}

TEST_F(ControlTest, AbandonsDownloadsWithoutAnEvent)
{
    dl->Download(u"nowhere"_s, destination(), u"2"_s);
    dl->abandonAll();
    const auto abandonedBy = [&](auto event, QSignalSpy &events) {
        onNext(event, [&] { dl->abandonAll(); });
        dl->Download(address, destination());
        dl->Download(address, destination(), u"2"_s);
        waitFor(1, events);
        EXPECT_TRUE(dl->PendingDestinations().isEmpty());
        EXPECT_TRUE(temporaryFiles().isEmpty());
    };
    abandonedBy(&DL::Progress, progress);
    abandonedBy(&DL::Storing, storing);

    // Whatever was under way would have arrived with this one.
    EXPECT_TRUE(completed.isEmpty());
    EXPECT_EQ(download(u"/raw.mp2"_s), Whole);
    EXPECT_EQ(completed.size(), 1);
}
