#include "bench/Measure.h"
#include "platform/Files.h"
#include "platform/NativeHost.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThreadPool>

// concatenation_bench: how long the batch of an SPC file takes for 20 MB of audio, beside the same
// command given to the shell by hand. Both run in turn in one folder.

using namespace Qt::StringLiterals;
using platform::BatchWindowKind;

static constexpr int rounds = 101;
static constexpr int headerSize = 256;
static constexpr int audioSize = 20'000'000;

static void join(const platform::ConcatenationBatch &batch)
{
    platform::host().startBatch(batch, [](const QString &reason) {
        std::fprintf(stderr, "%s\n", qPrintable(reason));
        std::exit(EXIT_FAILURE);
    });
    while (platform::host().findBatchWindow(BatchWindowKind::Finished) == 0)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

static void joinByHand(const QString &folder)
{
    QProcess shell;
    shell.setWorkingDirectory(folder);
    shell.start(u"sh"_s, {u"-c"_s, u"cat header audio > out"_s});
    shell.waitForFinished();
}

int main(int argc, char **argv)
{
    platform::NativeHost host;
    platform::installHost(host);
    const QApplication application(argc, argv);
    const QTemporaryDir temporary;
    const QString folder = temporary.path() + u'/';
    platform::appendToFile(folder + u"header"_s, QByteArray(headerSize, 'h'));
    platform::appendToFile(folder + u"audio"_s, QByteArray(audioSize, 'a'));
    const platform::ConcatenationBatch batch{folder, u"batch"_s, u"header"_s, u"audio"_s,
                                             u"joined"_s};

    std::vector<double> byHand;
    std::vector<double> ours;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        byHand.push_back(milliseconds([&] { joinByHand(folder); }));
        ours.push_back(milliseconds([&] { join(batch); }));
        QThreadPool::globalInstance()->waitForDone(); // what is freed must not slow the next round
        ratios.push_back(ours.back() / byHand.back());
    }
    if (QFile(folder + batch.output).size() != headerSize + audioSize)
        return EXIT_FAILURE;
    print("by hand", "ms", spreadOf(byHand));
    print("batch", "ms", spreadOf(ours));
    print("ratio", "", spreadOf(ratios));
    return EXIT_SUCCESS;
}
