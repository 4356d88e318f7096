#include "ui/main/DownloadRecord.h"

namespace ui {

void DownloadRecord::cutFilenaam()
{
    const qsizetype slash = DownloadAdres.lastIndexOf(u'/');
    if (slash >= 0)
        Filenaam = DownloadAdres.mid(slash + 1);
}

} // namespace ui
