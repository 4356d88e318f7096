#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// The text in the system's single-byte code page: the ANSI one on Windows, Windows-1252
/// elsewhere. A character that it does not have becomes "?".
QByteArray singleByteText(const QString &text);

} // namespace platform
