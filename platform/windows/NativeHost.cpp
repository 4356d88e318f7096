#include "platform/NativeHost.h"

#include "platform/LocalTime.h"

#include <QDir>
#include <QProcess>
#include <QWidget>

#include <array>
#include <shlobj.h>
#include <windows.h>

namespace platform {

using namespace Qt::StringLiterals;

// The system itself follows a change of the zone.
std::chrono::local_seconds NativeHost::now() const
{
    SYSTEMTIME local = {};
    GetLocalTime(&local);
    return localMoment(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute,
                       local.wSecond);
}

std::int32_t NativeHost::tickCount() const
{
    return static_cast<std::int32_t>(GetTickCount()); // wraps: see docs/behaviour.md
}

void NativeHost::sleep(std::chrono::milliseconds duration)
{
    Sleep(static_cast<DWORD>(duration.count()));
}

QString NativeHost::programFolder() const
{
    // Asked for before there is an application object, so not of that.
    QString path(32'767, QChar::Null); // the longest path of the system
    const DWORD size = GetModuleFileNameW(nullptr, reinterpret_cast<wchar_t *>(path.data()),
                                          static_cast<DWORD>(path.size()));
    return path.first(size).section(u'\\', 0, -2);
}

// The editor takes all behind its name for the path, blanks and all.
void NativeHost::openTextEditor(const QString &path, std::function<void()> onFailure)
{
    QProcess editor;
    editor.setProgram(u"Notepad"_s);
    editor.setNativeArguments(QDir::toNativeSeparators(path));
    if (!editor.startDetached())
        onFailure();
}

// The shell's record of the choice is not released: that costs a few bytes for each.
QString NativeHost::chooseFolder(QWidget *owner, const QString &title)
{
    // The shell fills up to MAX_PATH of each; of a path, only what ends within 255 counts.
    constexpr qsizetype pathBufferSize = 255;
    std::array<char, MAX_PATH> displayName = {};
    std::array<char, MAX_PATH> path = {};
    const QByteArray localTitle = title.toLocal8Bit();
    BROWSEINFOA choice = {};
    choice.hwndOwner = owner ? reinterpret_cast<HWND>(owner->winId()) : nullptr;
    choice.pszDisplayName = displayName.data();
    choice.lpszTitle = localTitle.constData();
    choice.ulFlags = BIF_RETURNONLYFSDIRS;
    const auto *chosen = SHBrowseForFolderA(&choice);
    if (!chosen || SHGetPathFromIDListA(chosen, path.data()) != TRUE)
        return {};
    const QByteArray chosenPath(path.data());
    return chosenPath.size() < pathBufferSize ? QString::fromLocal8Bit(chosenPath) : QString();
}

// A network drive is the system's own matter here.
bool NativeHost::isOpenedByDesktop(const QString &) const
{
    return false;
}

} // namespace platform
