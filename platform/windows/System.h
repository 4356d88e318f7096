#pragma once

#include <QString>

// Shared by the sources of this folder alone.
namespace platform {

/// The Windows directory, without a separator at its end.
QString windowsDirectory();

} // namespace platform
