#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

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
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

/// The names of all that is in a folder, without pipes and the like.
inline QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

/// Lets no file grow beyond a size as long as it lives, in child processes too: stands for a disk
/// that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN); // so that writing fails instead
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {std::min(bytes, m_before.rlim_max), m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before = {};
};

} // namespace testing_support
