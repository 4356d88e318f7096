#include "controls/DL/Transfer.h"

#include "controls/DL/Address.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QPointer>

#include <algorithm>
#include <limits>

namespace controls {

// The reader takes an eighth of what may wait for it, so that network and disk work side by side
// while memory stays bounded. Half of this costs a tenth of the speed.
constexpr qint64 ReadBufferBytes = qint64{2048} * 1024;
constexpr qint64 BlockBytes = qint64{256} * 1024;

constexpr int MostRedirects = 10;

// Counts have 32 bits, and one byte past the announced length must still fit.
constexpr qint64 MostAnnounced = std::numeric_limits<qint32>::max() - 1;

static QNetworkRequest requestFor(const QUrl &url, const Limits &limits)
{
    QNetworkRequest request(url);
    request.setRawHeader("Accept-Encoding", "identity"); // so that the stack decodes nothing
    request.setRawHeader("Cache-Control", "no-cache");
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Left to itself, the stack now and then asks for a redirected address twice.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    // The bounded read buffer holds for HTTP/1 only.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(limits.idle.count()));
    return request;
}

static int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

static bool hasAnswered(const QNetworkReply &reply)
{
    return statusOf(reply) != 0 || reply.isFinished();
}

// Where the answer sends us on to; empty when nowhere.
static QUrl redirectTarget(const QNetworkReply &reply)
{
    const QUrl target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    return target.isEmpty() ? target : reply.url().resolved(target);
}

// Only an answer in the 200s brings the file, and not a part of it (206), which was never asked
// for. Anything else (a refusal, a redirect that leads nowhere, no answer at all) counts as no
// connection, whatever page comes with it.
static bool bringsFile(const QNetworkReply &reply)
{
    const int status = statusOf(reply);
    return status >= 200 && status <= 299 && status != 206;
}

// Lengths that contradict each other are none.
static qint32 announcedLength(const QNetworkReply &reply)
{
    const QByteArrayList lengths = reply.rawHeader("Content-Length").split(',');
    const qint64 length = lengths.first().trimmed().toLongLong();
    const bool agree = std::all_of(lengths.begin(), lengths.end(), [&](const QByteArray &other) {
        return other.trimmed().toLongLong() == length;
    });
    return agree && length > 0 && length <= MostAnnounced ? static_cast<qint32>(length) : 0;
}

Transfer::Transfer(QNetworkAccessManager &network, const QUrl &url, const Limits &limits)
    : m_network(network)
    , m_limits(limits)
    , m_block(BlockBytes)
{
    if (!isFetchable(url)) {
        QMetaObject::invokeMethod(this, &Transfer::end, Qt::QueuedConnection);
        return;
    }
    request(url);
    connect(&m_period, &QTimer::timeout, this, &Transfer::endIfSlow);
    m_period.start(limits.period);
}

void Transfer::request(const QUrl &url)
{
    m_reply.reset(m_network.get(requestFor(url, m_limits)));
    m_reply->setReadBufferSize(ReadBufferBytes);
    // Queued: whoever destroys this transfer from a notice never does so under the reply's feet.
    connect(m_reply.get(), &QNetworkReply::readyRead, this, &Transfer::proceed,
            Qt::QueuedConnection);
    connect(m_reply.get(), &QNetworkReply::finished, this, &Transfer::proceed,
            Qt::QueuedConnection);
}

void Transfer::proceed()
{
    if (!m_reply || !hasAnswered(*m_reply))
        return; // a late notice of a reply that is gone
    if (const QUrl target = redirectTarget(*m_reply); !target.isEmpty())
        return follow(target);
    if (!bringsFile(*m_reply))
        return end();
    m_announced = announcedLength(*m_reply);
    const qint64 arrived = readBlock();
    if (arrived > 0)
        store(arrived);
    else if (m_reply->isFinished())
        end();
}

void Transfer::follow(const QUrl &target)
{
    if (m_redirects == MostRedirects || !mayLeadTo(m_reply->url(), target))
        return end();
    ++m_redirects;
    request(target);
}

// A reply that ran into its time limit has closed itself.
qint64 Transfer::readBlock()
{
    return m_reply->isOpen()
               ? m_reply->read(m_block.data(), qMin(BlockBytes, mostBytes() - m_stored))
               : 0;
}

void Transfer::store(qint64 arrived)
{
    const qint64 written = m_file->write(m_block.data(), arrived);
    m_stored += static_cast<qint32>(written);
    const bool isLast = written < arrived || m_stored >= mostBytes();

    // The next block comes even if a handler of this notice runs an event loop of its own.
    QMetaObject::invokeMethod(this, &Transfer::proceed, Qt::QueuedConnection);
    const QPointer<Transfer> self(this);
    if (written > 0)
        Q_EMIT progressed();
    if (isLast && self)
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
