#include "tests/support/SampleAudio.h"
#include "tests/support/Station.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::StringLiterals;

// A station to try the program with, for example as its proxy:
//     sample_station --port 8080 --rate 40000 &
//     http_proxy=http://127.0.0.1:8080 ostravelin

static std::optional<int> number(const QCommandLineParser &parser, const QString &option, int least,
                                 int most)
{
    bool isNumber = false;
    const int value = parser.value(option).toInt(&isNumber);
    return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Serves a soft tone as an MPEG audio file under every path of every host, as web server "
        u"and as proxy,\non the loopback interface. Prints its port, then runs until it is "
        u"terminated."_s);
    parser.addHelpOption();
    parser.addOption({u"port"_s, u"Port to listen on; 0 for any free one."_s, u"number"_s, u"0"_s});
    parser.addOption({u"seconds"_s, u"Play time of the file, 1 to 36000."_s, u"number"_s, u"60"_s});
    parser.addOption({u"rate"_s, u"Bytes a second; 0 for all at once."_s, u"number"_s, u"0"_s});
    parser.process(application);

    const auto port = number(parser, u"port"_s, 0, 65535);
    const auto seconds = number(parser, u"seconds"_s, 1, 36000);
    const auto rate = number(parser, u"rate"_s, 0, 1'000'000'000);
    if (!port || !seconds || !rate || !parser.positionalArguments().isEmpty()) {
        std::fputs(qPrintable(parser.helpText()), stderr);
        return EXIT_FAILURE;
    }

    testing_support::Station station(static_cast<quint16>(*port));
    if (!station.isListening()) {
        std::fprintf(stderr, "Port %d is not free.\n", *port);
        return EXIT_FAILURE;
    }
    station.answerOthers({
        .headers = {"Content-Type: audio/mpeg"},
        .body = testing_support::sampleAudio(*seconds * 1000 /
                                             testing_support::SampleFrameMilliseconds),
        .bytesPerSecond = *rate,
    });
    std::signal(SIGTERM, [](int) { std::_Exit(EXIT_SUCCESS); });
    std::signal(SIGINT, [](int) { std::_Exit(EXIT_SUCCESS); });
    std::printf("%d\n", station.port());
    std::fflush(stdout);
    return QCoreApplication::exec();
}
