#include "tests/support/SampleAudio.h"
#include "tests/trust/Rig.h"

#include <QApplication>
#include <QDir>
#include <QNetworkProxy>
#include <QProcess>
#include <QThreadPool>

#include <algorithm>
#include <array>
#include <filesystem>

// trust_soak [--cycles N]: thousands of downloads in one main window, every second one made into an
// SPC file by a real process, every fifth one a failure. Ends with status 1 when memory,
// descriptors, threads or files have grown since the first hundred.

using namespace Qt::StringLiterals;

namespace {

constexpr int warmUp = 100;
constexpr int mostGrowth = 1024; // KiB of memory

// Ten slots take turns. Even ones are made into SPC files.
constexpr int missingSlot = 3;
constexpr int shortSlot = 7;

// A process of its own, so that what the station keeps is not measured.
int runStation(const QByteArray &audio)
{
    testing_support::Station station;
    station.answerOthers({.body = audio});
    station.answer(u"/%1"_s.arg(missingSlot), {.status = 404});
    station.answer(u"/%1"_s.arg(shortSlot),
                   {.body = audio, .cutAfter = 999, .ending = testing_support::Ending::Close});
    std::printf("%d\n", station.port());
    std::fflush(stdout);
    return QCoreApplication::exec();
}

qsizetype entriesOf(const QString &folder)
{
    return std::distance(std::filesystem::directory_iterator(folder.toStdString()), {});
}

class Soak : public trust::Rig
{
public:
    explicit Soak(const QByteArray &audio)
        : m_audio(audio)
    {
        for (int slot = 0; slot < 10; ++slot)
            addTaskAt(host.clock + std::chrono::hours(slot + 1), u"Task %1"_s.arg(slot),
                      u"/%1"_s.arg(slot), u"file%1"_s.arg(slot));
        host.onSleep = {};
        app::sSPCmap = destination({});
        m_station.start(QCoreApplication::applicationFilePath(), {u"--station"_s});
        m_station.waitForReadyRead();
        const auto port = m_station.readLine().trimmed().toUShort();
        QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, port});
        openForm();
    }

    ~Soak() override
    {
        m_station.kill();
        m_station.waitForFinished();
    }

    void run(int cycles)
    {
        std::puts("  cycles  memory/KiB  descriptors  threads  temporary files  audio files");
        Figures first{};
        Figures last{};
        for (int cycle = 1; cycle <= cycles; ++cycle) {
            runCycle((cycle - 1) % 10);
            if (cycle != warmUp && cycle % qMax(warmUp, cycles / 4) != 0)
                continue;
            last = figures();
            first = cycle == warmUp ? last : first;
            std::printf("%8d%12lld%13lld%9lld%17lld%13lld\n", cycle, last[0], last[1], last[2],
                        last[3], last[4]);
        }
#ifndef __SANITIZE_ADDRESS__ // which keeps freed memory for a while, and finds leaks by itself
        expect(last[0] <= first[0] + mostGrowth, u"memory has grown"_s);
#endif
        expect(std::equal(first.begin() + 1, first.end(), last.begin() + 1),
               u"other descriptors, threads or files than at first"_s);
    }

private:
    using Figures = std::array<qsizetype, 5>;

    void runCycle(int slot)
    {
        const bool makesSpc = slot % 2 == 0;
        app::sSPC = makesSpc ? u"1"_s : u"0"_s;
        host.clock = form->DownloadEntry.DownloadTime;
        expect(tickStarts(), u"a slot did not start"_s);
        host.ticks += 1000;
        awaitEnd();
        QThreadPool::globalInstance()->waitForDone(); // idle threads of the start, by and by
        if (makesSpc)
            finishSpcFile();
        host.sleeps.clear();

        const bool fails = slot == missingSlot || slot == shortSlot;
        const QString told = slot == missingSlot ? u"Can not connect"_s : u"Disconnected"_s;
        const QString log = takeLog();
        expect(log == u"Task %1 - "_s.arg(slot) + (fails ? told : u"38.4 kB - 38.40 kB/s"_s), log);
        const auto file = testing_support::fileBytes(destination(u"file%1"_s.arg(slot)));
        expect(file.mid(makesSpc ? 256 : 0) == (fails ? QByteArray() : m_audio),
               u"wrong bytes in slot %1"_s.arg(slot));
    }

    void finishSpcFile()
    {
        while (host.findBatchWindow(platform::BatchWindowKind::Finished) == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        auto *watch = form->findChild<QTimer *>(u"Timer2"_s);
        if (watch->isActive()) // else it has just seen the end by itself
            QMetaObject::invokeMethod(watch, "timeout");
    }

    Figures figures() const
    {
        const auto status = testing_support::fileBytes(u"/proc/self/status"_s);
        const auto memory = status.mid(status.indexOf("VmRSS:")).simplified().split(' ').value(1);
        return {memory.toLongLong(), entriesOf(u"/proc/self/fd"_s), entriesOf(u"/proc/self/task"_s),
                entriesOf(QDir::tempPath()), entriesOf(destination({}))};
    }

    const QByteArray m_audio;
    QProcess m_station;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    const QApplication application(argc, argv);
    const QByteArray audio = testing_support::sampleAudio(100); // 38,400 bytes
    if (QCoreApplication::arguments().contains(u"--station"_s))
        return runStation(audio);
    const QTemporaryDir temporary; // nobody else's
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    Soak soak(audio);
    soak.run(qMax(warmUp, trust::numberOption(u"--cycles"_s, 20'000)));
    return soak.report();
}
