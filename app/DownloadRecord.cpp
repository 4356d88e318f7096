#include "app/DownloadRecord.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>

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

static bool holdsControlCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.category() == QChar::Other_Control;
    });
}

QString unusableText(const QString &address, const QString &fileName)
{
    if (holdsControlCharacter(address))
        return u"The address"_s;
    if (holdsControlCharacter(fileName))
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
