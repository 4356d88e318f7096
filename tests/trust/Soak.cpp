#include "tests/support/SampleAudio.h"
#include "tests/trust/Rig.h"

#include <QApplication>
#include <QDir>
#include <QThreadPool>

#include <algorithm>
#include <filesystem>

// trust_soak [--cycles N]: thousands of downloads in one main window, every second one made into an
// SPC file by a real process, every fifth one a failure. Ends with status 1 when memory,
// descriptors, threads or files have grown since the first hundred.

using namespace Qt::StringLiterals;
using testing_support::Ending;
using testing_support::fileBytes;

static constexpr int warmUp = 100;
static constexpr int mostGrowth = 1024; // KiB of memory

// Memory in KiB, and the entries of the folders.
static std::vector<qint64> figuresOf(const QStringList &folders)
{
    const QByteArray status = fileBytes(u"/proc/self/status"_s);
    const qsizetype memory = status.indexOf("VmRSS:");
    std::vector<qint64> figures = {status.mid(memory + 6, 12).simplified().split(' ')[0].toInt()};
    for (const QString &folder : folders)
        figures.push_back(
            std::distance(std::filesystem::directory_iterator(folder.toStdString()), {}));
    return figures;
}

namespace {

class Soak : public trust::Rig
{
public:
    Soak()
    {
        for (int slot = 0; slot < 10; ++slot)
            addTaskAt(host.clock + std::chrono::hours(slot + 1), u"Task %1"_s.arg(slot),
                      u"/%1"_s.arg(slot), u"file%1"_s.arg(slot));
        host.onSleep = {};
        app::sSPCmap = m_spcFolder.path();
        station.answerOthers({.body = m_audio});
        station.answer(u"/3"_s, {.status = 404});
        station.answer(u"/7"_s, {.body = m_audio, .cutAfter = 9, .ending = Ending::Close});
        openForm();
    }

    bool run(int cycles)
    {
        std::puts(
            "    cycles  memory/KiB descriptors     threads temp. files audio files   SPC files");
        std::vector<qint64> first;
        std::vector<qint64> last;
        for (int cycle = 1; cycle <= cycles; ++cycle) {
            runCycle((cycle - 1) % 10);
            if (cycle != warmUp && cycle % qMax(warmUp, cycles / 4) != 0)
                continue;
            last = figuresOf({u"/proc/self/fd"_s, u"/proc/self/task"_s, QDir::tempPath(),
                              destination({}), m_spcFolder.path()});
            first = first.empty() ? last : first;
            std::printf("%10d", cycle);
            for (const qint64 figure : last)
                std::printf("%12lld", figure);
            std::puts("");
        }
#ifndef __SANITIZE_ADDRESS__ // which keeps freed memory for a while, and finds leaks by itself
        expect(last[0] <= first[0] + mostGrowth, u"memory has grown"_s);
#endif
        expect(std::equal(first.begin() + 1, first.end(), last.begin() + 1),
               u"other descriptors, threads or files than at first"_s);
        std::printf("%10d  faults\n", faults);
        return faults == 0;
    }

private:
    // The slots take turns. Even ones are made into SPC files.
    void runCycle(int slot)
    {
        const bool makesSpc = slot % 2 == 0;
        app::sSPC = makesSpc ? u"1"_s : u"0"_s;
        host.clock = form->DownloadEntry.DownloadTime;
        expect(tickStarts(), u"a slot did not start"_s);
        host.ticks += 1000;
        awaitEnd();
        while (makesSpc && !host.findBatchWindow(platform::BatchWindowKind::Finished))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        auto *watch = form->findChild<QTimer *>(u"Timer2"_s);
        if (watch->isActive())
            QMetaObject::invokeMethod(watch, "timeout");
        host.sleeps.clear();
        station.forgetRequests();
        QThreadPool::globalInstance()->waitForDone(); // idle threads of the window's opening

        const bool fails = slot == 3 || slot == 7;
        const QString told = slot == 3   ? u"Can not connect"_s
                             : slot == 7 ? u"Disconnected"_s
                                         : u"38.4 kB - 38.40 kB/s"_s;
        const QString log = takeLog();
        expect(log == u"Task %1 - "_s.arg(slot) + told, log);
        const QByteArray file = fileBytes(destination(u"file%1"_s.arg(slot)));
        expect(file.mid(makesSpc ? 256 : 0) == (fails ? QByteArray() : m_audio), u"wrong file"_s);
    }

    const QTemporaryDir m_spcFolder;
    const QByteArray m_audio = testing_support::sampleAudio(100); // 38,400 bytes
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    const QApplication application(argc, argv);
    const QTemporaryDir temporary; // nobody else's
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    Soak soak;
    return soak.run(argc == 3 ? qMax(warmUp, std::atoi(argv[2])) : 20'000) ? 0 : 1;
}
