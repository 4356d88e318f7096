#include "platform/Host.h"

namespace platform {

static Host *installedHost = nullptr;

Host &host()
{
    Q_ASSERT(installedHost);
    return *installedHost;
}

void installHost(Host &newHost)
{
    installedHost = &newHost;
}

} // namespace platform
