#include "controls/DL/Address.h"
#include "tests/controls/DL/Downloads.h"

#include <string>
#include <vector>

static const QByteArray Audio = QByteArray("0123456789").repeated(300);

struct AnswerCase
{
    const char *name;
    Answer answer;
    qint32 downloaded;
    qint32 total;
    QByteArray file = {}; ///< at the destination; empty for none
};

static void PrintTo(const AnswerCase &row, std::ostream *out)
{
    *out << row.name;
}

class AnswersTest : public Downloads, public testing::WithParamInterface<AnswerCase>
{};

TEST_P(AnswersTest, GivesCountsAndFile)
{
    const AnswerCase &row = GetParam();
    station.answer(u"/raw.mp2"_s, row.answer);
    station.answer(u"/elsewhere.mp2"_s, {.body = Audio});
    station.answer(u"/elsewhere-chunked.mp2"_s, {.body = Audio, .framing = Framing::Chunked});
    controls::DL dl;
    QSignalSpy progress(&dl, &controls::DL::Progress);

    EXPECT_EQ(download(dl, Station::url(u"/raw.mp2"_s), destination()),
              (Counts{row.downloaded, row.total}));

    EXPECT_EQ(contents(destination()).value_or(QByteArray()), row.file);
    EXPECT_EQ(temporaryFiles().size(), row.file.isEmpty() ? 1 : 0);
    if (row.downloaded == 0)
        EXPECT_TRUE(progress.isEmpty());
    else
        EXPECT_EQ(countsOf(progress.last()), (Counts{row.downloaded, row.total}));
}

static Answer redirect(const QByteArray &target)
{
    return {.status = 302, .headers = {"Location: " + target}, .body = "Moved"};
}

static const std::vector<AnswerCase> Answers = {
    {"Whole", {.body = Audio}, 3000, 3000, Audio},
    {"WholeThenClosed", {.body = Audio, .ending = Ending::Close}, 3000, 3000, Audio},
    {"Empty", {}, 0, 0},
    {"LessThanAnnounced", {.body = Audio, .announced = 4000, .ending = Ending::Close}, 3000, 4000},
    {"BrokenOff", {.body = Audio, .cutAfter = 10, .ending = Ending::Close}, 10, 3000},
    {"NothingAfterTheHead", {.body = Audio, .cutAfter = 0, .ending = Ending::Close}, 0, 3000},
    // HTTP ends a body at its announced length; what follows belongs to nothing.
    {"MoreThanAnnounced",
     {.body = Audio, .announced = 2000, .ending = Ending::Close},
     2000,
     2000,
     Audio.left(2000)},
    {"NoLength", {.body = Audio, .framing = Framing::UntilClose, .ending = Ending::Close}, 3000, 0},
    {"Chunked", {.body = Audio, .framing = Framing::Chunked}, 3000, 0},
    {"ChunkedWithItsLength",
     {.headers = {"Content-Length: 3000"}, .body = Audio, .framing = Framing::Chunked},
     3000,
     3000,
     Audio},
    {"ChunkedBeyondItsLength",
     {.headers = {"Content-Length: 2000"}, .body = Audio, .framing = Framing::Chunked},
     2001,
     2000},
    {"ChunkedShortOfItsLength",
     {.headers = {"Content-Length: 4000"}, .body = Audio, .framing = Framing::Chunked},
     3000,
     4000},
    {"TwoLengths",
     {.headers = {"Content-Length: 4000"}, .body = Audio, .ending = Ending::Close},
     3000,
     0},
    {"TheSameLengthTwice", {.headers = {"Content-Length: 3000"}, .body = Audio}, 3000, 3000, Audio},
    {"LengthIsNoNumber",
     {.headers = {"Content-Length: many"},
      .body = Audio,
      .framing = Framing::UntilClose,
      .ending = Ending::Close},
     3000,
     0},
    {"NegativeLength", {.body = Audio, .announced = -3000, .ending = Ending::Close}, 3000, 0},
    {"LengthOf2GiB", {.body = Audio, .announced = 1LL << 31, .ending = Ending::Close}, 3000, 0},
    {"LengthThatWrapsTo3000",
     {.body = Audio, .announced = (1LL << 32) + 3000, .ending = Ending::Close},
     3000,
     0},
    {"NotDecoded", {.headers = {"Content-Encoding: gzip"}, .body = Audio}, 3000, 3000, Audio},
    {"Created", {.status = 201, .body = Audio}, 3000, 3000, Audio},
    {"NoContent", {.status = 204, .framing = Framing::UntilClose}, 0, 0},
    {"APartUnasked", {.status = 206, .body = Audio}, 0, 0},
    {"NotModified", {.status = 304}, 0, 0},
    {"Unauthorized",
     {.status = 401, .headers = {"WWW-Authenticate: Basic realm=\"x\""}, .body = Audio},
     0,
     0},
    {"NotFound", {.status = 404, .body = Audio}, 0, 0},
    {"NotFoundWithoutEnd", {.status = 404, .body = Audio, .announced = 1'000'000}, 0, 0},
    {"ProxyRefuses", {.status = 407, .body = Audio}, 0, 0},
    {"ServerError", {.status = 500, .body = Audio, .framing = Framing::Chunked}, 0, 0},
    {"ContinueFirst",
     {.raw = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\naudio"},
     5,
     5,
     "audio"},
    {"OldProtocol",
     {.raw = "HTTP/1.0 200 OK\r\ncontent-length:5\r\n\r\naudio", .ending = Ending::Close},
     5,
     5,
     "audio"},
    {"AnotherProtocol", {.raw = "ICY 200 OK\r\n\r\naudio", .ending = Ending::Close}, 0, 0},
    {"HalfAHead", {.raw = "HTTP/1.1 200 OK\r\nContent-Le", .ending = Ending::Close}, 0, 0},
    {"Silence", {.raw = "", .ending = Ending::Close}, 0, 0},
    {"ResetAtOnce", {.raw = "", .ending = Ending::Reset}, 0, 0},
    {"Redirect", redirect("/elsewhere.mp2"), 3000, 3000, Audio},
    {"RedirectToAnotherHost", redirect("http://other.example/elsewhere.mp2"), 3000, 3000, Audio},
    {"RedirectToNoLength", redirect("/elsewhere-chunked.mp2"), 3000, 0},
    {"RedirectToNotFound", redirect("/missing.mp2"), 0, 0},
    {"RedirectInACircle", redirect("/raw.mp2"), 0, 0},
    {"RedirectWithoutTarget", {.status = 302, .body = Audio}, 0, 0},
    {"RedirectWithoutHost", redirect("http:///elsewhere.mp2"), 0, 0},
    {"RedirectToLocalFile", redirect("file:///etc/passwd"), 0, 0},
    {"RedirectToAnotherScheme", redirect("ftp://station.example/elsewhere.mp2"), 0, 0},
    {"RedirectToData", redirect("data:,audio"), 0, 0},
};

INSTANTIATE_TEST_SUITE_P(Table, AnswersTest, testing::ValuesIn(Answers),
                         [](const auto &row) { return std::string(row.param.name); });

class AddressesTest : public Downloads
{};

TEST_F(AddressesTest, FollowsTenRedirects)
{
    for (int i = 1; i <= 11; ++i)
        station.answer(u"/%1"_s.arg(i), redirect("/" + QByteArray::number(i - 1)));
    station.answer(u"/0"_s, {.body = Audio});
    controls::DL dl;

    EXPECT_EQ(download(dl, Station::url(u"/11"_s), destination()), (Counts{0, 0}));
    EXPECT_EQ(station.requests().size(), 11U);
    EXPECT_EQ(download(dl, Station::url(u"/10"_s), destination()), (Counts{3000, 3000}));
}

TEST(RedirectTest, NeverLeadsDownFromHttpsToHttp)
{
    const QUrl open(u"http://station.example/"_s);
    const QUrl secure(u"https://station.example/"_s);
    EXPECT_TRUE(controls::mayLeadTo(open, open));
    EXPECT_TRUE(controls::mayLeadTo(open, secure));
    EXPECT_TRUE(controls::mayLeadTo(secure, secure));
    EXPECT_FALSE(controls::mayLeadTo(secure, open));
}

TEST_F(AddressesTest, ThatCannotBeFetchedCompleteWithoutData)
{
    const QString secret = folder.filePath(u"secret"_s);
    QFile(secret).open(QIODevice::NewOnly | QIODevice::WriteOnly);
    quint16 closedPort = 0;
    {
        const Station gone;
        closedPort = gone.port();
    }
    controls::DL dl;
    for (const QString &address : {
             u""_s,
             u"raw.mp2"_s,
             u"http://"_s,
             u"http:///raw.mp2"_s,
             u"http://station.example:80:80/raw.mp2"_s,
             u"https:/:80/station.example/raw.mp2"_s,
             u"ftp://station.example:80/raw.mp2"_s,
             u"file://"_s + secret,
             u"data:,audio"_s,
             u"http://127.0.0.1:%1/raw.mp2"_s.arg(closedPort),
         }) {
        SCOPED_TRACE(address.toStdString());
        EXPECT_EQ(download(dl, address, destination()), (Counts{0, 0}));
        EXPECT_FALSE(contents(destination()));
        EXPECT_TRUE(station.requests().empty()) << station.requests().back().target.constData();
    }
}

TEST_F(AddressesTest, AreFetchedPastCachesAndWithoutCookies)
{
    station.answer(u"/a b.mp2?d=1"_s, {});
    station.answer(
        u"/a%20b.mp2?d=1"_s,
        {.headers = {"Set-Cookie: seen=1", "Cache-Control: max-age=3600"}, .body = Audio});
    controls::DL dl;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(download(dl, u"http://station.example:80/a b.mp2?d=1#part"_s, destination()),
                  (Counts{3000, 3000}));
    }
    ASSERT_EQ(station.requests().size(), 2U);
    for (const auto &request : station.requests()) {
        EXPECT_EQ(request.method, "GET");
        EXPECT_EQ(request.headers.value("accept-encoding"), "identity");
        EXPECT_EQ(request.headers.value("cache-control"), "no-cache");
        EXPECT_FALSE(request.headers.contains("cookie"));
        EXPECT_FALSE(request.headers.contains("range"));
    }
}
