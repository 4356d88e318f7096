#include "app/Module1.h"
#include "app/Version.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/LocalTime.h"

#include <QDir>

namespace app {

using namespace Qt::StringLiterals;

QString logFilePath()
{
    return platform::host().programFolder() + QDir::separator() + u"OstravelinLog.txt"_s;
}

// "dd-mm-yy hh:mm:ss"
static QString timeStamp(std::chrono::local_seconds moment)
{
    return platform::dateOf(moment).toString(u"dd-MM-yy "_s) +
           platform::timeOf(moment).toString(u"HH:mm:ss"_s);
}

QString onOneLine(QString text)
{
    for (QChar &character : text)
        if (character.category() == QChar::Other_Control)
            character = u' ';
    return text;
}

void WriteLog(const QString &message)
{
    const QString line =
        timeStamp(platform::host().now()) + u" - "_s + onOneLine(message) + u"\r\n"_s;
    platform::appendToFile(logFilePath(), line.toLocal8Bit());
}

QString programTitle()
{
    return u"Ostravelin"_s;
}

QString versionText()
{
    return u"%1.%2.%3"_s.arg(programVersion.major)
        .arg(programVersion.minor)
        .arg(programVersion.revision);
}

QString WindowTitle()
{
    return programTitle() + u' ' + versionText();
}

} // namespace app
