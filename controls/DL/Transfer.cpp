#include "controls/DL/Transfer.h"

#include <QPointer>

#include <algorithm>
#include <limits>

namespace controls {

using namespace Qt::StringLiterals;

// What may wait for its reader, so that memory stays bounded. With 1 MiB a download takes 3 %
// longer, with 2 MiB it needs 3 MiB more memory and is 2 % faster.
static constexpr qint64 readBufferBytes = qint64{1536} * 1024;

// A sixth of what may wait for the reader, so that network and disk work side by side.
static constexpr qint64 blockBytes = qint64{256} * 1024;

static constexpr int mostRedirects = 10;

// Counts have 32 bits, and one byte past the announced length must still fit.
static constexpr qint64 mostAnnounced = std::numeric_limits<qint32>::max() - 1;

static bool isSecure(const QUrl &url)
{
    return url.scheme() == "https"_L1;
}

// The network library would open local files, too, and ask a proxy for an address without a host.
static bool isFetchable(const QUrl &url)
{
    return (url.scheme() == "http"_L1 || isSecure(url)) && !url.host().isEmpty();
}

// A server may send us on to what is fetched, and never from https down to http.
static bool mayLeadTo(const QUrl &from, const QUrl &to)
{
    return isFetchable(to) && (isSecure(to) || !isSecure(from));
}

static QNetworkRequest requestFor(const QUrl &url, std::chrono::milliseconds idle)
{
    QNetworkRequest request(url);
    request.setRawHeader("Accept-Encoding", "identity"); // so that the library decodes nothing
    request.setRawHeader("Cache-Control", "no-cache");
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Left to itself, the library now and then asks for a redirected address twice.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    // The bounded read buffer holds for HTTP/1 only.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(idle.count()));
    return request;
}

static int statusOf(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// Only a response in the 200s brings the file, and not a part of it (206), which was never asked
// for. Anything else (a refusal, a redirect that leads nowhere, no response at all) counts as no
// connection, whatever page comes with it.
static bool bringsFile(const QNetworkReply &reply)
{
    const int status = statusOf(reply);
    return status >= 200 && status <= 299 && status != 206;
}

static QUrl redirectTarget(const QNetworkReply &reply)
{
    const QUrl target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    return target.isEmpty() ? target : reply.url().resolved(target);
}

// Lengths that contradict each other are none.
static qint32 announcedLength(const QNetworkReply &reply)
{
    const QByteArrayList lengths = reply.rawHeader("Content-Length").split(',');
    const qint64 length = lengths.first().trimmed().toLongLong();
    const bool agree = std::all_of(lengths.begin(), lengths.end(), [&](const QByteArray &other) {
        return other.trimmed().toLongLong() == length;
    });
    return agree && length > 0 && length <= mostAnnounced ? static_cast<qint32>(length) : 0;
}

Transfer::Transfer(const QUrl &url, const Limits &limits)
    : m_limits(limits)
    , m_block(blockBytes)
{
    if (!isFetchable(url)) {
        QMetaObject::invokeMethod(this, &Transfer::end, Qt::QueuedConnection);
        return;
    }
    connect(&m_period, &QTimer::timeout, this, &Transfer::endIfSlow);
    connect(&m_unannounced, &QTimer::timeout, this, &Transfer::end);
    m_period.start(limits.period);
    request(url);
}

// The notices are queued: whoever destroys the reply after one never does so under its feet.
void Transfer::request(const QUrl &url)
{
    m_reply.reset(m_network.get(requestFor(url, m_limits.idle)));
    m_reply->setReadBufferSize(readBufferBytes);
    for (const auto notice : {&QNetworkReply::metaDataChanged, &QNetworkReply::finished})
        connect(m_reply.get(), notice, this, &Transfer::proceed, Qt::QueuedConnection);
    connect(m_reply.get(), &QIODevice::readyRead, this, &Transfer::proceed, Qt::QueuedConnection);
}

bool Transfer::hasResponded() const
{
    return statusOf(*m_reply) != 0 || m_reply->isFinished();
}

void Transfer::proceed()
{
    if (!m_reply || !hasResponded())
        return; // a queued notice came after the end, or nothing has come yet
    if (const QUrl target = redirectTarget(*m_reply); !target.isEmpty())
        return follow(target);
    if (!bringsFile(*m_reply))
        return end();
    m_announced = announcedLength(*m_reply);
    if (m_announced == 0 && !m_unannounced.isActive())
        m_unannounced.start(m_limits.longestUnannounced);
    if (const qint64 arrived = read(); arrived > 0)
        store(arrived);
    else if (m_reply->isFinished())
        end();
}

void Transfer::follow(const QUrl &target)
{
    if (m_redirects == mostRedirects || !mayLeadTo(m_reply->url(), target))
        return end();
    ++m_redirects;
    request(target);
}

// A reply that ran into its time limit has closed itself.
qint64 Transfer::read()
{
    if (!m_reply->isOpen())
        return 0;
    return m_reply->read(m_block.data(), std::min(blockBytes, mostBytes() - m_stored));
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
    m_unannounced.stop();
    m_reply.reset();
    Q_EMIT ended();
}

} // namespace controls
