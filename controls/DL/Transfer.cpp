#include "controls/DL/Transfer.h"

#include "controls/DL/Address.h"

#include <QPointer>

#include <algorithm>
#include <limits>

namespace controls {

// A sixth of what may wait for the reader, so that network and disk work side by side.
constexpr qint64 BlockBytes = qint64{256} * 1024;

constexpr int MostRedirects = 10;

// Counts have 32 bits, and one byte past the announced length must still fit.
constexpr qint64 MostAnnounced = std::numeric_limits<qint32>::max() - 1;

static bool hasAnswered(const Answer &answer)
{
    return answer.status() != 0 || answer.isFinished();
}

// Only an answer in the 200s brings the file, and not a part of it (206), which was never asked
// for. Anything else (a refusal, a redirect that leads nowhere, no answer at all) counts as no
// connection, whatever page comes with it.
static bool bringsFile(const Answer &answer)
{
    const int status = answer.status();
    return status >= 200 && status <= 299 && status != 206;
}

// Lengths that contradict each other are none.
static qint32 announcedLength(const Answer &answer)
{
    const QByteArrayList lengths = answer.header("Content-Length").split(',');
    const qint64 length = lengths.first().trimmed().toLongLong();
    const bool agree = std::all_of(lengths.begin(), lengths.end(), [&](const QByteArray &other) {
        return other.trimmed().toLongLong() == length;
    });
    return agree && length > 0 && length <= MostAnnounced ? static_cast<qint32>(length) : 0;
}

Transfer::Transfer(Network &network, const QUrl &url, const Limits &limits)
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
    m_answer = m_network.get(url, m_limits.idle, [this] { proceed(); });
}

void Transfer::proceed()
{
    if (!m_answer || !hasAnswered(*m_answer))
        return; // the end came before a queued call, or nothing has come yet
    if (const QUrl target = m_answer->redirectTarget(); !target.isEmpty())
        return follow(target);
    if (!bringsFile(*m_answer))
        return end();
    m_announced = announcedLength(*m_answer);
    const qint64 arrived =
        m_answer->read(m_block.data(), std::min(BlockBytes, mostBytes() - m_stored));
    if (arrived > 0)
        store(arrived);
    else if (m_answer->isFinished())
        end();
}

void Transfer::follow(const QUrl &target)
{
    if (m_redirects == MostRedirects || !mayLeadTo(m_answer->url(), target))
        return end();
    ++m_redirects;
    request(target);
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
    m_answer.reset();
    if (!m_file->close())
        m_stored = 0;
    Q_EMIT ended();
}

} // namespace controls
