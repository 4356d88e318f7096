// A user of the program under test, in a library that is loaded into it; the environment says what
// this user does.

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <netdb.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// Chooses the folder USER_CHOOSES and saves it, or cancels where there is none.
static void decide(const QWidget &options)
{
    const bool chooses = qEnvironmentVariableIsSet("USER_CHOOSES");
    const bool hasChosen = options.findChild<QPushButton *>(u"cmdOK"_s)->isEnabled();
    const QString button = !chooses    ? u"cmdCancel"_s
                           : hasChosen ? u"cmdOK"_s
                                       : u"Bestemmings_dir"_s;
    options.findChild<QPushButton *>(button)->click();
}

static void choose(const QFileDialog &folders)
{
    folders.findChild<QLineEdit *>()->setText(qEnvironmentVariable("USER_CHOOSES"));
    folders.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open)->click();
}

static void tellAndClose(QWidget &window)
{
    std::printf("%s ", qUtf8Printable(window.objectName()));
    std::fflush(stdout);
    window.close();
}

// Opens all that the menus open, and closes the main window, as soon as its frame says
// USER_CLOSES_AT.
static void useInTime(QWidget &mainWindow)
{
    const auto *frame = mainWindow.findChild<QGroupBox *>(u"frameDownload"_s);
    if (frame->title() != qEnvironmentVariable("USER_CLOSES_AT"))
        return;
    for (const char *entry : {"mnuMutaties", "mnuForceDownload", "mnuOpties", "mnuInfo"})
        mainWindow.findChild<QAction *>(QLatin1String(entry))->trigger();
    mainWindow.close();
}

static QWidget *mainWindowInSight()
{
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName() == u"MainForm"_s)
            return window;
    return nullptr;
}

static void look()
{
    QTimer::singleShot(50ms, qApp, look); // what follows may wait for the next look
    QWidget *mainWindow = mainWindowInSight();
    QWidget *window = QApplication::activeModalWidget();
    if (auto *message = qobject_cast<QMessageBox *>(window))
        message->accept();
    else if (const auto *folders = qobject_cast<QFileDialog *>(window))
        choose(*folders);
    else if (window && mainWindow)
        tellAndClose(*window);
    else if (window)
        decide(*window);
    else if (mainWindow)
        useInTime(*mainWindow);
}

static void arrive()
{
    QTimer::singleShot(0ms, qApp, look);
}

Q_COREAPP_STARTUP_FUNCTION(arrive)

// Takes the place of the system's: where no name server answers, a look-up lasts.
extern "C" int getaddrinfo(const char *, const char *, const addrinfo *, addrinfo **)
{
    for (;;)
        pause();
}
