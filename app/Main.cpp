#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/NativeHost.h"
#include "store/TaskStore.h"
#include "ui/main/MainForm.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QNetworkProxyFactory>

#include <memory>

using namespace Qt::StringLiterals;
using platform::host;

static QString settingsFilePath()
{
    return app::WindowsFolder() + QDir::separator() + app::settingsFileName();
}

// A settings file that is there and cannot be read must not be taken for one without settings.
static void requireReadableSettings()
{
    const QFileInfo file(settingsFilePath());
    if (file.exists() && !(file.isFile() && file.isReadable()))
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"The settings file cannot be read: "_s + file.filePath());
}

static bool isConfigured()
{
    return app::ReadIni(app::settingsFileName(), u"Bestandsmappen"_s, u"Bestemmingsmap"_s,
                        u"?"_s) != u"?"_s;
}

static void deleteStaleSettings()
{
    if (app::FileExists(settingsFilePath()))
        platform::deleteFile(settingsFilePath());
}

static void tellWhatSettingsAreNeeded()
{
    host().showMessage(
        app::WindowTitle(),
        u"No destination folder has been set yet. It is read from the settings file\n\n%1\n\n"
        "which holds, for example:\n\n"
        "[Bestandsmappen]\n"
        "Bestemmingsmap=%2\n\n"
        "Make this file and start the program again."_s.arg(
            settingsFilePath(), QDir::homePath() + QDir::separator() + u"Audio"_s),
        platform::MessageIcon::Information);
}

// The entry procedure: the settings, the task database, the main window.
static std::unique_ptr<ui::MainForm> startUp()
{
    requireReadableSettings();
    if (!isConfigured()) {
        deleteStaleSettings();
        tellWhatSettingsAreNeeded();
        return nullptr;
    }
    app::LoadSettings();
    store::OpenDatabase(host().programFolder());
    auto mainForm = std::make_unique<ui::MainForm>();
    mainForm->show();
    return mainForm;
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    platform::NativeHost nativeHost;
    platform::installHost(nativeHost);
    QNetworkProxyFactory::setUseSystemConfiguration(true);

    std::unique_ptr<ui::MainForm> mainForm;
    app::handleEvent([&] { mainForm = startUp(); });
    return mainForm ? QApplication::exec() : 1;
}
