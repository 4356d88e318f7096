#pragma once

#include "controls/DL/Transfer.h"

#include <QMap>
#include <QWidget>

#include <map>
#include <memory>
#include <vector>

namespace controls {

/// The downloader: an invisible control, always 420 x 420 twips, that fetches web addresses into
/// files and tells of it in events. It keeps no settings and writes no log.
///
/// Several downloads may run at once under different ids, and PendingDestinations tells which; this
/// program runs one at a time under the empty id, other programs may use more. Handlers of the
/// events may do as they like: start another download, let pending messages run, destroy the
/// control.
class DL : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("ProgID", "Ostravelin.DL")

public:
    /// Ends running downloads, when it is destroyed, like abandonAll.
    explicit DL(QWidget *parent = nullptr, const Limits &limits = {});

    /// Starts to fetch the http or https address into a temporary file, past any cache, and
    /// returns at once. Nothing may stand at `sDestination` by the time the data is complete: a
    /// file that stands there is never replaced.
    /// Raises DuplicateKey while a download of that id has not completed, and PathFileAccess when
    /// no temporary file can be made. Whatever else goes wrong shows in the counts of Completed.
    void Download(const QString &URL, const QString &sDestination, const QString &sId = {});

    /// Destinations of the downloads that have not completed, by id.
    const QMap<QString, QString> &PendingDestinations() const { return m_pendingDestinations; }

    /// Stops every download and removes its data. No event tells of it.
    void abandonAll();

    /// In force for the downloads that start from now on.
    void setLimits(const Limits &limits) { m_limits = limits; }

    /// The control never shows.
    void setVisible(bool visible) override;

Q_SIGNALS:
    /// Another block has been stored. `TotalBytes` is the length that the server announced; 0 when
    /// it announced none, or 2,147,483,647 or more.
    void Progress(qint32 DownloadedBytes, qint32 TotalBytes, const QString &sId);

    /// All data has come, and after this event it is flushed to the disk and moved to its
    /// destination, which holds the thread for as long as a slow disk takes.
    void Storing(const QString &sId);

    /// The download has ended; its id is free again. The counts tell how:
    /// DownloadedBytes 0: no connection, or the server did not have the file;
    /// DownloadedBytes >= 1 and different from TotalBytes: broken off, ended by a limit, or a full
    /// disk; the data stays in the temporary file until the next download or the control's end. A
    /// file that could not be closed has TotalBytes 0, so that its counts never agree;
    /// both equal and >= 1: complete, and the file was moved to its destination. A failure of that
    /// move, or of the flush that belongs to it, does not change the counts: then nothing new
    /// stands at the destination, and whoever looks for the file there finds none.
    void Completed(qint32 DownloadedBytes, qint32 TotalBytes, const QString &sId);

private:
    void complete(const QString &sId);

    Limits m_limits;
    QMap<QString, QString> m_pendingDestinations;
    std::map<QString, std::unique_ptr<Transfer>> m_transfers;
    std::vector<std::unique_ptr<TemporaryFile>> m_leftovers; ///< data that was not moved
};

} // namespace controls
