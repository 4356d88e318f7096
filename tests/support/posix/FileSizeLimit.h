#pragma once

#include <QtGlobal>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

namespace testing_support {

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
    Q_DISABLE_COPY_MOVE(FileSizeLimit)
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before = {};
};

} // namespace testing_support
