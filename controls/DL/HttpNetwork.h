#pragma once

namespace controls {
class Network;
}

// What networks are made with, under names that can be looked up in a module.
extern "C" {

/// A network over the toolkit's HTTP. The caller owns it.
controls::Network *newHttpNetwork();

/// Has all networks use the proxy settings of the system.
void useSystemProxies();
}
