#pragma once

#include <QString>

namespace platform {

/// The text without the blanks at its ends. Tabs and line ends stay.
QString trimmedBlanks(const QString &text);

/// The part of the text before its first NUL character, or all of it when it has none.
QString untilNul(const QString &text);

} // namespace platform
