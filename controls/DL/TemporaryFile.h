#pragma once

#include <QFile>

namespace controls {

/// A new file in the system's temporary folder, with the permissions of any file that the user
/// makes. Open for writing from the start; removed with the object unless it was moved away.
class TemporaryFile
{
public:
    /// Raises PathFileAccess when no file can be made.
    TemporaryFile();
    ~TemporaryFile();
    Q_DISABLE_COPY_MOVE(TemporaryFile)

    /// Stores the bytes at once, without a buffer. Gives how many were stored: fewer than `size`
    /// when the disk took no more.
    qint64 write(const char *bytes, qint64 size);

    /// Whether the system confirmed that all written bytes are stored, and on the disk.
    bool close();

    /// Moves the closed file to where nothing stands yet; errors are those of platform::moveFile,
    /// and leave the file here.
    void moveTo(const QString &path);

private:
    QFile m_file;
};

} // namespace controls
