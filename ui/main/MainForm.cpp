#include "ui/main/MainForm.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "controls/DL/DL.h"
#include "controls/PB/PB.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "store/TaskStore.h"
#include "ui/main/ScrollPane.h"
#include "ui/main/Widgets.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QMenuBar>

#include <utility>

namespace ui {

using namespace Qt::StringLiterals;
using app::handleEvent;
using platform::host;

MainForm::MainForm(MenuWindows windows)
    : m_windows(std::move(windows))
{
    setObjectName(u"MainForm"_s);
    makeControls();
    makeMenus();
    connectEvents();
    app::beforeErrorReport([this] { comeToRest(); });

    store::createTaskRecordset();
    setWindowTitle(app::WindowTitle());
    fitToDisplay(*this, sizeHint());
    ZoekVolgende();
    Timer1->start();
}

MainForm::~MainForm()
{
    app::beforeErrorReport({});
}

void MainForm::makeMenus()
{
    const auto menu = [this](const QString &name, const QString &caption) {
        QMenu *made = menuBar()->addMenu(caption);
        made->setObjectName(name);
        return made;
    };
    const auto entry = [this](QMenu *under, const QString &name, const QString &caption,
                              const std::function<void()> &action) {
        QAction *made = under->addAction(caption);
        made->setObjectName(name);
        made->setVisible(action != nullptr);
        connect(made, &QAction::triggered, this, [action] { handleEvent(action); });
        return made;
    };

    mnuOpdrachten = menu(u"mnuOpdrachten"_s, u"&Tasks"_s);
    entry(mnuOpdrachten, u"mnuMutaties"_s, u"&Mutations"_s,
          m_windows.taskList ? [this] { mnuMutaties_Click(); } : std::function<void()>());
    entry(mnuOpdrachten, u"mnuForceDownload"_s, u"&Forced download"_s, m_windows.forcedDownload);

    QMenu *mnuConfiguratie = menu(u"mnuConfiguratie"_s, u"&Configuration"_s);
    mnuOpties = entry(mnuConfiguratie, u"mnuOpties"_s, u"O&ptions"_s, m_windows.options);

    QMenu *mnuHelp = menu(u"mnuHelp"_s, u"&Help"_s);
    entry(mnuHelp, u"mnuInfo"_s, u"&Info"_s, m_windows.about);
    entry(mnuHelp, u"mnuLogbestand"_s, u"&Logfile"_s, [this] { mnuLogbestand_Click(); });

    mnuOpdrachten->menuAction()->setVisible(m_windows.taskList || m_windows.forcedDownload);
    mnuConfiguratie->menuAction()->setVisible(m_windows.options != nullptr);
}

void MainForm::connectEvents()
{
    connect(Timer1, &QTimer::timeout, this, [this] { handleEvent([this] { Timer1_Timer(); }); });
    connect(Timer2, &QTimer::timeout, this, [this] { handleEvent([this] { Timer2_Timer(); }); });
    connect(RecomputeLater, &QTimer::timeout, this,
            [this] { handleEvent([this] { ZoekVolgende(); }); });
    connect(ctlDownload, &controls::DL::Progress, this, [this](qint32 bytes, qint32 total) {
        handleEvent([=, this] { ctlDownload_Progress(bytes, total); });
    });
    connect(ctlDownload, &controls::DL::Storing, this,
            [this] { handleEvent([this] { ctlDownload_Storing(); }); });
    connect(ctlDownload, &controls::DL::Completed, this, [this](qint32 bytes, qint32 total) {
        handleEvent([=, this] { ctlDownload_Completed(bytes, total); });
    });
}

void MainForm::showModal(QDialog &window)
{
    m_openWindow = &window;
    window.exec();
}

// The countdown stands still while tasks are edited, and what was edited is in force afterwards.
void MainForm::mnuMutaties_Click()
{
    Timer1->stop();
    RecomputeLater->stop(); // the list holds the tasks open; what follows computes anew
    m_windows.taskList();
    ZoekVolgende();
    Timer1->start();
}

void MainForm::mnuLogbestand_Click()
{
    const QString log = app::logFilePath();
    const auto tellWhereItIs = [log] {
        host().showMessage(app::WindowTitle(),
                           u"The log could not be opened in a text editor.\nIt is the file "_s +
                               log,
                           platform::MessageIcon::Information);
    };
    try {
        platform::appendToFile(log, {}); // an empty log is there to be opened as well
    } catch (const platform::RuntimeError &) {
        if (!QFileInfo(log).isReadable()) {
            tellWhereItIs();
            return;
        }
    }
    host().openTextEditor(log, tellWhereItIs);
}

void MainForm::showStatus(const QString &text)
{
    const QString line = app::onOneLine(text);
    m_statusPanel->setText(line);
    m_statusPanel->setAccessibleName(u"Status: "_s + line);
}

// Blocks the window (see "The blocking pauses" in docs/behaviour.md), with the status line as it is
// to be read meanwhile. No message runs here: a download that began in a pause would be lost to the
// look-up behind it.
void MainForm::pause(std::chrono::milliseconds duration)
{
    paintNow(m_statusPanel, m_statusPanel->rect());
    host().sleep(duration);
}

void MainForm::comeToRest()
{
    Timer1->stop();
    Timer2->stop();
    RecomputeLater->stop();
    ctlDownload->abandonAll();
}

void letPendingMessagesRun()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace ui
