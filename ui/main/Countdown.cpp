#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "controls/DL/DL.h"
#include "controls/PB/PB.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/LocalTime.h"
#include "ui/main/DisplayText.h"
#include "ui/main/FigureLabel.h"
#include "ui/main/MainForm.h"
#include "ui/main/Widgets.h"

#include <QGroupBox>

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using app::DestinationFolder;
using platform::Boolean;
using platform::ErrorNumber;
using platform::host;
using std::chrono::local_seconds;

// A download that could not be started never ends, so this takes the place of its end.
static constexpr auto retryAfterFailedStart = 3s;

void MainForm::Timer1_Timer()
{
    const app::ErrorTrap trap(ErrorNumber::PathNotFound);
    try {
        letPendingMessagesRun();
        trap.step([this] { showClock(); });
        trap.step([this] { showNextDownload(); });
        trap.step([this] { showSecondsToGo(); });
        if (isDue())
            startDownload(trap);
    } catch (const platform::RuntimeError &) { // which the trap let out
        skipSlot(u"Destination folder not found"_s);
    }
}

// Hour, minute and second come from three readings of the clock, see "Three readings of the
// clock" in docs/behaviour.md.
void MainForm::showClock()
{
    const auto time = [] { return platform::timeOf(host().now()); };
    Label1->showFigures(twoDigits(time().hour()) + u':' + twoDigits(time().minute()));
    Label2->showFigures(twoDigits(time().second()));
}

// The text of the moment is kept: making it twice a second is a tenth of what idling costs.
void MainForm::showNextDownload()
{
    const local_seconds moment = DownloadEntry.DownloadTime;
    if (moment <= local_seconds{})
        return;
    if (moment != m_toldMoment) {
        m_toldMoment = moment;
        m_momentText = momentText(moment);
    }
    Label4->setText(m_momentText + u" ==> "_s + app::onOneLine(DownloadEntry.Opdracht));
}

void MainForm::showSecondsToGo()
{
    const auto toGo = DownloadEntry.DownloadTime - host().now();
    if (toGo >= 0s)
        Label3->showFigures(QString::number(toGo.count()));
}

bool MainForm::isDue() const
{
    return host().now() >= DownloadEntry.DownloadTime &&
           DownloadEntry.DownloadFlag == Boolean::True;
}

void MainForm::startDownload(const app::ErrorTrap &trap)
{
    DownloadEntry.DownloadFlag = Boolean::False;
    mnuInstelling(Boolean::False);
    trap.step([] { host().beep(); });
    trap.step([] { platform::changeDirectory(DestinationFolder()); });
    const QString unusable =
        app::unusableText(DownloadEntry.DownloadAdres, DownloadEntry.spcFilenaam);
    if (!unusable.isEmpty()) {
        skipSlot(unusable + u" contains a line break or another control character"_s);
        return;
    }
    trap.step([this] {
        const QString old = DestinationFolder() + DownloadEntry.Filenaam;
        if (app::FileExists(old))
            platform::deleteFile(old);
    });
    DownloadStartTick = host().tickCount();
    const bool started = trap.step([this] {
        ctlDownload->Download(app::AddPortToUrl(DownloadEntry.DownloadAdres),
                              DestinationFolder() + DownloadEntry.Filenaam);
    });
    showStatus(DownloadEntry.Opdracht + u" will now be downloaded..."_s);
    trap.step([this] { pBar->setValue(0); });
    pBar->show();
    frameDownload->setTitle(u"Progress Download"_s);
    if (!started)
        RecomputeLater->start(retryAfterFailedStart);
}

// The slot is given up, not tried again.
void MainForm::skipSlot(const QString &reason)
{
    app::ErrorTrap().step([&] { app::WriteLog(DownloadEntry.Opdracht + u" - "_s + reason); });
    showStatus(reason);
    pause(1000ms);
    ZoekVolgende();
}

} // namespace ui
