#include "tests/ui/main/MainFormTest.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QNetworkProxy>
#include <QVersionNumber>

#include <vector>

using controls::Limits;
using enum Ending;
using enum Framing;

namespace {

enum class Route { Proxy, ClosedPort, Direct };

struct Behaviour
{
    const char *name;
    std::vector<Answer> answers; ///< each to one download
    QString told;                ///< in the log
    QByteArray file = "old";     ///< the task's, afterwards
    Limits limits = {};
    Route route = Route::Proxy;
    QByteArray host = "station.example";
};

const QString NoConnection = u"Hourly - Can not connect"_s;
const QString BrokenOff = u"Hourly - Disconnected"_s;
const QString Fetched = u"Hourly - %1 kB - %2 kB/s"_s;

constexpr Limits Idle = {.idle = 300ms};
constexpr Limits Slow = {.period = 400ms, .leastBytes = 2000};
constexpr Limits Brief = {.longestUnannounced = 300ms};
const QByteArray Old = "old";
const QByteArray Audio = QByteArray("0123456789").repeated(300);
const QByteArray Most = QByteArray(21'474'836, 'x');
const QByteArray Head = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n";
const QByteArray Whole = Head + "\r\naudio";
const QByteArray Chunks = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\naudio\r\n";
const QByteArray Wait = "HTTP/1.1 100 Continue\r\n\r\n";
const QByteArray Hints = "HTTP/1.1 103 Early Hints\r\nLink: </>\r\n\r\n";
const QByteArray Processing = "HTTP/1.1 102 Processing\r\n\r\n";
// Of the network libraries that the program is used with, 6.4 takes these for the answer itself.
const bool passesOverHints = QLibraryInfo::version() >= QVersionNumber(6, 8);
// The resolver turns a name of this length down without asking anybody.
const QByteArray Unknown = QByteArray("no-such-host.").repeated(25) + "example";

const auto raw = [](const QByteArray &bytes, Ending ending = Close) {
    return Answer{.raw = bytes, .ending = ending};
};
const auto cut = [](qsizetype bytes, Ending ending) {
    return Answer{.body = Audio, .cutAfter = bytes, .ending = ending};
};
const auto with = [](const QByteArray &header, Framing framing = UntilClose, Ending end = Close) {
    return Answer{.headers = {header}, .body = Audio, .framing = framing, .ending = end};
};
const auto status = [](int code, const QByteArray &header = "X: y") {
    return Answer{.status = code, .headers = {header}, .body = Audio};
};
const auto to = [](int code, const QByteArray &target = "/b.mp2") {
    return status(code, "Location: " + target);
};

const Behaviour Behaviours[] = {
    {"refused", {status(200)}, NoConnection, Old, {}, Route::ClosedPort},
    {"unknown host", {status(200)}, NoConnection, Old, {}, Route::Direct, Unknown},
    {"IPv6 number", {status(200)}, Fetched, Audio, {}, Route::Proxy, "[2001:db8::1]"},
    {"closed in the head", {raw(""), raw("HTTP/1"), raw(Head.chopped(9)), raw(Head)}, NoConnection},
    {"reset in the head", {raw("", Reset), raw("HTTP/1", Reset), raw(Head, Reset)}, NoConnection},
    {"stalls in the head", {raw("", KeepOpen), raw(Head, KeepOpen)}, NoConnection, Old, Idle},
    {"drips its head", {{.raw = Head.repeated(9), .bytesPerSecond = 99}}, NoConnection, Old, Slow},
    {"ends before the body", {cut(0, Close), cut(0, Reset)}, NoConnection},
    {"stalls before the body", {cut(0, KeepOpen)}, NoConnection, Old, Idle},
    {"closed in the body", {cut(1, Close), cut(1500, Close), cut(2999, Close)}, BrokenOff},
    {"reset in the body", {cut(1, Reset), cut(1500, Reset), cut(2999, Reset)}, BrokenOff},
    {"stalls in the body", {cut(1, KeepOpen), cut(2999, KeepOpen)}, BrokenOff, Old, Idle},
    {"ends after the body", {cut(3000, Close), cut(3000, Reset)}, Fetched, Audio},
    {"0 bytes", {{}}, NoConnection},
    {"1 byte", {{.body = "a"}}, Fetched, "a"},
    {"the most", {{.body = Most}}, Fetched, Most},
    {"short", {with("Content-Length: 4000")}, BrokenOff},
    {"long", {with("Content-Length: 2000")}, Fetched, Audio.left(2000)},
    {"long, kept open", {{.body = Audio, .announced = 2000}}, Fetched, Audio.left(2000)},
    {"another answer, unasked", {raw(Whole + Whole, KeepOpen)}, Fetched, "audio"},
    {"no length", {with("X: y"), with("Content-Length: x")}, BrokenOff},
    {"bad lengths", {with("Content-Length: -1"), with("Content-Length: 2147483648")}, BrokenOff},
    {"live", {with("X: y", UntilClose, KeepOpen), raw(Chunks, KeepOpen)}, BrokenOff, Old, Brief},
    {"live, but silent", {{.framing = UntilClose}}, NoConnection, Old, Brief},
    {"equal lengths", {with("Content-Length: 3000", Length)}, Fetched, Audio},
    {"differing lengths", {with("Content-Length: 4000", Length)}, BrokenOff},
    {"chunked with its length", {with("Content-Length: 3000", Chunked)}, Fetched, Audio},
    {"chunked", {with("X: y", Chunked), with("Content-Length: 2000", Chunked)}, BrokenOff},
    {"chunks without end", {raw(Chunks), raw(Chunks, Reset)}, BrokenOff},
    {"chunks, then it stalls", {raw(Chunks, KeepOpen)}, BrokenOff, Old, Idle},
    {"chunks of junk", {raw(Chunks + "junk\r\n0\r\n\r\n"), raw(Chunks + "-5\r\n\r\n")}, BrokenOff},
    {"gzip", {with("Content-Encoding: gzip", Length)}, Fetched, Audio},
    {"gzip, chunked", {with("Content-Encoding: gzip", Chunked)}, BrokenOff},
    {"1xx before the answer", {raw(Wait + Whole), raw(Wait + Wait + Whole)}, Fetched, "audio"},
    {"100 alone", {raw(Wait, KeepOpen)}, NoConnection, Old, Idle},
    {"102, 103 before the answer",
     {raw(Processing + Whole), raw(Hints + Whole), raw(Processing + Hints + Whole)},
     passesOverHints ? Fetched : NoConnection,
     passesOverHints ? "audio" : Old},
    {"no content", {{.status = 204, .framing = UntilClose}, {.status = 304}}, NoConnection},
    {"no file", {status(101), status(206), status(400), status(401), status(404)}, NoConnection},
    {"error", {status(407), status(429), status(500), status(503), status(999)}, NoConnection},
    {"404 without its end", {{.status = 404, .body = Audio, .announced = 9999}}, NoConnection},
    {"redirect", {to(301, "/9.mp2"), to(302), to(303), to(307), to(308)}, Fetched, Audio},
    {"to another host", {to(302, "http://another.example/b.mp2")}, Fetched, Audio},
    {"to another scheme", {to(302, "https://a/b"), to(302, "file:///etc/passwd")}, NoConnection},
    {"in a circle, too often, to nowhere",
     {to(302, "/a.mp2"), to(302, "/10.mp2"), to(302, ""), status(302)},
     NoConnection},
    // Of a head that the network library cannot read it gives the body alone.
    {"1 MB in a header", {raw(Head + "X: " + Audio.repeated(350) + "\r\n\r\nabc")}, BrokenOff},
    {"10,000 headers", {raw(Head + QByteArray("X: y\r\n").repeated(9999) + "\r\nabc")}, BrokenOff},
    {"a header without a colon", {raw(Head + "header\r\n\r\naudio")}, BrokenOff},
    {"no CR", {raw("HTTP/1.1 200 OK\nContent-Length: 5\n\naudio")}, Fetched, "audio"},
    {"bad status", {raw("HTTP/1.1 -200 OK\r\n\r\na"), raw("HTTP/1.1 x\r\n\r\na")}, NoConnection},
    {"no HTTP/1", {raw("ICY 200 OK\r\n\r\naudio"), raw("audio alone\r\n\r\n")}, NoConnection},
    {"HTTP/1.0", {raw("HTTP/1.0 200 OK\r\ncontent-length:5\r\n\r\naudio")}, Fetched, "audio"},
    {"more than the most", {{.body = Most + 'x'}}, u"Overflow"_s},
};

// All of them, one after the other, meet one run of the program.
class FaultyServers : public MainFormTest
{
protected:
    FaultyServers()
    {
        useTemporaryFolder(host.folder());
        addTask(u"Hourly"_s, {}, u"news.mp2"_s);
        addSlot(u"Hourly"_s, 3, 11);
        station.answer(u"/b.mp2"_s, {.body = Audio});
        station.answer(u"/0.mp2"_s, {.body = Audio});
        for (int left = 1; left <= 10; ++left)
            station.answer(u"/%1.mp2"_s.arg(left),
                           to(302, "/" + QByteArray::number(left - 1) + ".mp2"));
        start();
    }

    void meet(const Behaviour &row, const Answer &answer)
    {
        makeFile(destination(u"news.mp2"_s), Old);
        setTasks(u"Download_adres = 'http://%1/a.mp2'"_s.arg(QString::fromLatin1(row.host)));
        form->ZoekVolgende();
        station.answer(u"/a.mp2"_s, answer);
        takeRoute(row.route);
        expectDownload(row.told, row.file, row.limits);
        EXPECT_LE(temporaryFiles(), 1); // of a broken download
    }

    // The next slot, of this run or of a new one when the program has ended.
    void goOn()
    {
        if (!host.endings.isEmpty())
            start();
        station.answer(u"/a.mp2"_s, {.body = "good"});
        station.routeHere();
        expectDownload(Fetched, "good");
        EXPECT_EQ(temporaryFiles(), 0);
    }

private:
    void start()
    {
        form.reset();
        openForm();
        onProgress([this] { host.ticks = 1000; }); // a download takes a second
    }

    void takeRoute(Route route)
    {
        if (route == Route::Proxy)
            return;
        QNetworkProxy proxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, Station().port()); // closed
        QNetworkProxy::setApplicationProxy(route == Route::Direct ? QNetworkProxy::NoProxy : proxy);
    }

    // Runs the pending download until the next one was looked up or the error report shows.
    void expectDownload(const QString &told, const QByteArray &file, const Limits &limits = {})
    {
        formControl<controls::DL>()->setLimits(limits);
        const qsizetype linesBefore = log().size();
        host.ticks = 0;
        host.clock = form->DownloadEntry.DownloadTime;
        tick();
        EXPECT_TRUE(QTest::qWaitFor([&] { return log().size() > linesBefore; }, 20'000));
        const double kB = static_cast<double>(file.size()) / 1000;
        const QString sizeAndSpeed =
            Fetched.arg(QString::number(kB, 'g', 15), QLocale::system().toString(kB, 'f', 2));
        EXPECT_EQ(log().mid(linesBefore).join(u'\n'), told == Fetched ? sizeAndSpeed : told);
        EXPECT_TRUE(fileBytes(destination(u"news.mp2"_s)) == file);
        EXPECT_EQ(destinationFiles(), QStringList{u"news.mp2"_s});
    }

    qsizetype temporaryFiles() const { return QDir(host.folder()).entryList(QDir::Files).size(); }
};

} // namespace

TEST_F(FaultyServers, NeverStopTheSchedule)
{
    for (const Behaviour &row : Behaviours) {
        for (const Answer &answer : row.answers) {
            SCOPED_TRACE(testing::Message() << row.name << ", " << &answer - row.answers.data());
            meet(row, answer);
            goOn();
        }
    }
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 6: Overflow"_s});
}
