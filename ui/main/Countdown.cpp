#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "controls/DL/DL.h"
#include "controls/PB/PB.h"
#include "platform/Files.h"
#include "platform/Host.h"
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
        showClock();
        showNextDownload();
        showSecondsToGo();
        if (isDue())
            startDownload(trap);
    } catch (const platform::RuntimeError &) {
        skipForMissingFolder();
    }
}

static std::chrono::hh_mm_ss<std::chrono::seconds> timeOfDay()
{
    const local_seconds now = host().now();
    return std::chrono::hh_mm_ss(now - std::chrono::floor<std::chrono::days>(now));
}

// Hour, minute and second come from three readings of the clock, which is kept.
void MainForm::showClock()
{
    Label1->showFigures(twoDigits(timeOfDay().hours().count()) + u':' +
                        twoDigits(timeOfDay().minutes().count()));
    Label2->showFigures(twoDigits(timeOfDay().seconds().count()));
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
    Label4->setText(m_momentText + u" ==> "_s + DownloadEntry.Opdracht);
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
    host().beep();
    trap.step([] { platform::changeDirectory(DestinationFolder()); });
    trap.step([this] {
        if (app::FileExists(DownloadEntry.Filenaam))
            platform::deleteFile(DestinationFolder() + DownloadEntry.Filenaam);
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
void MainForm::skipForMissingFolder()
{
    const QString missing = u"Destination folder not found"_s;
    app::ErrorTrap().step([&] { app::WriteLog(DownloadEntry.Opdracht + u" - "_s + missing); });
    showStatus(missing);
    pause(1000ms);
    ZoekVolgende();
}

} // namespace ui
