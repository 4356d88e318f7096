#pragma once

#include "app/DownloadRecord.h"
#include "platform/Boolean.h"

#include <QDialog>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <functional>

class QGroupBox;

namespace app {
class ErrorTrap;
}
namespace controls {
class DL;
class PB;
} // namespace controls

namespace ui {

class ElidedLabel;
class FigureLabel;
class TextFileBox;

/// Whether a download was asked for by hand. Cleared when a download ends: when the one that was
/// asked for never starts, the next one is told as forced: see "The forced mark that waits" in
/// docs/behaviour.md.
extern platform::Boolean ForcedDownload;

/// The windows that the main window's menus open. Each is shown modally until the user closes it.
/// A menu entry without its window is not shown.
struct MenuWindows
{
    std::function<void()> taskList = {};
    std::function<void()> forcedDownload = {};
    std::function<void()> options = {};
    std::function<void()> about = {};
};

/// The program's one long-lived window: the clock, the pending download and the countdown to it,
/// the progress of a running one. It starts each download on time and looks up the next one when
/// it has ended, in whatever way. The database must be open before it is made.
class MainForm : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainForm(MenuWindows windows = {});
    ~MainForm() override;

    /// The pending download.
    app::DownloadRecord DownloadEntry;

    /// Finds the next download, arms it and shows it, or shows that there is none.
    void ZoekVolgende();

    /// Starts to turn the finished download into an SPC file: writes the header and the batch that
    /// joins it with the audio, starts the batch and its watch.
    void WriteSpcHeader();

    /// Sets whether the task menu and the options entry can be used.
    void mnuInstelling(platform::Boolean bVal);

    /// Shows a window of the task menu or the options entry modally until it is closed. Like them,
    /// it cannot be used while mnuInstelling(False) is in force.
    void showModal(QDialog &window);

private:
    // MainFormControls.cpp
    void makeControls();
    QWidget *makeCountdownFrame();
    QWidget *makeDownloadFrame();

    // MainForm.cpp
    void makeMenus();
    void connectEvents();
    void showStatus(const QString &text);
    void pause(std::chrono::milliseconds duration);
    void comeToRest();
    void mnuMutaties_Click();
    void mnuLogbestand_Click();

    // NextDownload.cpp
    bool findNextDownload();
    void showPending();
    void showNoTask();

    // Countdown.cpp
    void Timer1_Timer();
    void showClock();
    void showNextDownload();
    void showSecondsToGo();
    bool isDue() const;
    void startDownload(const app::ErrorTrap &trap);
    void skipSlot(const QString &reason);

    // Outcome.cpp
    void ctlDownload_Progress(qint32 DownloadedBytes, qint32 TotalBytes);
    void ctlDownload_Storing();
    void ctlDownload_Completed(qint32 DownloadedBytes, qint32 TotalBytes);
    void endFailedDownload(qint32 DownloadedBytes, const app::ErrorTrap &trap);
    void endSuccessfulDownload(qint32 DownloadedBytes, qint32 TotalBytes,
                               const app::ErrorTrap &trap);
    void logSuccess(qint32 DownloadedBytes, qint32 TotalBytes, const QString &suffix) const;
    void keepUnderTaskFileName() const;

    // SpcHeader.cpp
    void startBatch();

    // BatchWatch.cpp
    void Timer2_Timer();
    bool batchHasEnded();
    void finishSpcFile(const app::ErrorTrap &trap);
    void endWithoutSpcFolder();
    void deleteRawDownload(const app::ErrorTrap &trap) const;

    MenuWindows m_windows;
    QPointer<QDialog> m_openWindow; // the one that mnuInstelling() governs

    QTimer *Timer1 = nullptr;         // countdown and trigger
    QTimer *Timer2 = nullptr;         // batch watch
    QTimer *RecomputeLater = nullptr; // the next attempt after one that could not arm anything

    TextFileBox *RichTextBox1 = nullptr;  // the SPC files' text on its way to the disk
    FigureLabel *Label1 = nullptr;        // clock: hours and minutes
    FigureLabel *Label2 = nullptr;        // clock: seconds
    FigureLabel *Label3 = nullptr;        // seconds until the pending download
    ElidedLabel *Label4 = nullptr;        // its moment and task
    ElidedLabel *m_statusPanel = nullptr; // panel 1 of StatusBar1
    QGroupBox *frameDownload = nullptr;
    controls::PB *pBar = nullptr;
    controls::DL *ctlDownload = nullptr;
    QMenu *mnuOpdrachten = nullptr;
    QAction *mnuOpties = nullptr;

    QString m_batchFolder; // the destination folder when the batch was written
    QString BatchFile;     // name of the batch in it
    // The result of starting the batch, later of closing its window. Nothing here reads it; it is
    // there for whoever extends the watch.
    int BatchTask = 0;
    std::uint32_t BatchWindow = 0;      // result of the latest search for its window
    std::int32_t DownloadStartTick = 0; // milliseconds of the tick counter
    std::int32_t DownloadEndTick = 0;

    std::chrono::local_seconds m_toldMoment{}; // the moment that Label4 tells, and its text
    QString m_momentText;
};

/// Dispatches what waits for the window (timers, downloads, painting). User input is left for
/// later, so that no window opens in the middle of a handler.
void letPendingMessagesRun();

} // namespace ui
