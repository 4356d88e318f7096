#include "controls/DL/DL.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

// A figure in KiB from the process's own status, by its name there.
static long memory(const QByteArray &name)
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.simplified().split(' ').value(1).toLong();
    }
    return 0;
}

// download_bench ADDRESS FILE: downloads as the program does, and prints the seconds from Download
// to Completed and the peak memory over that at the start, in KiB. Run by `bench/download`.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: download_bench ADDRESS FILE\n", stderr);
        return EXIT_FAILURE;
    }

    controls::DL dl;
    QElapsedTimer clock;
    const long before = memory("VmRSS");
    QObject::connect(&dl, &controls::DL::Completed, &dl, [&](qint32 downloaded, qint32 total) {
        std::printf("%.6f %ld\n", static_cast<double>(clock.nsecsElapsed()) / 1e9,
                    memory("VmHWM") - before);
        QApplication::exit(downloaded >= 1 && downloaded == total ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    clock.start();
    dl.Download(QFile::decodeName(argv[1]), QFile::decodeName(argv[2]));
    return QApplication::exec();
}
