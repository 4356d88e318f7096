#include "platform/FileSystem.h"

#include "platform/RuntimeError.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::system {

[[noreturn]] static void raiseSystemError(int code)
{
    switch (code) {
    case ENOENT:
        throw RuntimeError(ErrorNumber::FileNotFound);
    case EEXIST:
        throw RuntimeError(ErrorNumber::FileAlreadyExists);
    case ENOSPC:
    case EDQUOT:
        throw RuntimeError(ErrorNumber::DiskFull);
    case EACCES:
    case EPERM:
        throw RuntimeError(ErrorNumber::PermissionDenied);
    default:
        throw RuntimeError(ErrorNumber::PathFileAccess);
    }
}

void enterFolder(const QString &folder)
{
    if (chdir(QFile::encodeName(folder).constData()) != 0)
        throw RuntimeError(ErrorNumber::PathNotFound);
}

void removeFile(const QString &path)
{
    if (unlink(QFile::encodeName(path).constData()) != 0)
        raiseSystemError(errno);
}

// Both return the system's error code, 0 for success. Where a file system knows no flush of its
// own, the file is as safe as it gets.
static int flushed(int file)
{
    return fsync(file) == 0 || errno == EINVAL || errno == EOPNOTSUPP ? 0 : errno;
}

static int flushed(const QString &path, int flags)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | flags);
    if (file < 0)
        return errno;
    const int failure = flushed(file);
    close(file);
    return failure;
}

void flushFile(const QString &path)
{
    if (const int failure = flushed(path, 0))
        raiseSystemError(failure);
}

// A folder that may not be read cannot be flushed either. What the disk refuses is a failure.
void flushFolderOf(const QString &path)
{
    const int failure = flushed(QFileInfo(path).path(), O_DIRECTORY);
    if (failure == EIO || failure == ENOSPC || failure == EDQUOT)
        raiseSystemError(failure);
}

static int renameReplacing(const QByteArray &from, const QByteArray &to)
{
    return rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

// Fails with EEXIST instead of replacing. Some file systems know no such rename; a second link
// does the same there. Where there is neither, all that is left is to look first.
static int renameWithoutReplacing(const QByteArray &from, const QByteArray &to)
{
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (link(from.constData(), to.constData()) == 0) {
        unlink(from.constData());
        return 0;
    }
    if (errno != EPERM && errno != ENOSYS && errno != EOPNOTSUPP)
        return errno;
    struct stat status = {};
    return lstat(to.constData(), &status) == 0 ? EEXIST : renameReplacing(from, to);
}

void renameOver(const QString &from, const QString &to)
{
    if (const int failure = renameReplacing(QFile::encodeName(from), QFile::encodeName(to)))
        raiseSystemError(failure);
}

bool renameToFree(const QString &from, const QString &to)
{
    const int failure = renameWithoutReplacing(QFile::encodeName(from), QFile::encodeName(to));
    if (failure != 0 && failure != EXDEV)
        raiseSystemError(failure);
    return failure == 0;
}

// Both below return the system's error code, 0 for success.
static int copied(int source, int target)
{
    constexpr size_t mostAtOnce = 1 << 30;
    ssize_t sent = 0;
    do {
        sent = sendfile(target, source, nullptr, mostAtOnce);
    } while (sent > 0);
    return sent < 0 ? errno : flushed(target);
}

static int copiedInto(int source, const QString &to)
{
    const int target =
        open(QFile::encodeName(to).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (target < 0)
        return errno;
    const int failure = copied(source, target);
    return close(target) != 0 && failure == 0 ? errno : failure;
}

void copyBytes(const QString &from, const QString &to)
{
    const int source = open(QFile::encodeName(from).constData(), O_RDONLY | O_CLOEXEC);
    if (source < 0)
        raiseSystemError(errno);
    const int failure = copiedInto(source, to);
    close(source);
    if (failure != 0)
        raiseSystemError(failure);
}

static void writeAll(int file, const QByteArray &bytes)
{
    const off_t oldSize = lseek(file, 0, SEEK_END);
    const ssize_t written = write(file, bytes.constData(), static_cast<size_t>(bytes.size()));
    int failure = written < 0 ? errno : 0;
    if (written >= 0 && written < bytes.size())
        failure = ftruncate(file, oldSize) == 0 ? ENOSPC : errno;
    if (close(file) != 0 && failure == 0)
        failure = errno;
    if (failure != 0)
        raiseSystemError(failure);
}

void writeBytes(const QString &path, WriteMode mode, const QByteArray &bytes)
{
    const int place = mode == WriteMode::Append ? O_APPEND : O_TRUNC;
    const int file =
        open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC | place, 0666);
    if (file < 0)
        raiseSystemError(errno);
    writeAll(file, bytes);
}

} // namespace platform::system
