#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// The text without the blanks at its ends. Tabs and line ends stay.
QString trimmedBlanks(const QString &text);

/// The part of the text before its first NUL character, or all of it when it has none.
QString untilNul(const QString &text);

/// The text in the system's single-byte code page: the ANSI one on Windows, Windows-1252
/// elsewhere. A character that it does not have becomes "?".
QByteArray singleByteText(const QString &text);

} // namespace platform
