#include "platform/Files.h"

#include "platform/RuntimeError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

using namespace Qt::StringLiterals;

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

static QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(u'/') + 1);
}

static bool folderExists(const QString &folder)
{
    return folder.isEmpty() || QFileInfo(folder).isDir();
}

static void requireFolderOf(const QString &path)
{
    if (!folderExists(folderOf(path)))
        throw RuntimeError(ErrorNumber::PathNotFound);
}

static void requireFile(const QString &path)
{
    requireFolderOf(path);
    if (!fileExists(path))
        throw RuntimeError(ErrorNumber::FileNotFound);
}

static void requireName(const QString &path)
{
    if (path.isEmpty() || path.endsWith(u'/'))
        throw RuntimeError(ErrorNumber::PathFileAccess);
}

// The file system frees the blocks of a replaced file when its last descriptor is closed. That
// takes milliseconds for a long recording, and nobody has to wait for it.
static int renameReplacing(const QByteArray &from, const QByteArray &to)
{
    const int replaced = open(to.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const int failure = rename(from.constData(), to.constData()) == 0 ? 0 : errno;
    if (replaced >= 0)
        QThreadPool::globalInstance()->start([replaced] { close(replaced); });
    return failure;
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

// Copies through a hidden name in the target's folder, and ends with one of the two renames above.
static void copyThenRename(const QString &from, const QString &to,
                           int (*finish)(const QByteArray &, const QByteArray &))
{
    deleteLeftovers(folderOf(to), leftoverNames);
    const QByteArray hidden = QFile::encodeName(folderOf(to) + u".ostravelin-"_s +
                                                QString::number(getpid()) + u".part"_s);
    std::error_code error;
    std::filesystem::copy_file(QFile::encodeName(from).constData(), hidden.constData(),
                               std::filesystem::copy_options::overwrite_existing, error);
    const int failure = error ? error.value() : finish(hidden, QFile::encodeName(to));
    if (failure != 0) {
        unlink(hidden.constData());
        raiseSystemError(failure);
    }
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

static void openAndWrite(const QString &path, int mode, const QByteArray &bytes)
{
    requireFolderOf(path);
    const int file =
        open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_CLOEXEC | mode, 0666);
    if (file < 0)
        raiseSystemError(errno);
    writeAll(file, bytes);
}

bool fileExists(const QString &path)
{
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISREG(status.st_mode);
}

void changeDirectory(const QString &folder)
{
    if (!folder.startsWith(u'/') || chdir(QFile::encodeName(folder).constData()) != 0)
        throw RuntimeError(ErrorNumber::PathNotFound);
}

void deleteFile(const QString &path)
{
    requireFile(path);
    if (unlink(QFile::encodeName(path).constData()) != 0)
        raiseSystemError(errno);
}

void deleteLeftovers(const QString &folder, const QString &pattern)
{
    const QDateTime yesterday = QDateTime::currentDateTimeUtc().addDays(-1);
    const auto kinds = QDir::Files | QDir::Hidden | QDir::NoSymLinks;
    for (const QFileInfo &file : QDir(folder).entryInfoList({pattern}, kinds))
        if (file.lastModified() < yesterday)
            QFile::remove(file.filePath());
}

void moveFile(const QString &from, const QString &to)
{
    requireFile(from);
    requireName(to);
    requireFolderOf(to);
    const QByteArray source = QFile::encodeName(from);
    const int failure = renameWithoutReplacing(source, QFile::encodeName(to));
    if (failure == EXDEV) {
        copyThenRename(from, to, renameWithoutReplacing);
        unlink(source.constData());
    } else if (failure != 0) {
        raiseSystemError(failure);
    }
}

void replaceFile(const QString &from, const QString &to)
{
    requireFile(from);
    requireName(to);
    requireFolderOf(to);
    if (const int failure = renameReplacing(QFile::encodeName(from), QFile::encodeName(to)))
        raiseSystemError(failure);
}

void copyFile(const QString &from, const QString &to)
{
    requireFile(from);
    requireName(to);
    requireFolderOf(to);
    copyThenRename(from, to, renameReplacing);
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    openAndWrite(path, O_TRUNC, bytes);
}

qint64 fileSize(const QString &path)
{
    requireFile(path);
    return QFileInfo(path).size();
}

void appendToFile(const QString &path, const QByteArray &bytes)
{
    openAndWrite(path, O_APPEND, bytes);
}

} // namespace platform
