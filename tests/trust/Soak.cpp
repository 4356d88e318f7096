#include "tests/ui/main/SpcCycle.h"

#include <QThreadPool>

#include <filesystem>

// trust_soak [--cycles N]: thousands of downloads in one main window, every second one made into an
// SPC file by a real process, every fifth one a failure. Fails when memory, descriptors, threads or
// files have grown since the first hundred.

namespace {

constexpr int warmUp = 100;
constexpr int mostGrowth = 1024; // KiB of memory

// Ten slots take turns. Even ones are made into SPC files.
class Soak : public SpcCycle
{
protected:
    Soak()
    {
        removeAll();
        for (int slot = 0; slot < 10; ++slot)
            addTaskAt(host.clock + std::chrono::hours(slot + 1), u"Task %1"_s.arg(slot),
                      u"/%1"_s.arg(slot), u"file%1"_s.arg(slot));
        station.answer(u"/3"_s, {.status = 404});
        station.answer(u"/7"_s, {.body = audio, .cutAfter = 9, .ending = Ending::Close});
        host.onSleep = {};
        useTemporaryFolder(host.folder());
        openForm();
        onProgress([this] { ++host.ticks; });
    }

    void runCycle(int slot)
    {
        const bool makesSpc = slot % 2 == 0;
        app::sSPC = makesSpc ? u"1"_s : u"0"_s;
        runDownload();
        if (makesSpc) {
            waitForBatch();
            tick(watch());
        }
        host.sleeps.clear();
        station.forgetRequests();

        const bool fails = slot == 3 || slot == 7;
        ASSERT_EQ(log().size(), 1);
        EXPECT_EQ(log().first().endsWith(u" kB/s"_s), !fails);
        QFile::remove(app::logFilePath());
        const QByteArray file = fileBytes(destination(u"file%1"_s.arg(slot)));
        EXPECT_EQ(file.mid(makesSpc ? 256 : 0), fails ? QByteArray() : audio);
    }

    // Memory in KiB, and how many entries the folders have. Idle threads of the toolkit do not
    // count; the system lists an ended one for a moment.
    std::vector<int> figures() const
    {
        QThreadPool::globalInstance()->waitForDone();
        QTest::qWait(200);
        const QByteArray status = fileBytes(u"/proc/self/status"_s);
        std::vector<int> figures = {
            status.mid(status.indexOf("VmRSS:")).simplified().split(' ')[1].toInt()};
        for (const QString &folder : {u"/proc/self/fd"_s, u"/proc/self/task"_s, host.folder(),
                                      destination({}), spcFolder({})}) {
            const auto entries = std::filesystem::directory_iterator(folder.toStdString());
            figures.push_back(static_cast<int>(std::distance(entries, {})));
        }
        return figures;
    }
};

} // namespace

TEST_F(Soak, LeavesNothingBehind)
{
    const int cycles = QCoreApplication::arguments().value(2, u"20000"_s).toInt();
    std::vector<int> first;
    for (int cycle = 1; cycle <= cycles && !HasFailure(); ++cycle) {
        runCycle((cycle - 1) % 10);
        if (cycle != warmUp && cycle % qMax(warmUp, cycles / 4) != 0)
            continue;
        std::vector<int> now = figures();
        std::printf("%d cycles: %d KiB of memory, %d descriptors, %d threads, "
                    "%d temporary, %d audio and %d SPC files\n",
                    cycle, now[0], now[1], now[2], now[3], now[4], now[5]);
        if (first.empty())
            first = now;
#ifndef __SANITIZE_ADDRESS__ // which keeps freed memory for a while, and finds leaks by itself
        EXPECT_LE(now[0], first[0] + mostGrowth);
#endif
        now[0] = first[0];
        EXPECT_EQ(now, first);
    }
    EXPECT_FALSE(first.empty());
}
