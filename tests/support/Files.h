#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace testing_support {

/// A file's bytes, or an empty array when there is none.
inline QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes a file, with its folder, that holds the bytes.
inline void makeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
}

/// The names of all that is in a folder, without pipes and the like.
inline QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

/// Makes this process keep its temporary files in the folder.
inline void useTemporaryFolder(const QString &folder)
{
    for (const char *name : {"TMPDIR", "TMP"}) // the one each system looks at
        qputenv(name, QDir::toNativeSeparators(folder).toLocal8Bit());
}

} // namespace testing_support
