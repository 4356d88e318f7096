#pragma once

#include <QString>

namespace platform {

/// The text without the blanks at its ends. Tabs and line ends stay.
QString trimmedBlanks(const QString &text);

} // namespace platform
