#include "controls/DL/HttpNetwork.h"
#include "controls/DL/Network.h"

// The network as a part of the executable.
namespace controls {

std::unique_ptr<Network> makeNetwork()
{
    return std::unique_ptr<Network>(newHttpNetwork());
}

void prepareNetwork()
{
    useSystemProxies();
}

} // namespace controls
