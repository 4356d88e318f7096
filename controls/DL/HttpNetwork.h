#pragma once

#include <QtGlobal>

namespace controls {
class Network;
}

// What networks are made with, under names that can be looked up in a module.
extern "C" {

/// A network over the toolkit's HTTP. The caller owns it.
Q_DECL_EXPORT controls::Network *newHttpNetwork();

/// Has all networks use the proxy settings of the system.
Q_DECL_EXPORT void useSystemProxies();
}
