#include "platform/FileSystem.h"

#include "platform/RuntimeError.h"

#include <QDir>
#include <QFileInfo>

#include <string>
#include <windows.h>

namespace platform::system {

static std::wstring native(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

// A file that another program holds open counts as one that may not be touched.
static ErrorNumber numberOf(DWORD code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND:
        return ErrorNumber::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
        return ErrorNumber::PathNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return ErrorNumber::FileAlreadyExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return ErrorNumber::DiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_WRITE_PROTECT:
        return ErrorNumber::PermissionDenied;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

[[noreturn]] static void raiseSystemError(DWORD code)
{
    throw RuntimeError(numberOf(code));
}

// The system takes a folder in a file's place for a file that it may not touch.
[[noreturn]] static void raiseLastError(const QString &target)
{
    const DWORD code = GetLastError();
    raiseSystemError(code == ERROR_ACCESS_DENIED && QFileInfo(target).isDir() ? ERROR_INVALID_NAME
                                                                              : code);
}

void enterFolder(const QString &folder)
{
    if (!SetCurrentDirectoryW(native(folder).c_str()))
        throw RuntimeError(ErrorNumber::PathNotFound);
}

void removeFile(const QString &path)
{
    if (!DeleteFileW(native(path).c_str()))
        raiseLastError(path);
}

static constexpr DWORD sharedByAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

void flushFile(const QString &path)
{
    const HANDLE file = CreateFileW(native(path).c_str(), GENERIC_WRITE, sharedByAll, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        raiseLastError(path);
    const DWORD failure = FlushFileBuffers(file) ? DWORD{0} : GetLastError();
    CloseHandle(file);
    if (failure != 0)
        raiseSystemError(failure);
}

// The renames below return when the names are on the disk.
void flushFolderOf(const QString &) {}

void renameOver(const QString &from, const QString &to)
{
    if (!MoveFileExW(native(from).c_str(), native(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        raiseLastError(to);
}

// In another folder only a copy has the access rights that files there are meant to have: a renamed
// file would keep those of a temporary one, which are its maker's alone.
bool renameToFree(const QString &from, const QString &to)
{
    if (QFileInfo(from).absolutePath() != QFileInfo(to).absolutePath())
        return false;
    if (!MoveFileExW(native(from).c_str(), native(to).c_str(), MOVEFILE_WRITE_THROUGH))
        raiseLastError(to);
    return true;
}

void copyBytes(const QString &from, const QString &to)
{
    if (!CopyFileW(native(from).c_str(), native(to).c_str(), FALSE))
        raiseLastError(to);
    flushFile(to);
}

// Returns the system's error code, 0 for success.
static DWORD appendAll(HANDLE file, const QByteArray &bytes)
{
    LARGE_INTEGER oldSize = {};
    if (!SetFilePointerEx(file, {}, &oldSize, FILE_END))
        return GetLastError();
    DWORD written = 0;
    const auto size = static_cast<DWORD>(bytes.size());
    const bool isTaken = WriteFile(file, bytes.constData(), size, &written, nullptr);
    const DWORD failure = isTaken ? DWORD{ERROR_DISK_FULL} : GetLastError();
    if (isTaken && written == size)
        return 0;
    SetFilePointerEx(file, oldSize, nullptr, FILE_BEGIN);
    SetEndOfFile(file);
    return failure;
}

void writeBytes(const QString &path, WriteMode mode, const QByteArray &bytes)
{
    const DWORD disposition = mode == WriteMode::Append ? OPEN_ALWAYS : CREATE_ALWAYS;
    const HANDLE file = CreateFileW(native(path).c_str(), GENERIC_WRITE, sharedByAll, nullptr,
                                    disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        raiseLastError(path);
    const DWORD failure = appendAll(file, bytes);
    CloseHandle(file);
    if (failure != 0)
        raiseSystemError(failure);
}

} // namespace platform::system
