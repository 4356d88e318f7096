#include "tests/support/Station.h"

#include "tests/support/System.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <chrono>

namespace testing_support {

using namespace std::chrono_literals;

constexpr int SlicesPerSecond = 20;

static QByteArray headOf(const Answer &answer)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\n";
    if (answer.framing == Framing::Chunked)
        head += "Transfer-Encoding: chunked\r\n";
    const qint64 length = answer.announced.value_or(answer.body.size());
    if (answer.framing == Framing::Length)
        head += "Content-Length: " + QByteArray::number(length) + "\r\n";
    for (const QByteArray &line : answer.headers)
        head += line + "\r\n";
    return head + "\r\n";
}

static QByteArray bodyOf(const Answer &answer)
{
    const QByteArray size = QByteArray::number(answer.body.size(), 16);
    const QByteArray body = answer.framing == Framing::Chunked
                                ? size + "\r\n" + answer.body + "\r\n0\r\n\r\n"
                                : answer.body;
    return body.left(answer.cutAfter.value_or(body.size()));
}

// Serves one client: its requests one after the other, each answer at its own speed.
class Client : public QObject
{
public:
    Client(QTcpSocket *socket, Station &station)
        : QObject(socket)
        , m_socket(*socket)
        , m_station(station)
    {
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); // head and body are two writes
        m_slice.setInterval(1000ms / SlicesPerSecond);
        connect(&m_slice, &QTimer::timeout, this, [this] { send(m_bytesPerSlice); });
        connect(socket, &QTcpSocket::readyRead, this, &Client::take);
        connect(socket, &QTcpSocket::bytesWritten, this, &Client::endWhenSent);
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }

private:
    void take()
    {
        m_received += m_socket.readAll();
        qsizetype end = 0;
        while ((end = m_received.indexOf("\r\n\r\n")) >= 0) {
            const QByteArray head = m_received.left(end + 2);
            m_received.remove(0, end + 4);
            start(m_station.answerTo({head.split(' ').value(1), head}));
        }
    }

    void start(const Answer &answer)
    {
        m_ending = answer.ending;
        m_socket.write(answer.raw ? QByteArray() : headOf(answer));
        m_unsent = answer.raw ? *answer.raw : bodyOf(answer);
        m_bytesPerSlice = qMax(1, answer.bytesPerSecond / SlicesPerSecond);
        if (answer.bytesPerSecond > 0)
            m_slice.start();
        else
            send(m_unsent.size());
    }

    void send(qsizetype size)
    {
        m_socket.write(m_unsent.left(size));
        m_unsent.remove(0, size);
        if (m_unsent.isEmpty()) {
            m_slice.stop();
            endWhenSent();
        }
    }

    void endWhenSent()
    {
        if (!m_unsent.isEmpty() || m_socket.bytesToWrite() > 0)
            return;
        if (m_ending == Ending::Close)
            return m_socket.disconnectFromHost();
        if (m_ending != Ending::Reset)
            return;
        resetAtEnd(m_socket.socketDescriptor());
        m_socket.abort();
    }

    QTcpSocket &m_socket;
    Station &m_station;
    QByteArray m_received;
    QByteArray m_unsent;
    Ending m_ending = Ending::KeepOpen;
    int m_bytesPerSlice = 0;
    QTimer m_slice;
};

QByteArray Request::path() const
{
    return QUrl::fromEncoded(target).toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority);
}

Station::Station()
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = m_server.nextPendingConnection())
            new Client(socket, *this);
    });
}

Station::~Station()
{
    if (m_isProxy)
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
}

QString Station::url(const QString &path)
{
    return QLatin1String("http://station.example") + path;
}

void Station::routeHere()
{
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::HttpProxy, m_server.serverAddress().toString(), port()));
    m_isProxy = true;
}

void Station::answer(const QString &path, const Answer &answer)
{
    m_answers.insert(path.toUtf8(), answer);
}

const Answer &Station::answerTo(const Request &request)
{
    m_requests.push_back(request);
    const auto answer = m_answers.constFind(request.path());
    return answer == m_answers.constEnd() ? m_others : *answer;
}

} // namespace testing_support
