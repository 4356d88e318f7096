#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QTcpServer>

#include <optional>
#include <vector>

namespace testing_support {

/// How an answer tells where its body ends.
enum class Framing { Length, Chunked, UntilClose };

/// What becomes of the connection once everything is sent. One that is kept open serves the next
/// request; after an unfinished answer that is a stall.
enum class Ending { KeepOpen, Close, Reset };

/// One answer of the station, sound or faulty. Every fault is one member away from a sound answer:
///     Answer{.body = audio, .cutAfter = 1000, .ending = Ending::Reset}
struct Answer
{
    int status = 200;
    QByteArrayList headers = {}; ///< further header lines, without line ends
    QByteArray body = {};
    Framing framing = Framing::Length;
    std::optional<qint64> announced = {};   ///< a Content-Length other than the body's
    std::optional<QByteArray> raw = {};     ///< sent in place of head and body
    std::optional<qsizetype> cutAfter = {}; ///< bytes sent after the head, all by default
    Ending ending = Ending::KeepOpen;
    int bytesPerSecond = 0; ///< of the body or of `raw`; 0 for all at once
};

/// One request as it came in.
struct Request
{
    QByteArray target; ///< as sent: a path, or an absolute address to a proxy
    QByteArray head;   ///< the request line and the headers, each with its line end

    /// Path and query of the target.
    QByteArray path() const;
};

/// A sample radio station: an HTTP/1.1 server on the loopback interface that gives a prepared
/// answer per path. As it takes proxy requests for any host, too, addresses can be those of a
/// public server: host name, port 80.
class Station : public QObject
{
public:
    /// Listens on a free port.
    Station();
    ~Station() override;

    quint16 port() const { return m_server.serverPort(); }

    /// An address of that path that reaches the station once requests are routed to it.
    static QString url(const QString &path);

    /// Makes the station the proxy of this process as long as it lives. Names like "localhost" and
    /// "127.0.0.1" never go through a proxy.
    void routeHere();

    /// The answer to requests for that path and query from now on.
    void answer(const QString &path, const Answer &answer);
    /// The answer to every other request; a plain 404 until this is called.
    void answerOthers(const Answer &answer) { m_others = answer; }

    /// Requests in the order of their arrival.
    const std::vector<Request> &requests() const { return m_requests; }
    void forgetRequests() { m_requests.clear(); }

    /// Notes the request and gives its answer.
    const Answer &answerTo(const Request &request);

private:
    QTcpServer m_server;
    QMap<QByteArray, Answer> m_answers;
    Answer m_others = {.status = 404};
    std::vector<Request> m_requests;
    bool m_isProxy = false;
};

} // namespace testing_support
