#pragma once

#include "platform/Boolean.h"

#include <QString>

#include <chrono>

namespace ui {

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

} // namespace ui
