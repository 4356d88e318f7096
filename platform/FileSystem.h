#pragma once

#include <QString>

// The operating system's own steps, of which the functions in Files.h are made. They raise what
// those raise.
namespace platform::system {

/// Makes the folder, given by an absolute path, the current one.
void enterFolder(const QString &folder);

void removeFile(const QString &path);

/// Puts the data of the file on the disk, so that a name that it gets later never stands for data
/// that a power cut took.
void flushFile(const QString &path);

/// Puts the names in the folder of the path on the disk, where the file system can do that for
/// itself. Where the renames below do it, nothing is left to do.
void flushFolderOf(const QString &path);

/// Gives the file another name in one atomic step, in place of a file of that name.
void renameOver(const QString &from, const QString &to);

/// Gives the file another name, which must be free. Returns false, with nothing done, where only a
/// copy can take that name.
bool renameToFree(const QString &from, const QString &to);

/// Copies the bytes of a file, in place of a file of the target's name, and puts them on the disk.
/// Where a desktop has mounted the folder, that is done as long as the copy is open.
void copyBytes(const QString &from, const QString &to);

enum class WriteMode { Replace, Append };

/// Writes the bytes into a file, which is made when it is missing. Nothing of bytes that were to be
/// appended stays when not all of them can.
void writeBytes(const QString &path, WriteMode mode, const QByteArray &bytes);

} // namespace platform::system
