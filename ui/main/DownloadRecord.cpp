#include "ui/main/DownloadRecord.h"

#include "platform/Text.h"

namespace ui {

void DownloadRecord::takeTask(const QString &name, const QString &address, const QString &fileName)
{
    Opdracht = name;
    DownloadAdres = platform::trimmedBlanks(address);
    spcFilenaam = fileName;
    const qsizetype slash = DownloadAdres.lastIndexOf(u'/');
    if (slash >= 0)
        Filenaam = DownloadAdres.mid(slash + 1);
}

} // namespace ui
