#pragma once

#include "controls/DL/Limits.h"
#include "controls/DL/Network.h"
#include "controls/DL/TemporaryFile.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace controls {

/// One address being read into a temporary file. Destroying it, at any moment, ends it without a
/// notice; its notices come from the event loop, never from inside the constructor.
class Transfer : public QObject
{
    Q_OBJECT

public:
    /// Starts reading. An address that cannot be fetched only shows in the counts at the end.
    /// Raises PathFileAccess when no temporary file can be made.
    Transfer(Network &network, const QUrl &url, const Limits &limits);

    /// Bytes that stand in the file; 0 when closing it failed.
    qint32 stored() const { return m_stored; }

    /// The length that the server announced; 0 for none, or for one that does not fit here.
    qint32 announced() const { return m_announced; }

    /// The file, closed once the transfer has ended.
    std::unique_ptr<TemporaryFile> takeFile() { return std::move(m_file); }

Q_SIGNALS:
    /// After each stored block.
    void progressed();
    /// Once, when there is nothing more to come; the receiver destroys the transfer.
    void ended();

private:
    void request(const QUrl &url);
    void proceed();
    void follow(const QUrl &target);
    void store(qint64 arrived);
    qint64 mostBytes() const;
    void endIfSlow();
    void end();

    Network &m_network;
    const Limits m_limits;
    std::unique_ptr<TemporaryFile> m_file = std::make_unique<TemporaryFile>();
    std::unique_ptr<Answer> m_answer; ///< null once the transfer has ended
    std::vector<char> m_block;
    QTimer m_period;
    int m_redirects = 0;
    qint32 m_stored = 0;
    qint32 m_storedBefore = 0; ///< when the period began
    qint32 m_announced = 0;
};

} // namespace controls
