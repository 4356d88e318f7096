#include "controls/DL/Transfer.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QPointer>

#include <limits>

namespace controls {

using namespace Qt::StringLiterals;

// The reader takes a quarter of what may wait for it, so that network and disk work side by side
// while memory stays bounded.
constexpr qint64 ReadBufferBytes = 1024 * 1024;
constexpr qint64 BlockBytes = 256 * 1024;

constexpr int MostRedirects = 10;

// Counts have 32 bits, and one byte past the announced length must still fit.
constexpr qint64 MostAnnounced = std::numeric_limits<qint32>::max() - 1;

// The network stack would open local files, too.
static bool isFetchable(const QUrl &url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

static QNetworkRequest requestFor(const QUrl &url, const Limits &limits)
{
    QNetworkRequest request(url);
    request.setRawHeader("Accept-Encoding", "identity"); // so that the stack decodes nothing
    request.setRawHeader("Cache-Control", "no-cache");
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(MostRedirects);
    // The bounded read buffer holds for HTTP/1 only.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(limits.idle.count()));
    return request;
}

// Only an answer in the 200s brings the file. Anything else (a refusal, a redirect that leads
// nowhere, no answer at all) counts as no connection, whatever page comes with it.
static bool bringsFile(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 200 && status <= 299;
}

// Several lengths that contradict each other are none.
static qint32 announcedLength(const QNetworkReply &reply)
{
    const qint64 length = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
    return length > 0 && length <= MostAnnounced ? static_cast<qint32>(length) : 0;
}

Transfer::Transfer(QNetworkAccessManager &network, const QUrl &url, const Limits &limits)
    : m_limits(limits)
    , m_block(BlockBytes)
{
    if (!isFetchable(url)) {
        QMetaObject::invokeMethod(this, &Transfer::end, Qt::QueuedConnection);
        return;
    }
    m_reply.reset(network.get(requestFor(url, limits)));
    m_reply->setReadBufferSize(ReadBufferBytes);
    // Queued: whoever destroys this transfer from a notice never does so under the reply's feet.
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &Transfer::storeArrived,
            Qt::QueuedConnection);
    connect(m_reply.get(), &QNetworkReply::finished, this, &Transfer::storeLast,
            Qt::QueuedConnection);
    connect(&m_period, &QTimer::timeout, this, &Transfer::endIfSlow);
    m_period.start(limits.period);
}

// A notice may run an event loop of its own (and so come back in here), end this transfer or
// destroy it.
void Transfer::storeArrived()
{
    const QPointer<Transfer> self(this);
    while (self && m_reply) {
        if (!bringsFile(*m_reply))
            return end();
        m_announced = announcedLength(*m_reply);
        const qint64 arrived =
            m_reply->read(m_block.data(), qMin(BlockBytes, mostBytes() - m_stored));
        if (arrived <= 0)
            return;
        const qint64 written = m_file->write(m_block.data(), arrived);
        m_stored += static_cast<qint32>(written);
        if (written > 0)
            Q_EMIT progressed();
        if (self && m_reply && (written < arrived || m_stored >= mostBytes()))
            return end();
    }
}

void Transfer::storeLast()
{
    const QPointer<Transfer> self(this);
    storeArrived();
    if (self && m_reply)
        end();
}

// One byte past the announced length proves that the counts will never agree.
qint64 Transfer::mostBytes() const
{
    return m_announced > 0 ? qint64{m_announced} + 1 : m_limits.mostUnannounced;
}

void Transfer::endIfSlow()
{
    if (m_stored - m_storedBefore < m_limits.leastBytes)
        end();
    else
        m_storedBefore = m_stored;
}

void Transfer::end()
{
    m_period.stop();
    m_reply.reset();
    if (!m_file->close())
        m_stored = 0;
    Q_EMIT ended();
}

} // namespace controls
