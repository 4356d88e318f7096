#include "platform/Files.h"

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace platform {

using namespace Qt::StringLiterals;

static QString folderOf(const QString &path)
{
    return path.left(QDir::toNativeSeparators(path).lastIndexOf(QDir::separator()) + 1);
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
    if (folderOf(path) == path)
        throw RuntimeError(ErrorNumber::PathFileAccess);
}

static void requireFileAndPlace(const QString &from, const QString &to)
{
    requireFile(from);
    requireName(to);
    requireFolderOf(to);
}

QString newHiddenName(const QString &folder)
{
    static int count = 0;
    return folder +
           u".ostravelin-%1-%2.part"_s.arg(QCoreApplication::applicationPid()).arg(++count);
}

// Copies through a hidden name in the target's folder, which `rename` then ends.
template <typename Rename>
static void copyThenRename(const QString &from, const QString &to, Rename rename)
{
    deleteLeftovers(folderOf(to), leftoverNames);
    const QString hidden = newHiddenName(folderOf(to));
    try {
        system::copyBytes(from, hidden);
        rename(hidden, to);
    } catch (const RuntimeError &) {
        QFile::remove(hidden);
        throw;
    }
}

bool fileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

static QString nameIn(const QString &path)
{
    return path.mid(folderOf(path).size());
}

// For paths at which nothing stands yet: whether a file of our own, made in the one's folder, is
// found in the other's under a name that differs as theirs do.
static bool wouldBeSameFile(const QString &a, const QString &b)
{
    const QString nameA = nameIn(a);
    const QString nameB = nameIn(b);
    if (a == b || nameA.compare(nameB, Qt::CaseInsensitive) != 0)
        return a == b;
    QFile probe(newHiddenName(folderOf(a)));
    if (!probe.open(QIODevice::WriteOnly))
        return false;
    const QString name = probe.fileName().mid(folderOf(a).size());
    const bool isFound = QFile::exists(folderOf(b) + (nameA == nameB ? name : name.toUpper()));
    probe.remove();
    return isFound;
}

// For files that stand there: whether their folder lists one name for the two. Some drivers of
// disks without case give the file another number under each.
static bool isListedOnce(const QString &a, const QString &b)
{
    if (a.compare(b, Qt::CaseInsensitive) != 0 || folderOf(a) != folderOf(b))
        return false;
    const QStringList names = QDir(folderOf(a)).entryList(QDir::Files | QDir::Hidden);
    return !names.contains(nameIn(a)) || !names.contains(nameIn(b));
}

bool isSameFile(const QString &a, const QString &b)
{
    if (QFileInfo::exists(a) != QFileInfo::exists(b))
        return false;
    if (!QFileInfo::exists(a))
        return wouldBeSameFile(a, b);
    std::error_code none;
    return std::filesystem::equivalent(QFileInfo(a).filesystemFilePath(),
                                       QFileInfo(b).filesystemFilePath(), none) ||
           isListedOnce(a, b);
}

void changeDirectory(const QString &folder)
{
    const QFileInfo place(folder);
    if (!place.isNativePath() || !place.isAbsolute())
        throw RuntimeError(ErrorNumber::PathNotFound);
    system::enterFolder(folder);
}

void deleteFile(const QString &path)
{
    requireFile(path);
    system::removeFile(path);
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
    requireFileAndPlace(from, to);
    system::flushFile(from);
    if (!system::renameToFree(from, to)) {
        copyThenRename(from, to, system::renameToFree);
        QFile::remove(from);
    }
    system::flushFolderOf(to);
}

void replaceFile(const QString &from, const QString &to)
{
    requireFileAndPlace(from, to);
    system::flushFile(from);
    system::renameOver(from, to);
    system::flushFolderOf(to);
}

void copyFile(const QString &from, const QString &to)
{
    requireFileAndPlace(from, to);
    copyThenRename(from, to, system::renameOver);
    system::flushFolderOf(to);
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    requireFolderOf(path);
    system::writeBytes(path, system::WriteMode::Replace, bytes);
}

qint64 fileSize(const QString &path)
{
    requireFile(path);
    return QFileInfo(path).size();
}

void appendToFile(const QString &path, const QByteArray &bytes)
{
    requireFolderOf(path);
    system::writeBytes(path, system::WriteMode::Append, bytes);
}

} // namespace platform
