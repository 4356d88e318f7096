#include "controls/DL/DL.h"

#include "controls/DL/Network.h"
#include "controls/DL/TemporaryFile.h"
#include "controls/DL/Transfer.h"
#include "platform/RuntimeError.h"

namespace controls {

// 420 twips at 1440 twips and 96 logical pixels per inch.
constexpr int SidePixels = 420 * 96 / 1440;

DL::DL(QWidget *parent, const Limits &limits)
    : QWidget(parent)
    , m_limits(limits)
{
    setFixedSize(SidePixels, SidePixels);
}

DL::~DL() = default;

void DL::setVisible(bool /*visible*/)
{
    QWidget::setVisible(false);
}

void DL::Download(const QString &URL, const QString &sDestination, const QString &sId)
{
    if (m_pendingDestinations.contains(sId))
        throw platform::RuntimeError(platform::ErrorNumber::DuplicateKey);
    m_leftovers.clear();
    if (!m_network)
        m_network = makeNetwork();
    auto transfer = std::make_unique<Transfer>(*m_network, QUrl(URL), m_limits);
    connect(transfer.get(), &Transfer::progressed, this, [this, sId, running = transfer.get()] {
        Q_EMIT Progress(running->stored(), running->announced(), sId);
    });
    connect(transfer.get(), &Transfer::ended, this, [this, sId] { complete(sId); });
    m_pendingDestinations.insert(sId, sDestination);
    m_transfers.emplace(sId, std::move(transfer));
}

void DL::abandonAll()
{
    m_transfers.clear();
    m_pendingDestinations.clear();
    m_leftovers.clear();
}

// Every error on the way is ignored: the end is always told.
void DL::complete(const QString &sId)
{
    const auto ended = m_transfers.extract(sId);
    const qint32 downloadedBytes = ended.mapped()->stored();
    const qint32 totalBytes = ended.mapped()->announced();
    auto file = ended.mapped()->takeFile();
    if (downloadedBytes >= 1 && downloadedBytes == totalBytes) {
        try {
            file->moveTo(m_pendingDestinations.value(sId));
        } catch (const platform::RuntimeError &) {
        }
    }
    m_leftovers.push_back(std::move(file));
    m_pendingDestinations.remove(sId);
    Q_EMIT Completed(downloadedBytes, totalBytes, ended.key());
}

} // namespace controls
