#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "ui/main/MainForm.h"
#include "ui/main/SpcHeader.h"

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using app::DestinationFolder;
using app::SpcFolder;
using platform::BatchWindowKind;
using platform::ErrorNumber;
using platform::host;

// Whether the batch has ended or not, each tick pauses and looks up the next download: see "The
// early tick of the batch watch" in docs/behaviour.md.
void MainForm::Timer2_Timer()
{
    const app::ErrorTrap trap(ErrorNumber::PathNotFound);
    try {
        bool ended = false;
        trap.step([&] { ended = batchHasEnded(); });
        if (ended)
            finishSpcFile(trap);
    } catch (const platform::RuntimeError &) { // which the trap let out
        endWithoutSpcFolder();
        return;
    }
    pause(1000ms);
    ZoekVolgende();
}

// In the old mode by the console window of the batch, which goes; else by the window that says it
// has finished, which comes and is closed.
bool MainForm::batchHasEnded()
{
    if (app::watchesRunningBatch()) {
        BatchWindow = host().findBatchWindow(BatchWindowKind::Running);
        return BatchWindow == 0;
    }
    BatchWindow = host().findBatchWindow(BatchWindowKind::Finished);
    if (BatchWindow == 0)
        return false;
    BatchTask = host().closeBatchWindow(BatchWindow);
    return true;
}

void MainForm::finishSpcFile(const app::ErrorTrap &trap)
{
    Timer2->stop();
    trap.step([this] { platform::deleteFile(m_batchFolder + BatchFile); });
    trap.step([this] { platform::deleteFile(m_batchFolder + spcHeaderFile); });
    if (app::copiesSpcFiles())
        trap.step([this] {
            if (SpcFolder().isEmpty())
                throw platform::RuntimeError(ErrorNumber::PathNotFound);
            platform::copyFile(DestinationFolder() + DownloadEntry.spcFilenaam,
                               SpcFolder() + DownloadEntry.spcFilenaam);
        });
    deleteRawDownload(trap);
    showStatus(u"SPC header is toegevoegd..."_s);
}

void MainForm::endWithoutSpcFolder()
{
    const app::ErrorTrap trap;
    const QString missing = u"SPC map niet gevonden"_s;
    trap.step([&] { app::WriteLog(DownloadEntry.Opdracht + u" - "_s + missing); });
    showStatus(missing);
    deleteRawDownload(trap);
    pause(1000ms);
    ZoekVolgende();
}

// When the address ends in the task's own file name, the SPC file has taken the download's place.
void MainForm::deleteRawDownload(const app::ErrorTrap &trap) const
{
    const QString raw = DestinationFolder() + DownloadEntry.Filenaam;
    trap.step([&] {
        if (!platform::isSameFile(raw, DestinationFolder() + DownloadEntry.spcFilenaam))
            platform::deleteFile(raw);
    });
}

} // namespace ui
