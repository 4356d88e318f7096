#include "app/DownloadRecord.h"
#include "tests/fuzz/Fuzz.h"

// The port stands before a slash, and all the rest is as it was.
void fuzz::meet(const QByteArray &input)
{
    allowingErrors([address = QString::fromUtf8(input)] {
        QString changed = app::AddPortToUrl(address);
        const qsizetype port = changed.indexOf(u":80/"_s, 7);
        require(port >= 7);
        require(!QStringView(changed).mid(7, port - 7).contains(u'/'));
        require(changed.remove(port, 3) == address);
    });
}
