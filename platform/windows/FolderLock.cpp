#include "platform/FolderLock.h"

#include <QDir>

#include <string>
#include <windows.h>

namespace platform {

static constexpr DWORD sharedByNobody = 0;
static constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A hidden file in the folder, which a program opens for itself alone. It stays when the program
// ends: to delete it then could meet one that just starts.
static HANDLE opened(const QString &folder, DWORD shared, DWORD disposition)
{
    const std::wstring path =
        QDir::toNativeSeparators(folder + QStringLiteral("/.ostravelin.lock")).toStdWString();
    return CreateFileW(path.c_str(), GENERIC_READ, shared, nullptr, disposition,
                       FILE_ATTRIBUTE_HIDDEN, nullptr);
}

static bool isRefused(HANDLE file)
{
    return file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_SHARING_VIOLATION;
}

// A file that could be shared is held by those who ask, for a moment, and not by a program.
FolderLock::FolderLock(const QString &folder)
{
    HANDLE file = opened(folder, sharedByNobody, OPEN_ALWAYS);
    while (isRefused(file) && !m_isHeldElsewhere) {
        m_isHeldElsewhere = isFolderLocked(folder);
        Sleep(1);
        if (!m_isHeldElsewhere)
            file = opened(folder, sharedByNobody, OPEN_ALWAYS);
    }
    m_handle = reinterpret_cast<std::intptr_t>(file);
}

FolderLock::~FolderLock()
{
    if (m_handle != reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE))
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}

bool isFolderLocked(const QString &folder)
{
    const HANDLE file = opened(folder, sharedByAll, OPEN_EXISTING);
    const bool isLocked = isRefused(file);
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    return isLocked;
}

} // namespace platform
