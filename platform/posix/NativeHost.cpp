#include "platform/NativeHost.h"

#include "platform/LocalTime.h"
#include "platform/posix/Profile.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>

#include <ctime>
#include <thread>

namespace platform {

using namespace Qt::StringLiterals;

// The zone of the machine may change while the program runs: tzset() looks whether another file
// stands at /etc/localtime and reads it then, which localtime_r() alone does once in a process.
static std::chrono::local_seconds localTime(std::time_t instant)
{
    tzset();
    std::tm local = {};
    localtime_r(&instant, &local);
    return localMoment(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                       local.tm_min, local.tm_sec);
}

// The latest reading is kept: a search through all slots asks thousands of times within a second.
std::chrono::local_seconds NativeHost::now() const
{
    static std::time_t latest = 0;
    static std::chrono::local_seconds local = localTime(latest);
    const std::time_t instant = std::time(nullptr);
    if (instant != latest) {
        latest = instant;
        local = localTime(instant);
    }
    return local;
}

std::int32_t NativeHost::tickCount() const
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    const auto count = std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count();
    return static_cast<std::int32_t>(
        static_cast<std::uint32_t>(count)); // wraps: see docs/behaviour.md
}

void NativeHost::sleep(std::chrono::milliseconds duration)
{
    std::this_thread::sleep_for(duration);
}

QString NativeHost::programFolder() const
{
    // Asked for before there is an application object, so not of that.
    return QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).path();
}

QString NativeHost::settingsDirectory() const
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QString NativeHost::redirectedPath(const QString &path) const
{
    return path; // of a folder of the user's own
}

QString NativeHost::profileString(const QString &file, const QString &section, const QString &key,
                                  const QString &defaultValue, int size) const
{
    return readProfile(settingsDirectory() + u'/' + file, section, key, defaultValue, size);
}

bool NativeHost::writeProfileString(const QString &file, const QString &section, const QString &key,
                                    const QString &value)
{
    return writeProfile(settingsDirectory() + u'/' + file, section, key, value);
}

// The desktop knows the user's text editor. Its opener ends with a status other than 0 when there
// is none.
void NativeHost::openTextEditor(const QString &path, std::function<void()> onFailure)
{
    auto *opener = new QProcess(qApp);
    QObject::connect(opener, &QProcess::errorOccurred, opener,
                     [opener, onFailure](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             opener->deleteLater();
                             onFailure();
                         }
                     });
    QObject::connect(opener, &QProcess::finished, opener, [opener, onFailure](int status) {
        opener->deleteLater();
        if (status != 0)
            onFailure();
    });
    opener->setStandardInputFile(QProcess::nullDevice());
    opener->start(u"xdg-open"_s, {path});
}

QString NativeHost::chooseFolder(QWidget *owner, const QString &title)
{
    return QDir::toNativeSeparators(
        QFileDialog::getExistingDirectory(owner, title, QDir::homePath()));
}

// The names by which the helpers of the two usual desktops mount such places.
bool NativeHost::isOpenedByDesktop(const QString &folder) const
{
    const QByteArray kind = QStorageInfo(folder).fileSystemType();
    return kind == "fuse.gvfsd-fuse" || kind == "fuse.kio-fuse";
}

} // namespace platform
