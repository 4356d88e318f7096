#include "app/DownloadRecord.h"

#include "app/Module1.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace app {

using namespace Qt::StringLiterals;

void DownloadRecord::takeTask(const QString &name, const QString &address, const QString &fileName)
{
    Opdracht = name;
    DownloadAdres = platform::trimmedBlanks(address);
    spcFilenaam = fileName;
    const qsizetype slash = DownloadAdres.lastIndexOf(u'/');
    if (slash >= 0)
        Filenaam = DownloadAdres.mid(slash + 1);
}

QString unusableText(const QString &address, const QString &fileName)
{
    if (onOneLine(address) != address)
        return u"The address"_s;
    if (onOneLine(fileName) != fileName)
        return u"The file name"_s;
    return {};
}

QString AddPortToUrl(const QString &address)
{
    constexpr qsizetype schemeLength = 7; // "http://"
    const qsizetype path = address.indexOf(u'/', schemeLength);
    if (path < 0)
        throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
    return address.left(path) + u":80"_s + address.mid(path);
}

} // namespace app
