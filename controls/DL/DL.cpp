#include "controls/DL/DL.h"

#include "platform/RuntimeError.h"

#include <QPointer>
#include <QScopeGuard>

namespace controls {

// 420 twips at 1440 twips and 96 logical pixels per inch.
static constexpr int sidePixels = 420 * 96 / 1440;

DL::DL(QWidget *parent, const Limits &limits)
    : QWidget(parent)
    , m_limits(limits)
{
    setFixedSize(sidePixels, sidePixels);
}

void DL::setVisible(bool /*visible*/)
{
    QWidget::setVisible(false);
}

void DL::Download(const QString &URL, const QString &sDestination, const QString &sId)
{
    if (m_pendingDestinations.contains(sId))
        throw platform::RuntimeError(platform::ErrorNumber::DuplicateKey);
    m_pendingDestinations.insert(sId, sDestination);
    auto forget = qScopeGuard([this, sId] { m_pendingDestinations.remove(sId); });
    m_leftovers.clear();
    auto transfer = std::make_unique<Transfer>(QUrl(URL), m_limits);
    connect(transfer.get(), &Transfer::progressed, this, [this, sId, running = transfer.get()] {
        Q_EMIT Progress(running->stored(), running->announced(), sId);
    });
    connect(transfer.get(), &Transfer::ended, this, [this, sId] { complete(sId); });
    m_transfers.emplace(sId, std::move(transfer));
    forget.dismiss();
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
    const QPointer<Transfer> transfer = m_transfers.at(sId).get();
    const qint32 downloadedBytes = transfer->stored();
    qint32 totalBytes = transfer->announced();
    const bool hasAllCome = downloadedBytes >= 1 && downloadedBytes == totalBytes;
    if (hasAllCome)
        Q_EMIT Storing(sId);
    if (!transfer)
        return; // its handler abandoned the download

    auto file = transfer->takeFile();
    const auto ended = m_transfers.extract(sId);
    if (!file->close())
        totalBytes = 0;
    else if (hasAllCome) {
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
