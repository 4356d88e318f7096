#include "tests/controls/DL/Downloads.h"

using controls::DL;
using controls::Limits;

namespace {

const QByteArray Audio = QByteArray("0123456789").repeated(300);

Answer announcing(qint64 length, Ending ending = Ending::Close)
{
    return {.body = Audio, .announced = length, .ending = ending};
}

const Answer Chunked = {
    .headers = {"Content-Length: 2000"}, .body = Audio, .framing = Framing::Chunked};
constexpr Limits Slow = {.period = 400ms, .leastBytes = 100, .longestUnannounced = 300ms};
constexpr Limits Short = {.mostUnannounced = 1000};

// What a server sends, and what is counted of it; a file comes of counts that agree.
const std::tuple<const char *, Answer, Counts, Limits> Cases[] = {
    {"created", {.status = 201, .body = Audio}, {3000, 3000}, {}},
    {"chunked, beyond it", Chunked, {2001, 2000}, {}},
    {"the first length that is none", announcing((1LL << 31) - 1), {3000, 0}, {}},
    {"length that wraps to 3000", announcing((1LL << 32) + 3000), {3000, 0}, {}},
    // Each period counts for itself, however much came before.
    {"a burst", announcing(9000, Ending::KeepOpen), {3000, 9000}, Slow},
    {"slow, but steady", {.body = Audio, .bytesPerSecond = 3000}, {3000, 3000}, Slow},
    {"stream of 3 GiB", announcing(3LL << 30), {1000, 0}, Short},
    {"no stream", {.body = Audio}, {3000, 3000}, Short},
};

} // namespace

TEST_F(Downloads, AnswersGiveCountsAndAFileOrDataUntilTheNextDownload)
{
    for (const auto &[name, answer, counts, limits] : Cases) {
        SCOPED_TRACE(name);
        station.answer(u"/raw.mp2"_s, answer);
        dl->setLimits(limits);
        EXPECT_EQ(download(u"/raw.mp2"_s), counts);

        const auto &[downloaded, total] = counts;
        const bool isWhole = downloaded == total && total > 0;
        const QStringList data = temporaryFiles();
        ASSERT_EQ(data.size(), isWhole ? 0 : 1);
        EXPECT_EQ(QFile::exists(destination()), isWhole);
        EXPECT_EQ(fileBytes(isWhole ? destination() : temporaryFolder() + u'/' + data[0]),
                  Audio.left(downloaded));
        ASSERT_EQ(progress.isEmpty(), downloaded == 0);
        EXPECT_TRUE(progress.isEmpty() || countsOf(progress.last()) == counts);
        QFile::remove(destination());
    }
}

TEST_F(Downloads, FromAddressesThatCannotBeFetchedCompleteWithoutData)
{
    for (const QString &address :
         {u""_s, u"raw.mp2"_s, u"http://"_s, u"http:///raw.mp2"_s,
          u"http://station.example:80:80/raw.mp2"_s, u"https:/:80/station.example/raw.mp2"_s,
          u"ftp://station.example:80/raw.mp2"_s, u"file:///etc/passwd"_s, u"data:,audio"_s}) {
        SCOPED_TRACE(address.toStdString());
        EXPECT_EQ(download(address, destination()), Counts(0, 0));
        EXPECT_FALSE(QFile::exists(destination()));
        EXPECT_TRUE(station.requests().empty()) << station.requests().back().target.constData();
    }
}

TEST_F(Downloads, GoPastCachesAndWithoutCookies)
{
    station.answer(
        u"/a%20b.mp2?d=1"_s,
        {.headers = {"Set-Cookie: seen=1", "Cache-Control: max-age=3600"}, .body = Audio});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(download(u":80/a b.mp2?d=1#part"_s), Counts(3000, 3000));
    ASSERT_EQ(station.requests().size(), 2U);
    for (const Request &request : station.requests()) {
        const QByteArray head = request.head.toLower();
        EXPECT_TRUE(head.startsWith("get "));
        EXPECT_TRUE(head.contains("\r\naccept-encoding: identity\r\n"));
        EXPECT_TRUE(head.contains("\r\ncache-control: no-cache\r\n"));
        EXPECT_FALSE(head.contains("cookie:") || head.contains("range:"));
    }
}
