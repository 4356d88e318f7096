#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "platform/NativeHost.h"
#include "store/TaskStore.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmForceDownload.h"
#include "ui/dialogs/frmOpdrachten.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmSchedule.h"
#include "ui/main/MainForm.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QNetworkProxyFactory>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::host;

// Two programs in one folder would fetch the same files and write the same log.
static int tellThatItRuns()
{
    const QString text = app::programTitle() + u" is already running from "_s +
                         QDir::toNativeSeparators(host().programFolder()) + u'.';
    std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    host().showMessage(app::WindowTitle(), text, platform::MessageIcon::Information);
    return EXIT_SUCCESS;
}

// An archive brings the empty database under a name of its own, so that unpacking it over an
// installation harms no tasks. It serves a first start only: where tasks are, it goes, so that
// their later loss is told and not passed over with an empty list.
static void placeDeliveredDatabase()
{
    const QString folder = host().programFolder() + u"/database/"_s;
    const QString delivered = folder + u"empty.mdb"_s;
    const QString database = folder + u"ostravelin.mdb"_s;
    if (!app::FileExists(delivered))
        return;
    if (app::FileExists(database))
        QFile::remove(delivered); // harmless if it stays
    else
        platform::moveFile(delivered, database);
}

static void deleteStaleSettings()
{
    if (app::FileExists(app::settingsFilePath()))
        platform::deleteFile(app::settingsFilePath());
}

// On a first start the options window is the program's gate. Closing it, while it is the only one,
// does not end the program.
static void askForSettings()
{
    QApplication::setQuitOnLastWindowClosed(false);
    ui::frmOptions().exec();
    QApplication::setQuitOnLastWindowClosed(true);
}

// What the menus open, over the main window that will be there by then.
static ui::MenuWindows menuWindows(const std::unique_ptr<ui::MainForm> &mainForm)
{
    return {.taskList =
                [&mainForm] {
                    const auto editor = [](QWidget *list) { ui::frmSchedule(list).exec(); };
                    ui::frmOpdrachten(editor, mainForm.get()).exec();
                },
            .forcedDownload =
                [&mainForm] {
                    ui::frmForceDownload window(mainForm->DownloadEntry, mainForm.get());
                    mainForm->showModal(window);
                },
            .options =
                [&mainForm] {
                    ui::frmOptions window(mainForm.get());
                    mainForm->showModal(window);
                },
            .about = [&mainForm] { ui::frmAbout(mainForm.get()).exec(); }};
}

// The entry procedure: the settings, the task database, the main window.
static void startUp(std::unique_ptr<ui::MainForm> &mainForm)
{
    app::requireReadableSettings();
    if (!app::isConfigured()) {
        deleteStaleSettings();
        askForSettings();
    }
    app::LoadSettings();
    placeDeliveredDatabase();
    store::OpenDatabase(host().programFolder());
    mainForm = std::make_unique<ui::MainForm>(menuWindows(mainForm));
    mainForm->show();
}

// What the first window does not wait for: it takes a twentieth of the time in which a bare window
// starts.
static void finishStart()
{
    QApplication::setWindowIcon(ui::programIcon());
}

static constexpr auto finishDelay = 200ms;

// Painting into memory that is shared with an X display, the toolkit asks the display before each
// painting whether it is through with the last one, and wakes a second thread for the answer: a
// quarter of what the seconds of the clock cost. So little is painted that it can be sent.
static constexpr auto sendPainting = "QT_XCB_NO_MITSHM";

int main(int argc, char **argv)
{
    platform::NativeHost nativeHost;
    platform::installHost(nativeHost);
    const platform::FolderLock lock(nativeHost.programFolder());
    qputenv(sendPainting, "1");
    const QApplication application(argc, argv);
    qunsetenv(sendPainting); // not for what the program starts
    if (lock.isHeldElsewhere())
        return tellThatItRuns();
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    QTimer::singleShot(finishDelay, &application, finishStart);

    std::unique_ptr<ui::MainForm> mainForm;
    app::handleEvent([&] { startUp(mainForm); });
    const int status = QApplication::exec();
    mainForm.reset(); // what runs is abandoned
    // The toolkit's own end would wait for a look-up of a name that hangs.
    host().endProgram(status);
    return status;
}
