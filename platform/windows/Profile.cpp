#include "platform/Files.h"
#include "platform/NativeHost.h"
#include "platform/windows/System.h"

#include <QDir>

#include <array>
#include <windows.h>

// The settings file, by the system's own functions.
namespace platform {

using namespace Qt::StringLiterals;

QString windowsDirectory()
{
    std::array<char, 254> path = {};
    GetWindowsDirectoryA(path.data(), static_cast<UINT>(path.size()));
    return QString::fromLocal8Bit(path.data());
}

QString NativeHost::settingsDirectory() const
{
    return windowsDirectory();
}

// The one certain answer is the system's own. A file that is made for it is gone at once.
static bool isRefused(const QString &path)
{
    constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const bool isThere = fileExists(path);
    const HANDLE file =
        CreateFileW(path.toStdWString().c_str(), GENERIC_WRITE, sharedByAll, nullptr,
                    isThere ? OPEN_EXISTING : CREATE_NEW,
                    isThere ? FILE_ATTRIBUTE_NORMAL : FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_ACCESS_DENIED;
    CloseHandle(file);
    return false;
}

// The system itself does this for programs of 32 bits alone.
static QString virtualStorePath(const QString &path)
{
    const QString behindDrive = path.section(u':', 1);
    return qEnvironmentVariable("LOCALAPPDATA") + u"\\VirtualStore"_s + behindDrive;
}

// A file in the virtual store stays the user's even when the other may be written some day: its
// settings are the later ones.
QString NativeHost::redirectedPath(const QString &path) const
{
    const QString native = QDir::toNativeSeparators(path);
    const QString redirected = virtualStorePath(native);
    return fileExists(redirected) || isRefused(native) ? redirected : native;
}

static QString folderOf(const QString &path)
{
    return path.section(u'\\', 0, -2);
}

// The system's functions for settings take a path in the machine's code page. A folder named after
// a user whose name that does not have, has a short name that it has.
static QByteArray pathForProfile(const QString &path)
{
    const QByteArray local = path.toLocal8Bit();
    if (QString::fromLocal8Bit(local) == path)
        return local;
    std::array<wchar_t, MAX_PATH> folder = {};
    GetShortPathNameW(folderOf(path).toStdWString().c_str(), folder.data(),
                      static_cast<DWORD>(folder.size()));
    return (QString::fromWCharArray(folder.data()) + u'\\' + path.section(u'\\', -1)).toLocal8Bit();
}

static QString nativePath(const QString &folder, const QString &file)
{
    return QDir::toNativeSeparators(folder + u'\\' + file);
}

QString NativeHost::profileString(const QString &file, const QString &section, const QString &key,
                                  const QString &defaultValue, int size) const
{
    const QString path = nativePath(settingsDirectory(), file);
    const QString redirected = virtualStorePath(path);
    QByteArray value(size, '\0');
    const DWORD length = GetPrivateProfileStringA(
        section.toLocal8Bit(), key.toLocal8Bit(), defaultValue.toLocal8Bit(), value.data(),
        static_cast<DWORD>(size), pathForProfile(fileExists(redirected) ? redirected : path));
    return QString::fromLocal8Bit(value.first(static_cast<qsizetype>(length)));
}

bool NativeHost::writeProfileString(const QString &file, const QString &section, const QString &key,
                                    const QString &value)
{
    const QString path = redirectedPath(nativePath(settingsDirectory(), file));
    QDir().mkpath(folderOf(path));
    return WritePrivateProfileStringA(section.toLocal8Bit(), key.toLocal8Bit(), value.toLocal8Bit(),
                                      pathForProfile(path)) != FALSE;
}

} // namespace platform
