#include "platform/FolderLock.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace platform {

// The folder itself is locked, so that nothing is made in it and it need not be writable.
static int opened(const QString &folder)
{
    return open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

static bool isRefused(int descriptor, int kind)
{
    return flock(descriptor, kind | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

// A lock that could be shared is held by those who ask, for a moment, and not by a program.
FolderLock::FolderLock(const QString &folder)
    : m_handle(opened(folder))
{
    const auto descriptor = static_cast<int>(m_handle);
    while (!m_isHeldElsewhere && isRefused(descriptor, LOCK_EX)) {
        m_isHeldElsewhere = isRefused(descriptor, LOCK_SH);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

FolderLock::~FolderLock()
{
    if (m_handle >= 0)
        close(static_cast<int>(m_handle));
}

bool isFolderLocked(const QString &folder)
{
    const int descriptor = opened(folder);
    const bool isLocked = isRefused(descriptor, LOCK_SH);
    if (descriptor >= 0)
        close(descriptor);
    return isLocked;
}

} // namespace platform
