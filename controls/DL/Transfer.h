#pragma once

#include "controls/DL/TemporaryFile.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

namespace controls {

/// When a transfer that goes nowhere is ended, with its counts as they are then.
struct Limits
{
    /// So long without any data, from the start on.
    std::chrono::milliseconds idle = std::chrono::seconds(30);
    /// Fewer than `leastBytes` stored in any one period: 1 kB/s on average over 60 s.
    std::chrono::milliseconds period = std::chrono::seconds(60);
    qint64 leastBytes = 60'000;
    /// Without an announced length the counts can never agree, and a live stream never ends by
    /// itself: so long after the response came, or so many bytes, at most 2,147,483,646.
    std::chrono::milliseconds longestUnannounced = std::chrono::seconds(30);
    qint64 mostUnannounced = qint64{20} * 1024 * 1024;
};

/// One address being read into a temporary file. Destroying it, at any moment, ends it without a
/// notice; its notices come from the event loop, never from inside the constructor.
class Transfer : public QObject
{
    Q_OBJECT

public:
    /// Starts reading. An address that cannot be fetched only shows in the counts at the end.
    /// Raises PathFileAccess when no temporary file can be made.
    Transfer(const QUrl &url, const Limits &limits);

    /// Bytes that were written to the file.
    qint32 stored() const { return m_stored; }

    /// The length that the server announced; 0 for none, or for one that does not fit here.
    qint32 announced() const { return m_announced; }

    /// The file, still open. For the receiver of `ended`.
    std::unique_ptr<TemporaryFile> takeFile() { return std::move(m_file); }

Q_SIGNALS:
    /// After each stored block.
    void progressed();
    /// Once, when there is nothing more to come; the receiver destroys the transfer.
    void ended();

private:
    void request(const QUrl &url);
    bool hasResponded() const;
    void proceed();
    void follow(const QUrl &target);
    qint64 read();
    void store(qint64 arrived);
    qint64 mostBytes() const;
    void endIfSlow();
    void end();

    const Limits m_limits;
    std::unique_ptr<TemporaryFile> m_file = std::make_unique<TemporaryFile>();
    /// Of this transfer's own: in one that is shared, an error of a connection to a host also ends
    /// the requests that wait for another one.
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply> m_reply; ///< null once the transfer has ended
    std::vector<char> m_block;
    QTimer m_period;
    QTimer m_unannounced;
    int m_redirects = 0;
    qint32 m_stored = 0;
    qint32 m_storedBefore = 0; ///< when the period began
    qint32 m_announced = 0;
};

} // namespace controls
