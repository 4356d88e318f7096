#include "tests/support/SampleAudio.h"
#include "tests/support/Station.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace testing_support;

// A station to try the program with, for example as its proxy: a soft tone as an MPEG audio file
// under every path of every host. Prints its port, then runs until it is terminated:
//     sample_station --seconds 60 --rate 40000
//     http_proxy=http://127.0.0.1:PORT ostravelin

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({u"seconds"_s, u"Play time of the file."_s, u"number"_s, u"60"_s});
    parser.addOption({u"rate"_s, u"Bytes a second; 0 for all at once."_s, u"number"_s, u"0"_s});
    parser.process(application);

    Station station;
    station.answerOthers({
        .headers = {"Content-Type: audio/mpeg"},
        .body = sampleAudio(parser.value(u"seconds"_s).toInt() * 1000 / SampleFrameMilliseconds),
        .bytesPerSecond = parser.value(u"rate"_s).toInt(),
    });
    std::signal(SIGTERM, [](int) { std::_Exit(EXIT_SUCCESS); });
    std::printf("%d\n", station.port());
    std::fflush(stdout);
    return QCoreApplication::exec();
}
