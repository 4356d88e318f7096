#pragma once

#include <QString>

// Files and folders by their path text. Only regular files with a non-empty name are ever deleted,
// moved or replaced, and "*" and "?" are plain characters where the platform takes them as such.
// Failures raise RuntimeError: FileNotFound for a missing file, PathNotFound for a missing folder,
// PermissionDenied, DiskFull, or PathFileAccess for what is left.
//
// moveFile, replaceFile and copyFile outlast a power cut: the data is on the disk before it gets
// its name, and the name when they return. Data that cannot be put there counts as not written: the
// source and an old file of the name stay as they are.
namespace platform {

/// Whether a regular file stands at the path.
bool fileExists(const QString &path);

/// Whether the two paths are one file, or would be, which the file system decides: names that
/// differ in case are one in a folder that does not mind case, and a link is what it leads to.
bool isSameFile(const QString &a, const QString &b);

/// Makes the folder the current one. Raises PathNotFound when it is missing, empty or relative.
void changeDirectory(const QString &folder);

/// Deletes the file.
void deleteFile(const QString &path);

/// Deletes the files of the folder whose names match the wildcards and that nobody has written to
/// for a day: what programs that were killed had no time to delete. What resists stays.
void deleteLeftovers(const QString &folder, const QString &pattern);

/// The hidden names under which files grow in the folder that they are meant for.
inline const QString leftoverNames = QStringLiteral(".ostravelin-*.part");

/// A hidden name of that kind. Each has its own: what grew under the one before it, even of a
/// program that was killed, may still be written.
QString newHiddenName(const QString &folder);

/// Moves a file to a path where nothing stands yet. Raises FileAlreadyExists and leaves both as
/// they are when something does. Between file systems the data goes through a hidden name in the
/// target's folder, so that the target's name never holds half a file.
void moveFile(const QString &from, const QString &to);

/// Gives the file another name in one atomic step, taking the place of a file of that name.
/// Both must be on one file system. Without a source nothing happens to the target.
void replaceFile(const QString &from, const QString &to);

/// Copies a file, taking the place of a file of the target's name in one atomic step.
void copyFile(const QString &from, const QString &to);

/// Writes a file that holds the bytes, in place of one of that name.
void writeFile(const QString &path, const QByteArray &bytes);

/// The size of a file in bytes.
qint64 fileSize(const QString &path);

/// Adds the bytes at the end of a file, which is made when it is missing: all of them or none.
void appendToFile(const QString &path, const QByteArray &bytes);

} // namespace platform
