#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "controls/PB/PB.h"
#include "platform/Arithmetic.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/RuntimeError.h"
#include "ui/main/DisplayText.h"
#include "ui/main/MainForm.h"
#include "ui/main/Widgets.h"

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using app::DestinationFolder;
using app::WriteLog;
using platform::Boolean;

Boolean ForcedDownload = Boolean::False;

// Without a trap: a download of more than 21,474,836 bytes overflows the product, and the program
// ends with the error report: see "The largest download" in docs/behaviour.md.
void MainForm::ctlDownload_Progress(qint32 DownloadedBytes, qint32 TotalBytes)
{
    if (TotalBytes == 0 || DownloadedBytes <= 0)
        return;
    const double percentage =
        static_cast<double>(platform::product(DownloadedBytes, 100)) / TotalBytes;
    pBar->setValue(percentage);
    showStatus(u"Download: "_s + DownloadEntry.Opdracht + u"   "_s +
               kilobytesText(DownloadedBytes) + u" kB / "_s + kilobytesText(TotalBytes) + u" kB"_s);
}

// What follows holds the thread for as long as a slow disk takes.
void MainForm::ctlDownload_Storing()
{
    showStatus(DownloadEntry.Opdracht + u" is being stored..."_s);
    paintNow(m_statusPanel, m_statusPanel->rect());
}

void MainForm::ctlDownload_Completed(qint32 DownloadedBytes, qint32 TotalBytes)
{
    const app::ErrorTrap trap;
    if (DownloadedBytes >= 1 && DownloadedBytes == TotalBytes)
        endSuccessfulDownload(DownloadedBytes, TotalBytes, trap);
    else
        endFailedDownload(DownloadedBytes, trap);
}

void MainForm::endFailedDownload(qint32 DownloadedBytes, const app::ErrorTrap &trap)
{
    const auto tell = [&](const QString &outcome) {
        showStatus(outcome + u"..."_s);
        trap.step([&] { WriteLog(DownloadEntry.Opdracht + u" - "_s + outcome); });
        letPendingMessagesRun();
    };
    if (DownloadedBytes == 0)
        tell(u"Can not connect"_s);
    else if (DownloadedBytes >= 1)
        tell(u"Disconnected"_s);
    ForcedDownload = Boolean::False;
    pause(3000ms);
    ZoekVolgende();
}

void MainForm::endSuccessfulDownload(qint32 DownloadedBytes, qint32 TotalBytes,
                                     const app::ErrorTrap &trap)
{
    DownloadEndTick = platform::host().tickCount();
    showStatus(u"Download completed..."_s);
    letPendingMessagesRun();
    const QString suffix = ForcedDownload == Boolean::True ? u" - Forced"_s : QString();
    ForcedDownload = Boolean::False;
    trap.step([&] { logSuccess(DownloadedBytes, TotalBytes, suffix); });
    if (app::makesSpcFiles()) {
        WriteSpcHeader(); // the batch watch looks up the next download
        return;
    }
    trap.step([this] { keepUnderTaskFileName(); });
    pause(2000ms);
    ZoekVolgende();
}

void MainForm::logSuccess(qint32 DownloadedBytes, qint32 TotalBytes, const QString &suffix) const
{
    const double seconds = platform::difference(DownloadEndTick, DownloadStartTick) / 1000.0;
    const double speed = platform::quotient(TotalBytes / 1000.0, seconds);
    WriteLog(DownloadEntry.Opdracht + u" - "_s + kilobytesText(DownloadedBytes) + u" kB - "_s +
             speedText(speed) + u" kB/s"_s + suffix);
}

void MainForm::keepUnderTaskFileName() const
{
    // An address that ends in the task's own file name has put the file into its place already,
    // unless the downloader, which does not tell, could not put it there.
    const QString raw = DestinationFolder() + DownloadEntry.Filenaam;
    const QString kept = DestinationFolder() + DownloadEntry.spcFilenaam;
    if (!platform::isSameFile(raw, kept))
        platform::replaceFile(raw, kept);
    else if (!app::FileExists(raw))
        throw platform::RuntimeError(platform::ErrorNumber::FileNotFound);
}

} // namespace ui
