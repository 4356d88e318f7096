#pragma once

#include <QString>

#include <cstdint>

namespace platform {

/// One program's hold on a folder, for the time in which it lives there. It is the system's, which
/// takes it back however the process ends; child processes do not inherit it, and programs in other
/// folders are not touched by it.
class FolderLock
{
public:
    /// Takes the folder, or finds that another has it. Where no lock can be made (a folder without
    /// write permission on Windows, a network folder without locks) nobody is kept out.
    explicit FolderLock(const QString &folder);
    ~FolderLock();
    Q_DISABLE_COPY_MOVE(FolderLock)

    /// Whether another program has the folder.
    bool isHeldElsewhere() const { return m_isHeldElsewhere; }

private:
    std::intptr_t m_handle = -1;
    bool m_isHeldElsewhere = false;
};

/// Whether a program has the folder. Asking keeps nobody from taking it at the same moment: whoever
/// asks has a hold for a moment that others may share, which a FolderLock tells from a program's.
bool isFolderLocked(const QString &folder);

} // namespace platform
