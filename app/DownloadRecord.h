#pragma once

#include "platform/Boolean.h"

#include <QString>

#include <chrono>

// What is to be downloaded next, and the rules by which its address and names are made.
namespace app {

/// The one pending download.
struct DownloadRecord
{
    /// The local moment at which it is due, or 0 (a default value) when there is none.
    std::chrono::local_seconds DownloadTime{};
    QString Opdracht;      ///< the task's name
    QString DownloadAdres; ///< its address, without blanks at the ends
    QString Filenaam;      ///< the last segment of the address: the name it is first saved under
    QString spcFilenaam;   ///< the task's own file name: the name it is kept under
    platform::Boolean DownloadFlag = platform::Boolean::False; ///< armed and not yet started

    /// Takes a task's three texts as they are stored. Filenaam becomes what stands behind the last
    /// "/" of the address, not decoded; without any "/" it stays as it was.
    void takeTask(const QString &name, const QString &address, const QString &fileName);
};

/// Which of a task's texts holds a line break or another control character, which no address and no
/// name of a file has: "The address", "The file name", or "" when both can be used.
QString unusableText(const QString &address, const QString &fileName);

/// The address with ":80" before its path, that is before the first "/" from the 8th character
/// on, whatever stands there already. Raises InvalidProcedureCall when there is no such "/".
QString AddPortToUrl(const QString &address);

} // namespace app
